#include "server/RecalcChain.h"

#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"

RecalcChain::RecalcChain(ModelState& Model, DisplayRefresh& Display)
    : model_(Model), display_(&Display) {}

void RecalcChain::CalibrateAndDisplay() {
    if (!displayEnabled_) return;
    Calibrate(model_);
    ComputeResiduals(model_);
    // While the windows refresh, setting their check boxes must not start
    // another fit.
    displayEnabled_ = false;
    display_->DisplayCalPoints();
    display_->UpdateGraph();
    display_->MakeGraph();
    displayEnabled_ = true;
    display_->DisplayData();
    // A click queued meanwhile is served now, with the flag true again.
    display_->ProcessPendingEvents();
}
