#include "model/Residuals.h"

#include <cmath>

#include "model/FitWorkspace.h"
#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "model/Terms.h"

// Measures every point, used or not, against the fitted model: as a chord
// in the mount frame, as errors in RA and Dec, and as errors on the two
// axes (each model minus measurement, radians). Then the maximum and RMS of
// the chord over the used points and over all points.
void ComputeResiduals(ModelState& s) {
    s.NumPointsUsed = 0;
    double maxAll = 0;
    double maxSel = 0;
    double sumAll = 0;
    double sumSel = 0;

    for (int i = 1; i <= s.NumCalPoints; ++i) {
        CalPoint& pt = s.CalPoints[i];
        double axisTheta = 0;
        double axisPhi = 0;
        EncodersToAngles(s, pt.ThetaEnc, pt.PhiEnc, axisTheta, axisPhi);
        WrapAxisAngles(axisTheta, axisPhi);
        pt.AxisTheta = axisTheta;
        pt.AxisPhi = axisPhi;

        // Where the star stands, as the fit just computed it (same bits).
        const Vec3 H = PointSkyVector(s, i);
        VecToAngles(H, 1, pt.SkyTheta, pt.SkyPhi);
        const Vec3 M = HorizonToMount(s, H);  // the star, mount frame
        const Vec3 C = EncoderToPointing(s, pt.ThetaEnc, pt.PhiEnc);

        // Where the model would have put the encoders for this star, on the
        // side of the pier that the measured Theta shows. M is exactly the
        // vector that CelestialToEncoders would compute again.
        const int16_t Tsign = pt.AxisTheta < 0 ? -1 : 1;
        double thetaEncP = 0;
        double phiEncP = 0;
        VectorToEncoders(s, M, Tsign, thetaEncP, phiEncP);
        double thetaP = 0;
        double phiP = 0;
        EncodersToAngles(s, thetaEncP, phiEncP, thetaP, phiP);
        WrapAxisAngles(thetaP, phiP);

        double dPhi = phiP - pt.AxisPhi;
        if (dPhi > kHalfTurn) dPhi = dPhi - kFullTurn;
        if (dPhi < -kHalfTurn) dPhi = dPhi + kFullTurn;
        pt.ThetaErr = thetaP - pt.AxisTheta;
        pt.PhiErr = std::fabs(std::sin(pt.AxisTheta)) * dPhi;  // an angle on the sky

        const double dx = M.x - C.x;
        const double dy = M.y - C.y;
        const double dz = M.z - C.z;
        pt.DistErr = std::sqrt(dx * dx + dy * dy + dz * dz);

        // The model's sky place of the encoders; C is exactly the vector
        // that EncodersToCelestial would compute again.
        double raM = 0;
        double decM = 0;
        HorizonToCelestial(s, MountToHorizon(s, C), pt.LST, pt.JD, raM, decM);
        pt.RAErr = (raM - pt.RA) * std::cos(pt.Dec);
        pt.DecErr = decM - pt.Dec;

        if (pt.DistErr > maxAll) maxAll = pt.DistErr;
        sumAll = sumAll + pt.DistErr * pt.DistErr;
        if (pt.Used) {
            if (pt.DistErr > maxSel) maxSel = pt.DistErr;
            sumSel = sumSel + pt.DistErr * pt.DistErr;
            ++s.NumPointsUsed;
        }
    }

    s.RMSErrSel = s.NumPointsUsed > 0 ? std::sqrt(sumSel / s.NumPointsUsed) : 0;
    s.RMSErrAll = s.NumCalPoints > 0 ? std::sqrt(sumAll / s.NumCalPoints) : 0;
    s.MaxErrSel = maxSel;
    s.MaxErrAll = maxAll;
}
