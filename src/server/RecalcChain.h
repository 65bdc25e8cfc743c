// The main window object's side of the model: the one operation that every
// change of the model ends in, and the flag that guards it against
// re-entry from the control events of its own refresh. It exists whether a
// window is on the screen or not; all server objects of a model share it.
#pragma once

#include "server/DisplayRefresh.h"

struct ModelState;

class RecalcChain {
  public:
    // DisplayEnabled starts false, as the object does before anything
    // creates a server object or loads the main window.
    RecalcChain(ModelState& Model, DisplayRefresh& Display);
    RecalcChain(const RecalcChain&) = delete;
    RecalcChain& operator=(const RecalcChain&) = delete;

    // Fit, residuals, then the refresh of every window in a fixed order and
    // a pass of pending events. Does nothing while DisplayEnabled is false.
    void CalibrateAndDisplay();

    bool DisplayEnabled() const { return displayEnabled_; }
    void SetDisplayEnabled(bool Enabled) { displayEnabled_ = Enabled; }

    ModelState& Model() { return model_; }
    DisplayRefresh& Display() { return *display_; }
    // The windows install themselves here when they come into being.
    void SetDisplay(DisplayRefresh& Display) { display_ = &Display; }

  private:
    ModelState& model_;
    DisplayRefresh* display_;
    bool displayEnabled_ = false;
};
