// Residuals of every calibration point against the fitted model, and the
// four summary figures.
#pragma once

struct ModelState;

void ComputeResiduals(ModelState& s);
