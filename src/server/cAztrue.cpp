// Creation, termination and the properties of the server object.
#include "server/cAztrue.h"

#include "files/TraceLog.h"
#include "model/ModelState.h"
#include "model/Solver.h"
#include "server/ServerProcess.h"
#include "sky/NumberText.h"

cAztrue::cAztrue(RecalcChain& MainWindow) : model_(MainWindow.Model()), main_(MainWindow) {
    LogLine("Class_Initialize()");
    InitModel(model_);
    model_.ServerStarted = true;
    // The main window object exists before the window is ever loaded; its
    // chain has to work from now on.
    main_.SetDisplayEnabled(true);
}

cAztrue::cAztrue() : cAztrue(TheMainWindow()) {}

cAztrue::cAztrue(RecalcChain& MainWindow, Attach)
    : model_(MainWindow.Model()), main_(MainWindow), endsProcess_(false) {}

cAztrue::~cAztrue() {
    if (!endsProcess_) return;
    LogLine("Class_Terminate()");
    main_.Display().DisposeAll();
}

bool cAztrue::ValidIndex(int16_t Index) const {
    return Index >= 1 && Index <= model_.NumCalPoints;
}

std::string cAztrue::Version() const {
    LogLine("Get Version");
    return model_.Version;
}

std::string cAztrue::Path() const {
    LogLine("Get Path");
    return model_.Path;
}

void cAztrue::SetPath(const std::string& Value) {
    LogLineWith([&] { return "Set Path = " + Value; });
    model_.Path = Value;
}

std::string cAztrue::FullFileName() const {
    LogLine("Get FullFileName");
    return model_.FullFileName;
}

double cAztrue::Temperature() const {
    LogLine("Get Termerature");
    return model_.Temperature;
}

void cAztrue::SetEnableRefraction(bool Value) {
    LogLineWith([&] { return "Set EnableRefraction = " + BoolText(Value); });
    model_.EnableRefraction = Value;
    main_.CalibrateAndDisplay();
}

bool cAztrue::EnableRefraction() const {
    LogLine("Get EnableRefraction");
    return model_.EnableRefraction;
}

void cAztrue::SetTemperature(double Value) {
    LogLineWith([&] { return "Set Temperature = " + NumberText(Value); });
    model_.Temperature = Value;
    main_.CalibrateAndDisplay();
}

void cAztrue::SetTimeZone(double Value) {
    LogLineWith([&] { return "Set TimeZone = " + NumberText(Value); });
    model_.TimeZone = Value;
}

double cAztrue::TimeZone() const {
    LogLine("Get TimeZone");
    return model_.TimeZone;
}

void cAztrue::SetDST(bool Value) {
    LogLineWith([&] { return "Set DST = " + BoolText(Value); });
    model_.DST = Value;
}

bool cAztrue::DST() const {
    LogLine("Get DST");
    return model_.DST;
}

void cAztrue::SetYear(int16_t Value) {
    LogLineWith([&] { return "Set Year = " + IntText(Value); });
    model_.Year = Value;
}

int16_t cAztrue::Year() const {
    LogLine("Get Year");
    return model_.Year;
}

void cAztrue::SetMonth(int16_t Value) {
    LogLineWith([&] { return "Set Month = " + IntText(Value); });
    model_.Month = Value;
}

int16_t cAztrue::Month() const {
    LogLine("Get Month");
    return model_.Month;
}

void cAztrue::SetDay(int16_t Value) {
    LogLineWith([&] { return "Set Day = " + IntText(Value); });
    model_.Day = Value;
}

int16_t cAztrue::Day() const {
    LogLine("Get Day");
    return model_.Day;
}

void cAztrue::SetHour(int16_t Value) {
    LogLineWith([&] { return "Set Hour = " + IntText(Value); });
    model_.Hour = Value;
}

int16_t cAztrue::Hour() const {
    LogLine("Get Hour");
    return model_.Hour;
}

void cAztrue::SetMinute(int16_t Value) {
    LogLineWith([&] { return "Set Minute = " + IntText(Value); });
    model_.Minute = Value;
}

int16_t cAztrue::Minute() const {
    LogLine("Get Minute");
    return model_.Minute;
}

void cAztrue::SetSecond(double Value) {
    LogLineWith([&] { return "Let Second = " + NumberText(Value); });
    model_.Second = Value;
}

double cAztrue::Second() const {
    LogLine("Get Second");
    return model_.Second;
}

// The fit results are read fresh: every read fits again, nothing is cached.
double cAztrue::ErrorNorth() {
    LogLine("Get ErrorNorth");
    Calibrate(model_);
    return model_.ErrorNorth;
}

double cAztrue::ErrorWest() {
    LogLine("Get ErrorWest");
    Calibrate(model_);
    return model_.ErrorWest;
}

double cAztrue::ThetaEncOffset() {
    LogLine("Get ThetaEncOffset");
    Calibrate(model_);
    return model_.ThetaEncOffset;
}

double cAztrue::PhiEncOffset() {
    LogLine("Get PhiEncOffset");
    Calibrate(model_);
    return model_.PhiEncOffset;
}

double cAztrue::Sensitivity() {
    LogLine("Get Sensitivity");
    Calibrate(model_);
    return model_.Sensitivity;
}

double cAztrue::Pressure() const {
    LogLine("Get Pressure");
    return model_.Pressure;
}

void cAztrue::SetPressure(double Value) {
    LogLineWith([&] { return "Let Pressure = " + NumberText(Value); });
    model_.Pressure = Value;
    main_.CalibrateAndDisplay();
}

double cAztrue::Latitude() const {
    LogLine("Get Latitude");
    return model_.Latitude;
}

void cAztrue::SetLatitude(double Value) {
    LogLineWith([&] { return "Let Latitude = " + NumberText(Value); });
    model_.Latitude = Value;
    main_.CalibrateAndDisplay();
}

double cAztrue::Longitude() const {
    LogLine("Get Longitude");
    return model_.Longitude;
}

// The longitude serves only the sidereal time of the clock members; the
// points carry their own sidereal time, so no fit follows.
void cAztrue::SetLongitude(double Value) {
    LogLineWith([&] { return "Let Longitude = " + NumberText(Value); });
    model_.Longitude = Value;
}

void cAztrue::SetThetaCountsPerRev(double Value) {
    LogLineWith([&] { return "Let ThetaCountsPerRev = " + NumberText(Value); });
    model_.ThetaCountsPerRev = Value;
    main_.CalibrateAndDisplay();
}

void cAztrue::SetPhiCountsPerRev(double Value) {
    LogLineWith([&] { return "Let PhiCountsPerRev = " + NumberText(Value); });
    model_.PhiCountsPerRev = Value;
    main_.CalibrateAndDisplay();
}

double cAztrue::PhiCountsPerRev() const {
    LogLine("Get PhiCountsPerRev");
    return model_.PhiCountsPerRev;
}

void cAztrue::SetPhiPosCW(bool Value) {
    LogLineWith([&] { return "Let PhiPosCW = " + BoolText(Value); });
    model_.PhiPosCW = Value;
    main_.CalibrateAndDisplay();
}

bool cAztrue::PhiPosCW() const {
    LogLine("Get PhiPosCW");
    return model_.PhiPosCW;
}

void cAztrue::SetThetaPosUp(bool Value) {
    LogLineWith([&] { return "Let ThetaPosUp = " + BoolText(Value); });
    model_.ThetaPosUp = Value;
    main_.CalibrateAndDisplay();
}

bool cAztrue::ThetaPosUp() const {
    LogLine("Get ThetaPosUp");
    return model_.ThetaPosUp;
}

double cAztrue::ThetaCountsPerRev() const {
    LogLine("Get ThetaCountsPerRev");
    return model_.ThetaCountsPerRev;
}

int16_t cAztrue::NumCalPoints() const {
    LogLine("Get NumCalPoints");
    return model_.NumCalPoints;
}

// The mount type has no field of its own: it lives in IsAltAz and IsGEM.
int16_t cAztrue::MountType() const {
    LogLine("Get MountType");
    if (model_.IsAltAz) return 0;
    return model_.IsGEM ? 2 : 1;
}

void cAztrue::SetMountType(int16_t Value) {
    LogLineWith([&] { return "Let MountType = " + IntText(Value); });
    switch (Value) {
        case 0:  // IsGEM means nothing on an alt-azimuth mount and stays
            model_.IsAltAz = true;
            break;
        case 1:
            model_.IsAltAz = false;
            model_.IsGEM = false;
            break;
        case 2:
            model_.IsAltAz = false;
            model_.IsGEM = true;
            break;
        default:  // an unknown type changes neither flag
            break;
    }
    main_.CalibrateAndDisplay();
}

bool cAztrue::UseCalPoint(int16_t Index) const {
    LogLineWith([&] { return "Get UseCalPoint(" + IntText(Index) + ")"; });
    return ValidIndex(Index) ? model_.CalPoints[Index].Used : false;
}

void cAztrue::SetUseCalPoint(int16_t Index, bool Value) {
    LogLineWith([&] { return "Let UseCalPoint(" + IntText(Index) + ", " + BoolText(Value) + ")"; });
    if (ValidIndex(Index)) model_.CalPoints[Index].Used = Value;
    main_.CalibrateAndDisplay();
}
