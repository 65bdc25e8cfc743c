#include "dbus/cAztrueService.h"

#include <cmath>
#include <string>

#include "model/ModelState.h"
#include "server/ServerProcess.h"
#include "server/cAztrue.h"
#include "server/cAztrueStatistics.h"

namespace {

std::string Utf8(const QString& Text) {
    return Text.toStdString();
}
QString FromUtf8(const std::string& Text) {
    return QString::fromStdString(Text);
}

// The sidereal time of the clock fields reduces its sum by whole days, one
// at a time. A Second beyond this many seconds (some thirty years) would
// keep it busy for hours or for ever, so GetLSTRad refuses it.
constexpr double kLargestClockSecond = 1e9;

}  // namespace

cAztrueService::cAztrueService(QObject* Parent)
    : QObject(Parent),
      object_(std::make_unique<cAztrue>()),
      statistics_(std::make_unique<cAztrueStatistics>()) {}

cAztrueService::~cAztrueService() = default;

bool cAztrueService::AllFinite(const char* Member, std::initializer_list<NamedValue> Values) {
    for (const NamedValue& v : Values) {
        if (std::isfinite(v.second)) continue;
        RefuseCall(QDBusError::InvalidArgs, QStringLiteral("%1: %2 must be a finite number, not %3")
                                                .arg(QLatin1String(Member), QLatin1String(v.first),
                                                     QString::number(v.second)));
        return false;
    }
    return true;
}

void cAztrueService::RefuseCall(QDBusError::ErrorType Type, const QString& Message) {
    if (calledFromDBus()) sendErrorReply(Type, Message);
}

QString cAztrueService::Version() const {
    return FromUtf8(object_->Version());
}
QString cAztrueService::Path() const {
    return FromUtf8(object_->Path());
}
void cAztrueService::SetPath(const QString& Value) {
    object_->SetPath(Utf8(Value));
}
QString cAztrueService::FullFileName() const {
    return FromUtf8(object_->FullFileName());
}
double cAztrueService::Temperature() const {
    return object_->Temperature();
}

void cAztrueService::SetEnableRefraction(bool Value) {
    object_->SetEnableRefraction(Value);
}
bool cAztrueService::EnableRefraction() const {
    return object_->EnableRefraction();
}

void cAztrueService::SetTemperature(double Value) {
    object_->SetTemperature(Value);
}

void cAztrueService::SetTimeZone(double Value) {
    object_->SetTimeZone(Value);
}

double cAztrueService::TimeZone() const {
    return object_->TimeZone();
}
void cAztrueService::SetDST(bool Value) {
    object_->SetDST(Value);
}
bool cAztrueService::DST() const {
    return object_->DST();
}
void cAztrueService::SetYear(short Value) {
    object_->SetYear(Value);
}
short cAztrueService::Year() const {
    return object_->Year();
}
void cAztrueService::SetMonth(short Value) {
    object_->SetMonth(Value);
}
short cAztrueService::Month() const {
    return object_->Month();
}
void cAztrueService::SetDay(short Value) {
    object_->SetDay(Value);
}
short cAztrueService::Day() const {
    return object_->Day();
}
void cAztrueService::SetHour(short Value) {
    object_->SetHour(Value);
}
short cAztrueService::Hour() const {
    return object_->Hour();
}
void cAztrueService::SetMinute(short Value) {
    object_->SetMinute(Value);
}
short cAztrueService::Minute() const {
    return object_->Minute();
}

void cAztrueService::SetSecond(double Value) {
    object_->SetSecond(Value);
}

double cAztrueService::Second() const {
    return object_->Second();
}
double cAztrueService::ErrorNorth() const {
    return object_->ErrorNorth();
}
double cAztrueService::ErrorWest() const {
    return object_->ErrorWest();
}
double cAztrueService::ThetaEncOffset() const {
    return object_->ThetaEncOffset();
}
double cAztrueService::PhiEncOffset() const {
    return object_->PhiEncOffset();
}
double cAztrueService::Sensitivity() const {
    return object_->Sensitivity();
}
double cAztrueService::Pressure() const {
    return object_->Pressure();
}

void cAztrueService::SetPressure(double Value) {
    object_->SetPressure(Value);
}

double cAztrueService::Latitude() const {
    return object_->Latitude();
}

void cAztrueService::SetLatitude(double Value) {
    object_->SetLatitude(Value);
}

double cAztrueService::Longitude() const {
    return object_->Longitude();
}

void cAztrueService::SetLongitude(double Value) {
    object_->SetLongitude(Value);
}

void cAztrueService::SetThetaCountsPerRev(double Value) {
    object_->SetThetaCountsPerRev(Value);
}

void cAztrueService::SetPhiCountsPerRev(double Value) {
    object_->SetPhiCountsPerRev(Value);
}

double cAztrueService::PhiCountsPerRev() const {
    return object_->PhiCountsPerRev();
}
void cAztrueService::SetPhiPosCW(bool Value) {
    object_->SetPhiPosCW(Value);
}
bool cAztrueService::PhiPosCW() const {
    return object_->PhiPosCW();
}
void cAztrueService::SetThetaPosUp(bool Value) {
    object_->SetThetaPosUp(Value);
}
bool cAztrueService::ThetaPosUp() const {
    return object_->ThetaPosUp();
}
double cAztrueService::ThetaCountsPerRev() const {
    return object_->ThetaCountsPerRev();
}
short cAztrueService::NumCalPoints() const {
    return object_->NumCalPoints();
}
short cAztrueService::MountType() const {
    return object_->MountType();
}
void cAztrueService::SetMountType(short Value) {
    object_->SetMountType(Value);
}

bool cAztrueService::UseCalPoint(short Index) {
    return object_->UseCalPoint(Index);
}

void cAztrueService::SetUseCalPoint(short Index, bool Value) {
    object_->SetUseCalPoint(Index, Value);
}

void cAztrueService::AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000,
                                 double LST, double JD, const QString& TimeStr,
                                 const QString& DateStr) {
    if (!AllFinite("AddCalPoint", {{"PhiEnc", PhiEnc},
                                   {"ThetaEnc", ThetaEnc},
                                   {"RA2000", RA2000},
                                   {"Dec2000", Dec2000},
                                   {"LST", LST},
                                   {"JD", JD}}))
        return;
    object_->AddCalPoint(PhiEnc, ThetaEnc, RA2000, Dec2000, LST, JD, Utf8(TimeStr), Utf8(DateStr));
}

double cAztrueService::SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000,
                                    double LST, double JD, short Tsign, double& ThetaEncOffset) {
    double phiEncOffset = 0;
    ThetaEncOffset = 0;
    if (!AllFinite("SyncEncoders", {{"PhiEnc", PhiEnc},
                                    {"ThetaEnc", ThetaEnc},
                                    {"RA2000", RA2000},
                                    {"Dec2000", Dec2000},
                                    {"LST", LST},
                                    {"JD", JD}}))
        return 0;
    object_->SyncEncoders(PhiEnc, ThetaEnc, RA2000, Dec2000, LST, JD, Tsign, phiEncOffset,
                          ThetaEncOffset);
    return phiEncOffset;
}

// A caller over the bus has no variables of its own for a bad index to
// leave alone: it gets zeros, empty texts and false.
double cAztrueService::GetCalPoint(short Index, double& ThetaEnc, double& RA, double& Dec,
                                   double& LST, double& JD, QString& TimeStr, QString& DateStr,
                                   bool& Used) {
    double phiEnc = 0;
    ThetaEnc = RA = Dec = LST = JD = 0;
    Used = false;
    std::string timeStr;
    std::string dateStr;
    object_->GetCalPoint(Index, phiEnc, ThetaEnc, RA, Dec, LST, JD, timeStr, dateStr, Used);
    TimeStr = FromUtf8(timeStr);
    DateStr = FromUtf8(dateStr);
    return phiEnc;
}

double cAztrueService::GetCalPointErrors(short Index, double& RAErr, double& DecErr,
                                         double& ThetaErr, double& PhiErr) {
    double distErr = 0;
    RAErr = DecErr = ThetaErr = PhiErr = 0;
    object_->GetCalPointErrors(Index, distErr, RAErr, DecErr, ThetaErr, PhiErr);
    return distErr;
}

double cAztrueService::GetErrors(double& RMSErrSel, double& MaxErrAll, double& RMSErrAll) {
    double maxErrSel = 0;
    object_->GetErrors(maxErrSel, RMSErrSel, MaxErrAll, RMSErrAll);
    return maxErrSel;
}

void cAztrueService::RemoveCalPoint(short Index) {
    object_->RemoveCalPoint(Index);
}
void cAztrueService::ShowAztrue() {
    object_->ShowAztrue();
}
void cAztrueService::KillAztrue() {
    object_->KillAztrue();
}

double cAztrueService::CelestialToEncoder(double LST, double JD, double RARad2000,
                                          double DecRad2000, short Tsign, double& PhiEnc) {
    double thetaEnc = 0;
    PhiEnc = 0;
    if (!AllFinite(
            "CelestialToEncoder",
            {{"LST", LST}, {"JD", JD}, {"RARad2000", RARad2000}, {"DecRad2000", DecRad2000}}))
        return 0;
    object_->CelestialToEncoder(LST, JD, RARad2000, DecRad2000, Tsign, thetaEnc, PhiEnc);
    return thetaEnc;
}

double cAztrueService::EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                                          double& DecRad2000) {
    double raRad2000 = 0;
    DecRad2000 = 0;
    if (!AllFinite("EncoderToCelestial",
                   {{"LST", LST}, {"JD", JD}, {"ThetaEnc", ThetaEnc}, {"PhiEnc", PhiEnc}}))
        return 0;
    object_->EncoderToCelestial(LST, JD, ThetaEnc, PhiEnc, raRad2000, DecRad2000);
    return raRad2000;
}

double cAztrueService::EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Az) {
    double alt = 0;
    Az = 0;
    if (!AllFinite("EncoderToAltAz", {{"ThetaEnc", ThetaEnc}, {"PhiEnc", PhiEnc}})) return 0;
    object_->EncoderToAltAz(ThetaEnc, PhiEnc, alt, Az);
    return alt;
}

double cAztrueService::ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp,
                                         short Tsign, double& PhiEnc) {
    double thetaEnc = 0;
    PhiEnc = 0;
    if (!AllFinite("ApparentToEncoder",
                   {{"LST", LST}, {"JD", JD}, {"RARadApp", RARadApp}, {"DecRadApp", DecRadApp}}))
        return 0;
    object_->ApparentToEncoder(LST, JD, RARadApp, DecRadApp, Tsign, thetaEnc, PhiEnc);
    return thetaEnc;
}

double cAztrueService::EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc,
                                         double& DecRadApp) {
    double raRadApp = 0;
    DecRadApp = 0;
    if (!AllFinite("EncoderToApparent",
                   {{"LST", LST}, {"JD", JD}, {"ThetaEnc", ThetaEnc}, {"PhiEnc", PhiEnc}}))
        return 0;
    object_->EncoderToApparent(LST, JD, ThetaEnc, PhiEnc, raRadApp, DecRadApp);
    return raRadApp;
}

void cAztrueService::EnableTermsForAltAz() {
    object_->EnableTermsForAltAz();
}
void cAztrueService::EnableTermsForEquatorial() {
    object_->EnableTermsForEquatorial();
}
void cAztrueService::EnableAllTerms() {
    object_->EnableAllTerms();
}
void cAztrueService::DisableAllTerms() {
    object_->DisableAllTerms();
}

bool cAztrueService::SaveFile(const QString& FullFileName) {
    return object_->SaveFile(Utf8(FullFileName));
}

bool cAztrueService::LoadFile(const QString& FullFileName) {
    return object_->LoadFile(Utf8(FullFileName));
}

void cAztrueService::LoadDateFromComputer() {
    object_->LoadDateFromComputer();
}
void cAztrueService::LoadTimeFromComputer() {
    object_->LoadTimeFromComputer();
}

double cAztrueService::GetLSTRad() {
    // Read without a trace line: the refusal reaches nothing of the object.
    const double second = TheModel().Second;
    if (!(std::fabs(second) <= kLargestClockSecond)) {
        RefuseCall(QDBusError::InvalidArgs,
                   QStringLiteral("GetLSTRad: Second is %1; the sidereal time needs it within "
                                  "plus or minus %2 seconds")
                       .arg(QString::number(second), QString::number(kLargestClockSecond)));
        return 0;
    }
    return object_->GetLSTRad();
}

double cAztrueService::JDtoLSTRad(double JD) {
    if (!AllFinite("JDtoLSTRad", {{"JD", JD}})) return 0;
    return object_->JDtoLSTRad(JD);
}

double cAztrueService::GetUTRad() {
    return object_->GetUTRad();
}
double cAztrueService::GetJulianDay() {
    return object_->GetJulianDay();
}

double cAztrueService::GetTrackingRates(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                        short Tsign, double& PhiEncRate) {
    double thetaEncRate = 0;
    PhiEncRate = 0;
    if (!AllFinite(
            "GetTrackingRates",
            {{"LSTRad", LSTRad}, {"JD", JD}, {"RARadApp", RARadApp}, {"DecRadApp", DecRadApp}}))
        return 0;
    object_->GetTrackingRates(LSTRad, JD, RARadApp, DecRadApp, Tsign, thetaEncRate, PhiEncRate);
    return thetaEncRate;
}

double cAztrueService::GetGuideError(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                     short Tsign, double dRA, double dDec, double& dPhiEnc) {
    double dThetaEnc = 0;
    dPhiEnc = 0;
    if (!AllFinite("GetGuideError", {{"LSTRad", LSTRad},
                                     {"JD", JD},
                                     {"RARadApp", RARadApp},
                                     {"DecRadApp", DecRadApp},
                                     {"dRA", dRA},
                                     {"dDec", dDec}}))
        return 0;
    object_->GetGuideError(LSTRad, JD, RARadApp, DecRadApp, Tsign, dRA, dDec, dThetaEnc, dPhiEnc);
    return dThetaEnc;
}

double cAztrueService::GetJacobian(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                   short Tsign, double& dThetaEnc_dRA, double& dPhiEnc_dDec,
                                   double& dPhiEnc_dRA) {
    double dThetaEnc_dDec = 0;
    dThetaEnc_dRA = dPhiEnc_dDec = dPhiEnc_dRA = 0;
    if (!AllFinite(
            "GetJacobian",
            {{"LSTRad", LSTRad}, {"JD", JD}, {"RARadApp", RARadApp}, {"DecRadApp", DecRadApp}}))
        return 0;
    object_->GetJacobian(LSTRad, JD, RARadApp, DecRadApp, Tsign, dThetaEnc_dDec, dThetaEnc_dRA,
                         dPhiEnc_dDec, dPhiEnc_dRA);
    return dThetaEnc_dDec;
}

double cAztrueService::GetFieldAngle(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                     short Tsign) {
    if (!AllFinite(
            "GetFieldAngle",
            {{"LSTRad", LSTRad}, {"JD", JD}, {"RARadApp", RARadApp}, {"DecRadApp", DecRadApp}}))
        return 0;
    return object_->GetFieldAngle(LSTRad, JD, RARadApp, DecRadApp, Tsign);
}

double cAztrueService::GetFieldAngleRate(double LSTRad, double JD, double RARadApp,
                                         double DecRadApp, short Tsign) {
    if (!AllFinite(
            "GetFieldAngleRate",
            {{"LSTRad", LSTRad}, {"JD", JD}, {"RARadApp", RARadApp}, {"DecRadApp", DecRadApp}}))
        return 0;
    return object_->GetFieldAngleRate(LSTRad, JD, RARadApp, DecRadApp, Tsign);
}

void cAztrueService::Dispose() {
    object_->Dispose();
}

void cAztrueService::Release() {
    emit ReleaseRequested(this);
}
