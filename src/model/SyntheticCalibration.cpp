#include "model/SyntheticCalibration.h"

#include <cmath>
#include <memory>
#include <random>

#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"

namespace {

// Standard normal deviates by the Box-Muller method on mt19937, whose
// sequence the C++ standard fixes, so that a seed gives the same points on
// every machine (std::normal_distribution is not fixed across libraries).
class NormalSource {
public:
    explicit NormalSource(uint32_t seed) : gen_(seed) {}
    double Uniform() { return (static_cast<double>(gen_()) + 0.5) / 4294967296.0; }
    double Normal() {
        const double u1 = Uniform();
        const double u2 = Uniform();
        return std::sqrt(-2.0 * std::log(u1)) * std::cos(kFullTurn * u2);
    }

private:
    std::mt19937 gen_;
};

// Direction k of n spread over the sky above minAlt (radians): a spiral of
// equal area steps in altitude with the golden angle in azimuth.
void SpiralDirection(int k, int n, double minAlt, double& alt, double& az) {
    const double top = std::sin(80.0 * kHalfTurn / 180);
    const double bottom = std::sin(minAlt);
    const double f = (k + 0.5) / n;
    alt = std::asin(bottom + (top - bottom) * f);
    az = std::fmod(k * 2.399963229728653, kFullTurn);
}

}  // namespace

std::vector<SyntheticPoint> MakeSyntheticPoints(const ModelState& site, const SyntheticMount& m) {
    // The imaginary mount: the site's settings with the chosen errors.
    auto truth = std::make_unique<ModelState>(site);
    truth->ErrorNorth = m.ErrorNorth;
    truth->ErrorWest = m.ErrorWest;
    truth->ThetaEncOffset = m.ThetaEncOffset;
    truth->PhiEncOffset = m.PhiEncOffset;
    for (int i = 1; i <= kNumTerms; ++i) {
        truth->TermCoef[i] = (i <= 4) ? 0.0 : m.TermCoef[i];
        truth->TermActive[i] = truth->TermCoef[i] != 0.0;
    }

    NormalSource noise(m.Seed);
    std::vector<SyntheticPoint> points;
    const double minAlt = m.MinAltitudeDeg * kHalfTurn / 180;
    for (int k = 0; k < m.Num; ++k) {
        SyntheticPoint p;
        const double minutes = k * m.MinutesBetween;
        p.LST = std::fmod(m.FirstLST + minutes * kFullTurn / 1440.0 * kSiderealRate, kFullTurn);
        p.JD = m.FirstJD + minutes / 1440.0;

        double alt = 0;
        double az = 0;
        SpiralDirection(k, m.Num, minAlt, alt, az);
        // The horizon vector of the direction (x north, y west, z zenith).
        const Vec3 h{std::cos(alt) * std::cos(az), -std::cos(alt) * std::sin(az), std::sin(alt)};
        // West of the meridian the hour angle is positive (y > 0).
        const int16_t Tsign = (m.BothSidesOfPier && !site.IsAltAz && h.y < 0) ? -1 : 1;

        // Encoders at which the imaginary mount looks there, then the place
        // it really looks at for exactly those encoders.
        VectorToEncoders(*truth, HorizonToMount(*truth, h), Tsign, p.ThetaEnc, p.PhiEnc);
        EncodersToCelestial(*truth, p.LST, p.JD, p.ThetaEnc, p.PhiEnc, p.RA, p.Dec);

        if (m.NoiseRMS > 0) {
            // Noise of NoiseRMS on the sky along each axis, in counts.
            double Theta = 0;
            double Phi = 0;
            EncodersToAngles(*truth, p.ThetaEnc, p.PhiEnc, Theta, Phi);
            const double sinTheta = std::fabs(std::sin(Theta)) > 1e-3 ? std::fabs(std::sin(Theta)) : 1e-3;
            const double tCounts = truth->ThetaCountsPerRev * truth->ThetaSF / kFullTurn;
            const double pCounts = truth->PhiCountsPerRev * truth->PhiSF / kFullTurn;
            p.ThetaEnc += noise.Normal() * m.NoiseRMS * tCounts;
            p.PhiEnc += noise.Normal() * m.NoiseRMS / sinTheta * pCounts;
        }
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
        c.TimeStr.clear();
        c.DateStr.clear();
    }
}
