#include "server/ModelDifferences.h"

#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "model/Terms.h"
#include "model/Vec3.h"

namespace {

// A difference of counts taken back into half a turn either way, each
// correction once; the limits themselves stay.
double WrapCountDifference(double Difference, double CountsPerRev) {
    if (Difference > CountsPerRev / 2) Difference = Difference - CountsPerRev;
    if (Difference < -(CountsPerRev / 2)) Difference = Difference + CountsPerRev;
    return Difference;
}

}  // namespace

void TrackingRates(const ModelState& s, double LSTRad, double JD, double RA, double Dec,
                   int16_t Tsign, double& ThetaEncRate, double& PhiEncRate) {
    double t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    ApparentToEncoders(s, LSTRad - kSiderealHalfStep, JD, RA, Dec, Tsign, t1, p1);
    ApparentToEncoders(s, LSTRad + kSiderealHalfStep, JD, RA, Dec, Tsign, t2, p2);
    double r = WrapCountDifference(t2 - t1, s.ThetaCountsPerRev);
    double q = WrapCountDifference(p2 - p1, s.PhiCountsPerRev);
    ThetaEncRate = r / kRateSpan;
    PhiEncRate = q / kRateSpan;
}

void GuideError(const ModelState& s, double LSTRad, double JD, double RA, double Dec, int16_t Tsign,
                double dRA, double dDec, double& dThetaEnc, double& dPhiEnc) {
    double t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    ApparentToEncoders(s, LSTRad, JD, RA, Dec, Tsign, t1, p1);
    ApparentToEncoders(s, LSTRad, JD, RA + dRA, Dec + dDec, Tsign, t2, p2);
    dThetaEnc = t2 - t1;
    dPhiEnc = p2 - p1;
}

void Jacobian(const ModelState& s, double LSTRad, double JD, double RA, double Dec, int16_t Tsign,
              double& dThetaEnc_dDec, double& dThetaEnc_dRA, double& dPhiEnc_dDec,
              double& dPhiEnc_dRA) {
    const double h = kJacobianStep;
    double t0 = 0, p0 = 0, t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    ApparentToEncoders(s, LSTRad, JD, RA, Dec, Tsign, t0, p0);
    ApparentToEncoders(s, LSTRad, JD, RA, Dec + h, Tsign, t1, p1);
    dThetaEnc_dDec = (t1 - t0) / h;
    dPhiEnc_dDec = (p1 - p0) / h;
    ApparentToEncoders(s, LSTRad, JD, RA + h, Dec, Tsign, t2, p2);
    dThetaEnc_dRA = (t2 - t0) / h;
    dPhiEnc_dRA = (p2 - p0) / h;
}

double FieldAngle(const ModelState& s, double LSTRad, double JD, double RA, double Dec,
                  int16_t Tsign) {
    // Sky north at the star: at right angles to its diurnal motion.
    Vec3 v = ApparentToHorizon(s, RA, Dec, LSTRad);
    Vec3 v1 = ApparentToHorizon(s, RA, Dec, LSTRad - kSiderealHalfStep);
    Vec3 v2 = ApparentToHorizon(s, RA, Dec, LSTRad + kSiderealHalfStep);
    Vec3 motion = SubVec(v2, v1);
    NormalizeVec(motion);
    Vec3 north = CrossVec(motion, v);

    // Where the telescope goes as the Theta encoder counts up.
    double t = 0, p = 0;
    ApparentToEncoders(s, LSTRad, JD, RA, Dec, Tsign, t, p);
    const double e = s.ThetaCountsPerRev / 1000000;
    Vec3 w1 = MountToHorizon(s, EncoderToPointing(s, t - e, p));
    Vec3 w2 = MountToHorizon(s, EncoderToPointing(s, t + e, p));
    Vec3 thetaUp = SubVec(w2, w1);
    NormalizeVec(thetaUp);

    double x = DotVec(thetaUp, north);
    double y = DotVec(v, CrossVec(thetaUp, north));
    return Atan2(y, x);
}

double FieldAngleRate(double AngleBefore, double AngleAfter) {
    double r = AngleAfter - AngleBefore;
    if (r > kHalfTurn) r = r - kFullTurn;
    if (r < -kHalfTurn) r = r + kFullTurn;
    return r / kRateSpan;
}
