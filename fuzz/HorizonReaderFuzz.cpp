// Any bytes as a horizon file. The read must not crash or hang; one that
// succeeds gives 360 elevations, entry a at azimuth a, 0 at north and none
// outside 0 to 90 degrees, and one that fails leaves the caller's skyline as
// it was.
#include <cfloat>
#include <cstdint>
#include <memory>

#include "FuzzCheck.h"
#include "FuzzFiles.h"
#include "autoalign/HorizonFile.h"
#include "model/ModelState.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    MakeScratchFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input = WriteScratchFile("input.hrz", data, size);
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    // A skyline that no read gives, to see that a failure keeps it.
    HorizonRecord before;
    before.Num = 7;
    before.El.fill(-1);
    HorizonRecord h = before;
    if (!ReadHorizon(*s, input, h)) {
        FuzzCheck(h.Num == before.Num && h.Az == before.Az && h.El == before.El,
                  "a failed read leaves the skyline as it was");
        return 0;
    }
    FuzzCheck(h.Num == 360, "a read gives 360 entries");
    FuzzCheck(h.El[0] == 0, "the skyline is at 0 at north");
    // Samples are clamped to 0 to 90; a straight line between two of them
    // can pass either end by the rounding of its steps, no more: from 0.22
    // down to 0 it ends at -2.8e-17 (-0.22 * 57 / 57 + 0.22).
    const double slack = 90 * 4 * DBL_EPSILON;
    for (int a = 0; a < 360; ++a) {
        FuzzCheck(h.Az[a] == a, "entry a holds azimuth a");
        FuzzCheck(h.El[a] >= -slack && h.El[a] <= 90 + slack,
                  "elevations lie from 0 to 90 degrees");
    }
    return 0;
}
