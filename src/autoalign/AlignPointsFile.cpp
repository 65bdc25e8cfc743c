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

bool ReadAutoAlignPoints(ModelState& s) {
    const std::string path = (std::filesystem::path(s.ProgramFolder) / kPointsFileName).string();
    TextLineReader in;
    if (!in.Open(path)) return false;
    // Read whole before the table changes, so that a failure leaves it.
    std::vector<AutoAlignPoint> read;
    std::string line;
    while (!in.AtEnd()) {
        if (static_cast<int>(read.size()) == kAutoAlignTableSize) return false;
        double xyz[3];
        for (double& v : xyz) {
            if (!in.ReadLine(line)) return false;
            v = NumericPrefixValue(line);
            if (!std::isfinite(v)) return false;
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
