// The fit written out step by step in the plainest way, with no work saved:
// the reference that the optimised solver must match bit for bit.
#pragma once

struct ModelState;

void ReferenceCalibrate(ModelState& s);
