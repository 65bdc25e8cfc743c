#include "model/ModelState.h"

#include "files/DocumentsFolder.h"

void InitModel(ModelState& s) {
    // The helper objects are stateless: creating them is marking them there.
    s.Math = cMath();
    s.Str = cString();
    s.ACT = cACT();
    s.HelpersCreated = true;

    s.Version = "Aztrue 5.32";
    // The folder of calibration files starts in the user's documents folder,
    // as a drive root means nothing on this platform.
    s.Path = DocumentsFolder();
    s.FullFileName.clear();

    s.PhiCountsPerRev = kFullTurn;
    s.ThetaCountsPerRev = kFullTurn;
    s.IsAltAz = true;
    s.IsGEM = false;
    s.PhiPosCW = true;
    s.ThetaPosUp = true;
    s.PhiSF = 1.0;
    s.ThetaSF = 1.0;

    s.Latitude = 33.5;
    s.Longitude = -118.0;
    s.DST = false;
    s.TimeZone = -8.0;
    s.Pressure = 1018.0;
    s.Temperature = 16.0;
    s.EnableRefraction = true;

    s.ErrorNorth = 0;
    s.ErrorWest = 0;
    s.ThetaEncOffset = 0;
    s.PhiEncOffset = 0;
    s.Sensitivity = 0;
    s.MaxSensitivity = 300.0;
    s.NumTerms = kNumTerms;
    s.NumTermEnable = kNumTermEnable;

    s.AutoAlignTarget = 20;
    s.AutoAlignOrder = 0;
}
