// Calibration points of an imaginary mount with known errors, made by
// running the pointing model forward. Used to make sample data and to check
// that a fit recovers the errors it was given.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "model/Constants.h"
#include "model/Vec3.h"

struct ModelState;

// The imaginary mount and observing run. Angles radians unless stated.
struct SyntheticMount {
    int Num = 40;               // number of calibration points
    double ErrorNorth = 0;      // axis misalignment, first rotation
    double ErrorWest = 0;       // axis misalignment, second rotation
    double ThetaEncOffset = 0;  // counts
    double PhiEncOffset = 0;    // counts
    // Coefficients of the correction terms (radians), by term number; terms
    // 1 to 4 are left 0 as the offsets and rotations above carry them.
    std::array<double, kNumTerms + 1> TermCoef{};
    double NoiseRMS = 0;         // measurement noise on the sky, each axis
    uint32_t Seed = 1;           // of the noise and of the choice of stars
    double MinAltitudeDeg = 15;  // stars lie above this altitude
    double FirstLST = 0;         // local sidereal time of the first point
    double MinutesBetween = 2;   // time between points, civil minutes
    double FirstJD = 2460000.5;  // Julian day of the first point
    bool BothSidesOfPier =
        false;  // on an equatorial mount: negative Theta for stars east of the meridian
};

// One measured point: encoders, J2000 place, time, and a name.
struct SyntheticPoint {
    std::string Name;
    double ThetaEnc = 0;
    double PhiEnc = 0;
    double RA = 0;
    double Dec = 0;
    double LST = 0;
    double JD = 0;
    std::string TimeStr;
    std::string DateStr;
};

// An imaginary mount at a site, measuring stars: each measurement gives the
// encoders at which the mount looks at a direction and the J2000 place it
// really looks at there, with the noise of the mount description added.
class SyntheticObserver {
  public:
    SyntheticObserver(const ModelState& site, const SyntheticMount& m);
    ~SyntheticObserver();
    SyntheticObserver(const SyntheticObserver&) = delete;
    SyntheticObserver& operator=(const SyntheticObserver&) = delete;

    // Centres the mount on a horizon-frame direction (x north, y west, z zenith).
    SyntheticPoint MeasureDirection(Vec3 horizon, int16_t Tsign, double LST, double JD);
    // Centres the mount on a star of the given J2000 place.
    SyntheticPoint MeasureStar(double RA, double Dec, int16_t Tsign, double LST, double JD);
    // The imaginary mount itself, a model with the errors of the description.
    const ModelState& Truth() const { return *truth_; }

  private:
    void AddNoise(SyntheticPoint& p);
    std::unique_ptr<ModelState> truth_;
    double noiseRMS_;
    std::mt19937 gen_;
};

// Makes the points with the site, mount and encoder settings of `site`
// (latitude, refraction, mount type, directions, counts per turn). The
// stars are spread evenly over the sky above MinAltitudeDeg; each point's
// J2000 place is where the imaginary mount really looks at its encoders.
std::vector<SyntheticPoint> MakeSyntheticPoints(const ModelState& site, const SyntheticMount& m);

// Adds the points to the model's table as AddCalPoint would (Used true),
// without fitting. Points beyond the table's room are dropped.
void AddSyntheticPoints(ModelState& s, const std::vector<SyntheticPoint>& points);
