// The one pointing model of the process: site, mount, encoders, calibration
// points, the 46 correction terms, the fit results and the clock fields.
// A default-constructed state is the state at process start: every number 0,
// every Boolean false, every text empty. InitModel then sets the defaults.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "model/AutoAlignRecords.h"
#include "model/Constants.h"
#include "sky/cACT.h"
#include "sky/cMath.h"
#include "sky/cString.h"

// One calibration point and its residuals of the last ComputeResiduals.
struct CalPoint {
    std::string Name;     // star name, empty for points from AddCalPoint
    bool Used = false;    // takes part in the fit and the selected statistics
    double ThetaEnc = 0;  // counts
    double PhiEnc = 0;    // counts
    double RA = 0;        // mean J2000, radians
    double Dec = 0;       // mean J2000, radians
    double LST = 0;       // local sidereal time, radians
    double JD = 0;        // Julian day
    std::string TimeStr;  // as the client gave it, only shown
    std::string DateStr;  // as the client gave it, only shown
    double DistErr = 0;   // residuals, radians
    double RAErr = 0;
    double DecErr = 0;
    double SkyTheta = 0;
    double SkyPhi = 0;
    double AxisTheta = 0;
    double AxisPhi = 0;
    double PhiErr = 0;
    double ThetaErr = 0;
};

struct ModelState {
    // Site and atmosphere.
    double Latitude = 0;     // degrees, north positive
    double Longitude = 0;    // degrees, east positive
    double Temperature = 0;  // degrees Celsius
    double Pressure = 0;     // millibars
    bool EnableRefraction = false;

    // Mount and encoders.
    bool IsAltAz = false;
    bool IsGEM = false;
    bool PhiPosCW = false;
    bool ThetaPosUp = false;
    double PhiCountsPerRev = 0;
    double ThetaCountsPerRev = 0;
    double PhiSF = 0;
    double ThetaSF = 0;

    // Fit results that the conversions use.
    double ErrorNorth = 0;      // radians
    double ErrorWest = 0;       // radians
    double ThetaEncOffset = 0;  // counts
    double PhiEncOffset = 0;    // counts
    double Sensitivity = 0;
    double MaxSensitivity = 0;

    // Correction terms, 1-based; elements 1 to 46 (flags 1 to 22) in use.
    int16_t NumTerms = 0;
    std::array<double, kTermArraySize> TermCoef{};
    std::array<bool, kTermArraySize> TermActive{};
    int16_t NumTermEnable = 0;
    std::array<int16_t, kTermArraySize> TermEnable{};

    // Calibration points, 1 to NumCalPoints in use; index 0 stays empty.
    std::array<CalPoint, kMaxCalPoints + 1> CalPoints{};
    int16_t NumCalPoints = 0;
    int16_t NumPointsUsed = 0;

    // Error statistics of the last ComputeResiduals, radians.
    double MaxErrSel = 0;
    double RMSErrSel = 0;
    double MaxErrAll = 0;
    double RMSErrAll = 0;

    // The server's time of day.
    double TimeZone = 0;  // hours from UTC
    bool DST = false;
    int16_t Year = 0;
    int16_t Month = 0;
    int16_t Day = 0;
    int16_t Hour = 0;
    int16_t Minute = 0;
    double Second = 0;

    // Program-level values.
    std::string Path;
    std::string FullFileName;
    std::string Version;
    bool ServerStarted = false;
    bool TestLog = false;

    // The folder of the program's own data files (Points.txt): set by the
    // executable at start; InitModel leaves it alone. Empty: the current folder.
    std::string ProgramFolder;

    // The site's skyline and the alignment point list, entries 0 to
    // NumAutoAlign - 1 valid, with its settings.
    HorizonRecord Horizon;
    std::array<AutoAlignPoint, kAutoAlignTableSize> AutoAlignPoints{};
    int32_t NumAutoAlign = 0;
    int32_t AutoAlignTarget = 0;
    int16_t AutoAlignOrder = 0;

    // The stateless helper objects; InitModel marks them created.
    cMath Math;
    cString Str;
    cACT ACT;
    bool HelpersCreated = false;
};

// Sets every default that differs from the all-zero start and creates the
// helper objects. Leaves the calibration points, TermCoef, TermActive,
// TermEnable and the clock fields other than TimeZone and DST alone.
void InitModel(ModelState& s);
