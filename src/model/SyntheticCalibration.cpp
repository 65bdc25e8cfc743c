#include "model/SyntheticCalibration.h"

#include <cmath>

#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"

namespace {

// Uniform in (0, 1) from mt19937, whose sequence the C++ standard fixes.
double Uniform(std::mt19937& gen) {
    return (static_cast<double>(gen()) + 0.5) / 4294967296.0;
}

// Standard normal deviate by the Box-Muller method, so that a seed gives the
// same points on every machine (std::normal_distribution is not fixed
// across standard libraries).
double Normal(std::mt19937& gen) {
    const double u1 = Uniform(gen);
    const double u2 = Uniform(gen);
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(kFullTurn * u2);
}

// Direction k of n spread over the sky above minAlt (radians): a spiral of
// equal-area steps in altitude up to 80 degrees, golden angle in azimuth.
void SpiralDirection(int k, int n, double minAlt, double& alt, double& az) {
    const double top = std::sin(80.0 * kHalfTurn / 180);
    const double bottom = std::sin(minAlt);
    const double f = (k + 0.5) / n;
    alt = std::asin(bottom + (top - bottom) * f);
    az = std::fmod(k * 2.399963229728653, kFullTurn);
}

}  // namespace

SyntheticObserver::SyntheticObserver(const ModelState& site, const SyntheticMount& m)
    : truth_(std::make_unique<ModelState>(site)), noiseRMS_(m.NoiseRMS), gen_(m.Seed) {
    truth_->ErrorNorth = m.ErrorNorth;
    truth_->ErrorWest = m.ErrorWest;
    truth_->ThetaEncOffset = m.ThetaEncOffset;
    truth_->PhiEncOffset = m.PhiEncOffset;
    for (int i = 1; i <= kNumTerms; ++i) {
        // Terms 1 to 4 are carried by the offsets and rotations above.
        truth_->TermCoef[i] = (i <= 4) ? 0.0 : m.TermCoef[i];
        truth_->TermActive[i] = truth_->TermCoef[i] != 0.0;
    }
}

SyntheticObserver::~SyntheticObserver() = default;

SyntheticPoint SyntheticObserver::MeasureDirection(Vec3 horizon, int16_t Tsign, double LST,
                                                   double JD) {
    SyntheticPoint p;
    HorizonToCelestial(*truth_, horizon, LST, JD, p.RA, p.Dec);
    return MeasureStar(p.RA, p.Dec, Tsign, LST, JD);
}

// The encoders come from the place through the very chain the fit uses,
// inverted by the model's own iteration (about 1e-9 rad from exact for
// coefficients of arcminutes), so that a fit sees consistent points.
SyntheticPoint SyntheticObserver::MeasureStar(double RA, double Dec, int16_t Tsign, double LST,
                                              double JD) {
    SyntheticPoint p;
    p.RA = RA;
    p.Dec = Dec;
    p.LST = LST;
    p.JD = JD;
    CelestialToEncoders(*truth_, LST, JD, RA, Dec, Tsign, p.ThetaEnc, p.PhiEnc);
    AddNoise(p);
    return p;
}

// Noise of noiseRMS_ on the sky along each axis, turned into counts.
void SyntheticObserver::AddNoise(SyntheticPoint& p) {
    if (noiseRMS_ <= 0) return;
    double Theta = 0;
    double Phi = 0;
    EncodersToAngles(*truth_, p.ThetaEnc, p.PhiEnc, Theta, Phi);
    const double sinTheta = std::fmax(std::fabs(std::sin(Theta)), 1e-3);
    const double thetaCounts = truth_->ThetaCountsPerRev * truth_->ThetaSF / kFullTurn;
    const double phiCounts = truth_->PhiCountsPerRev * truth_->PhiSF / kFullTurn;
    p.ThetaEnc += Normal(gen_) * noiseRMS_ * thetaCounts;
    p.PhiEnc += Normal(gen_) * noiseRMS_ / sinTheta * phiCounts;
}

std::vector<SyntheticPoint> MakeSyntheticPoints(const ModelState& site, const SyntheticMount& m) {
    SyntheticObserver observer(site, m);
    std::vector<SyntheticPoint> points;
    const double minAlt = m.MinAltitudeDeg * kHalfTurn / 180;
    for (int k = 0; k < m.Num; ++k) {
        const double minutes = k * m.MinutesBetween;
        const double LST =
            std::fmod(m.FirstLST + minutes * kFullTurn / 1440.0 * kSiderealRate, kFullTurn);
        const double JD = m.FirstJD + minutes / 1440.0;
        double alt = 0;
        double az = 0;
        SpiralDirection(k, m.Num, minAlt, alt, az);
        const Vec3 h{std::cos(alt) * std::cos(az), -std::cos(alt) * std::sin(az), std::sin(alt)};
        // West of the meridian the hour angle is positive (y > 0); east of it
        // a German mount works with negative Theta.
        const int16_t Tsign = (m.BothSidesOfPier && !site.IsAltAz && h.y < 0) ? -1 : 1;
        SyntheticPoint p = observer.MeasureDirection(h, Tsign, LST, JD);
        p.Name = "Star " + std::to_string(k + 1);
        points.push_back(p);
    }
    return points;
}

void AddSyntheticPoints(ModelState& s, const std::vector<SyntheticPoint>& points) {
    for (const SyntheticPoint& p : points) {
        if (s.NumCalPoints >= kMaxCalPoints) return;
        CalPoint& c = s.CalPoints[++s.NumCalPoints];
        c.Name = p.Name;
        c.Used = true;
        c.ThetaEnc = p.ThetaEnc;
        c.PhiEnc = p.PhiEnc;
        c.RA = p.RA;
        c.Dec = p.Dec;
        c.LST = p.LST;
        c.JD = p.JD;
        c.TimeStr = p.TimeStr;
        c.DateStr = p.DateStr;
    }
}
