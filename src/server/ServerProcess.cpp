#include "server/ServerProcess.h"

#include "model/ModelState.h"

ModelState& TheModel() {
    static ModelState model;
    return model;
}

RecalcChain& TheMainWindow() {
    static NoDisplay noWindows;
    static RecalcChain mainWindow(TheModel(), noWindows);
    return mainWindow;
}
