#include "model/CrossValidation.h"

#include <cmath>
#include <memory>

#include "model/FitStatistics.h"
#include "model/FitWorkspace.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

// The chord between point p's star and the model's pointing for its
// encoders, mount frame: DistErr of ComputeResiduals.
double PointSkyError(const ModelState& s, int p) {
    const CalPoint& pt = s.CalPoints[p];
    const Vec3 M = HorizonToMount(s, PointSkyVector(s, p));
    const Vec3 C = EncoderToPointing(s, pt.ThetaEnc, pt.PhiEnc);
    const double dx = M.x - C.x;
    const double dy = M.y - C.y;
    const double dz = M.z - C.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

}  // namespace

// Calibrate starts from scratch each time (it sets the offsets, the active
// terms and the coefficients anew), so one copy serves every point: the
// point goes out of use, the fit runs, the point comes back.
CrossValidation CrossValidate(const ModelState& s) {
    CrossValidation cv;
    auto w = std::make_unique<ModelState>(s);
    int k = 0;
    for (int t = 1; t <= s.NumTerms; ++t) k += s.TermActive[t] ? 1 : 0;
    double sum = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        if (!s.CalPoints[p].Used) continue;
        w->CalPoints[p].Used = false;
        Calibrate(*w);
        const double e = PointSkyError(*w, p);
        w->CalPoints[p].Used = true;
        cv.Points.push_back(static_cast<int16_t>(p));
        cv.Errors.push_back(e);
        sum = sum + e * e;
        if (e > cv.Max || cv.MaxPoint == 0) {
            cv.Max = e;
            cv.MaxPoint = static_cast<int16_t>(p);
        }
    }
    const int N = static_cast<int>(cv.Points.size());
    if (N > 0) cv.RMS = std::sqrt(sum / N);
    const double limit = 3 * PopulationStandardDeviation(s.RMSErrSel, N, k);
    for (int u = 0; u < N; ++u)
        if (cv.Errors[u] > limit) cv.Outliers.push_back(cv.Points[u]);
    return cv;
}
