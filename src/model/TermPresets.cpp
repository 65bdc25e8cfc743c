// The operator's ready-made choices of term flags. They write TermEnable only;
// the next fit reads them.
#include "model/ModelState.h"
#include "model/Terms.h"

void EnableAll(ModelState& s) {
    for (int k = 1; k <= kNumTermEnable; ++k) s.TermEnable[k] = 1;
}

void DisableAll(ModelState& s) {
    // Flags 1 and 2 ("Cone" and "Hub") are left as the operator set them.
    for (int k = 3; k <= kNumTermEnable; ++k) s.TermEnable[k] = 0;
}

void EnableAltAz(ModelState& s) {
    for (int k = 1; k <= kNumTermEnable; ++k) s.TermEnable[k] = 0;
    for (int k : {1, 2, 3, 4, 5, 10, 11, 14, 15}) s.TermEnable[k] = 1;
}

void EnableGEM(ModelState& s) {
    for (int k = 1; k <= kNumTermEnable; ++k) s.TermEnable[k] = k <= 14 ? 1 : 0;
}
