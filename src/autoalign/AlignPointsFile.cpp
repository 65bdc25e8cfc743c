// The candidate directions of Points.txt, the first stage of an alignment list.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "autoalign/AlignPoints.h"
#include "files/NumericPrefix.h"
#include "files/TextLineReader.h"
#include "model/Frames.h"
#include "model/ModelState.h"

bool ReadAutoAlignPoints(ModelState& s, LoadFailure* Failure) {
    const std::string path = (std::filesystem::path(s.ProgramFolder) / kPointsFileName).string();
    TextLineReader in;
    const auto fail = [&](LoadFailure::Why Reason) {
        if (Failure) *Failure = {Reason, in.LinesRead()};
        return false;
    };
    if (!in.Open(path)) return fail(LoadFailure::Why::Unreadable);
    // Read whole before the table changes, so that a failure leaves it.
    std::vector<AutoAlignPoint> read;
    std::string line;
    while (!in.AtEnd()) {
        if (static_cast<int>(read.size()) == kAutoAlignTableSize)
            return fail(LoadFailure::Why::TooMany);
        double xyz[3];
        for (double& v : xyz) {
            if (!in.ReadLine(line)) return fail(LoadFailure::Why::Truncated);
            v = NumericPrefixValue(line);
            if (!std::isfinite(v)) return fail(LoadFailure::Why::NotFinite);
        }
        read.push_back(AutoAlignPoint{xyz[0], xyz[1], xyz[2]});
    }
    std::copy(read.begin(), read.end(), s.AutoAlignPoints.begin());
    s.NumAutoAlign = static_cast<int32_t>(read.size());
    for (size_t i = 0; i < read.size(); ++i) {
        AutoAlignPoint& p = s.AutoAlignPoints[i];
        VecToAngles(Vec3{p.X, p.Y, p.Z}, 1, p.Theta, p.Phi);
    }
    return true;
}
