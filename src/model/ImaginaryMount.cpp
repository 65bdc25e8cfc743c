#include "model/ImaginaryMount.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "autoalign/AlignPoints.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/mTime.h"

namespace {

// Solar days in one sidereal minute (1 / 1.00273790935 of a civil minute).
constexpr double kDaysPerSiderealMinute = 1.0 / 1440.0 / 1.00273790935;

// "hh:mm:ss" of a time record, whole seconds.
std::string TimeText(const DateTimeRec& t) {
    char text[48];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", t.Hour, t.Minute,
                  static_cast<int>(std::floor(t.Second)));
    return text;
}

}  // namespace

bool MakeImaginaryMountPoints(const ModelState& site, const ImaginaryMount& m,
                              std::vector<SyntheticPoint>& Points, std::string& Error) {
    Points.clear();
    const int num = std::clamp(m.Num, 0, kMaxCalPoints);
    auto plan = std::make_unique<ModelState>(site);
    plan->Latitude = m.Latitude;
    plan->TestLog = false;
    plan->AutoAlignTarget = std::max(num, 1);
    plan->AutoAlignOrder = kOrderNE;
    if (!MakeAutoAlignPoints(*plan) || plan->NumAutoAlign <= 0) {
        Error = "no alignment directions: cannot read " +
                (std::filesystem::path(site.ProgramFolder) / kPointsFileName).string() +
                ", or no candidate stands above the skyline";
        return false;
    }

    SyntheticMount truth;
    truth.ErrorWest = m.PAWest;
    truth.ErrorNorth = m.PANorth;
    truth.ThetaEncOffset = m.ThetaOffset * site.ThetaCountsPerRev / kFullTurn;
    truth.PhiEncOffset = m.PhiOffset * site.PhiCountsPerRev / kFullTurn;
    truth.TermCoef[5] = m.Cone;
    truth.TermCoef[6] = m.Hub;
    truth.NoiseRMS = m.NoiseRMS;
    truth.Seed = m.Seed;
    auto at = std::make_unique<ModelState>(site);
    at->Latitude = m.Latitude;
    SyntheticObserver observer(*at, truth);

    for (int k = 0; k < num; ++k) {
        // The planner's frame has +Y east, the model's horizon frame +y west.
        const AutoAlignPoint& d = plan->AutoAlignPoints[k % plan->NumAutoAlign];
        const double minutes = k * m.MinutesBetween;
        double LST = std::fmod(m.FirstLST + minutes * kFullTurn / 1440.0, kFullTurn);
        if (LST < 0) LST += kFullTurn;
        const double JD = kImaginaryMountFirstJD + minutes * kDaysPerSiderealMinute;
        SyntheticPoint p = observer.MeasureDirection(Vec3{d.X, -d.Y, d.Z}, 1, LST, JD);
        const DateTimeRec ut = JDToDate(JD);
        p.Name = "Point " + std::to_string(k + 1);
        p.TimeStr = TimeText(ut);
        p.DateStr = IntText(ut.Year) + "/" + IntText(ut.Month) + "/" + IntText(ut.Day);
        Points.push_back(p);
    }
    return true;
}
