// The process-wide objects of the server: the one model and the main window
// object over it. Both come into being at their first use and live to the
// end of the process.
#pragma once

#include "server/RecalcChain.h"

struct ModelState;

// The one model of the process, all-zero until InitModel runs.
ModelState& TheModel();

// The main window object over TheModel(); until the windows install their
// display it refreshes nothing.
RecalcChain& TheMainWindow();
