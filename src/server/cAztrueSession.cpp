// The server's members for the windows and the calibration file.
#include "files/CalFile.h"
#include "files/TraceLog.h"
#include "model/ModelState.h"
#include "server/TraceText.h"
#include "server/cAztrue.h"

void cAztrue::ShowAztrue() {
    LogLine("ShowAztrue()");
    main_.Display().ShowMain();
    main_.CalibrateAndDisplay();
}

void cAztrue::KillAztrue() {
    LogLine("KillAztrue()");
    main_.Display().KillWindows();
}

// Saving or loading fits nothing and redraws nothing: a client that wants
// the loaded model at once reads, for instance, ErrorNorth.
bool cAztrue::SaveFile(const std::string& FullFileName) {
    LogLineWith([&] { return CallText("SaveFile", {FullFileName}); });
    bool ok = SaveCalFile(model_, FullFileName);
    if (ok) {
        model_.FullFileName = FullFileName;
        main_.Display().FileNameChanged(FullFileName);
    }
    return ok;
}

bool cAztrue::LoadFile(const std::string& FullFileName) {
    LogLineWith([&] { return CallText("LoadFile", {FullFileName}); });
    bool ok = LoadCalFile(model_, FullFileName);
    if (ok) {
        model_.FullFileName = FullFileName;
        main_.Display().FileNameChanged(FullFileName);
    }
    return ok;
}

void cAztrue::Dispose() {
    LogLine("Dispose()");
    main_.Display().DisposeAll();
}
