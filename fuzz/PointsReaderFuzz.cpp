// Any bytes as the candidate file Points.txt, and the alignment list made
// from it. The read must not crash or hang; one that succeeds holds finite
// candidates only, one that fails leaves the table as it was. The list made
// from the candidates holds at most the number asked for, each a candidate,
// numbered 1 to its length.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "FuzzCheck.h"
#include "FuzzFiles.h"
#include "autoalign/AlignPoints.h"
#include "model/ModelState.h"

namespace {

bool SamePlace(const AutoAlignPoint& a, const AutoAlignPoint& b) {
    return a.X == b.X && a.Y == b.Y && a.Z == b.Z;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    MakeScratchFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    WriteScratchFile(kPointsFileName, data, size);
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->ProgramFolder = ScratchFolder();
    // The mount, the walk and the length of the list from the input's size,
    // so that every setting meets every kind of file.
    s->IsAltAz = size % 3 == 0;
    s->IsGEM = size % 3 == 2;
    s->AutoAlignOrder = static_cast<int16_t>(size % 5);
    s->AutoAlignTarget = static_cast<int32_t>(1 + size % 40);
    s->Latitude = -60 + static_cast<double>(size % 121);
    s->NumAutoAlign = 7;
    if (!ReadAutoAlignPoints(*s)) {
        FuzzCheck(s->NumAutoAlign == 7, "a failed read leaves the table as it was");
        return 0;
    }
    FuzzCheck(s->NumAutoAlign >= 0 && s->NumAutoAlign <= kAutoAlignTableSize,
              "the table holds at most 501 candidates");
    const std::vector<AutoAlignPoint> candidates(s->AutoAlignPoints.begin(),
                                                 s->AutoAlignPoints.begin() + s->NumAutoAlign);
    for (const AutoAlignPoint& p : candidates)
        FuzzCheck(std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z) &&
                      std::isfinite(p.Theta) && std::isfinite(p.Phi),
                  "a candidate read is finite");

    FuzzCheck(MakeAutoAlignPoints(*s), "the file reads again for the list");
    const int n = s->NumAutoAlign;
    FuzzCheck(n >= 0 && n <= s->AutoAlignTarget, "the list is no longer than asked for");
    std::vector<int> numbers;
    for (int i = 0; i < n; ++i) {
        const AutoAlignPoint& p = s->AutoAlignPoints[i];
        FuzzCheck(std::any_of(candidates.begin(), candidates.end(),
                              [&](const AutoAlignPoint& c) { return SamePlace(c, p); }),
                  "each point of the list is a candidate");
        numbers.push_back(p.Index);
    }
    std::sort(numbers.begin(), numbers.end());
    for (int i = 0; i < n; ++i)
        FuzzCheck(numbers[i] == i + 1, "the list is numbered 1 to its length");
    return 0;
}
