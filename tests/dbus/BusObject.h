// One automation object seen through the bus, with the members of cAztrue
// under the same names and with the same argument order, so that a call
// sequence written once runs against either. Properties go through
// org.freedesktop.DBus.Properties. A reply that is an error, or whose types
// differ from the interface, fails the running test and gives zeros.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <string>

namespace bustest {

class BusObject {
  public:
    // Creates an object on the server Destination over Bus.
    BusObject(const QDBusConnection& Bus, const QString& Destination);

    const QString& ObjectPath() const { return path_; }
    bool Valid() const { return !path_.isEmpty(); }

    // Any member by name: the reply, after a check of its signature.
    QVariantList Call(const char* Member, const QVariantList& Args, const char* ReplySignature);
    QVariant Get(const char* Property, const char* Signature);
    void Set(const char* Property, const QVariant& Value);

    std::string Version() { return Get("Version", "s").toString().toStdString(); }
    std::string Path() { return Get("Path", "s").toString().toStdString(); }
    std::string FullFileName() { return Get("FullFileName", "s").toString().toStdString(); }
    double Temperature() { return Get("Temperature", "d").toDouble(); }
    void SetTemperature(double v) { Set("Temperature", v); }
    void SetEnableRefraction(bool v) { Set("EnableRefraction", v); }
    bool EnableRefraction() { return Get("EnableRefraction", "b").toBool(); }
    void SetTimeZone(double v) { Set("TimeZone", v); }
    void SetDST(bool v) { Set("DST", v); }
    void SetYear(int16_t v) { SetShort("Year", v); }
    void SetMonth(int16_t v) { SetShort("Month", v); }
    void SetDay(int16_t v) { SetShort("Day", v); }
    void SetHour(int16_t v) { SetShort("Hour", v); }
    void SetMinute(int16_t v) { SetShort("Minute", v); }
    void SetSecond(double v) { Set("Second", v); }
    double ErrorNorth() { return Get("ErrorNorth", "d").toDouble(); }
    double ErrorWest() { return Get("ErrorWest", "d").toDouble(); }
    double ThetaEncOffset() { return Get("ThetaEncOffset", "d").toDouble(); }
    double PhiEncOffset() { return Get("PhiEncOffset", "d").toDouble(); }
    double Sensitivity() { return Get("Sensitivity", "d").toDouble(); }
    void SetPressure(double v) { Set("Pressure", v); }
    double Latitude() { return Get("Latitude", "d").toDouble(); }
    void SetLatitude(double v) { Set("Latitude", v); }
    void SetLongitude(double v) { Set("Longitude", v); }
    void SetThetaCountsPerRev(double v) { Set("ThetaCountsPerRev", v); }
    void SetPhiCountsPerRev(double v) { Set("PhiCountsPerRev", v); }
    void SetPhiPosCW(bool v) { Set("PhiPosCW", v); }
    void SetThetaPosUp(bool v) { Set("ThetaPosUp", v); }
    int16_t NumCalPoints() { return Get("NumCalPoints", "n").value<short>(); }
    int16_t MountType() { return Get("MountType", "n").value<short>(); }
    void SetMountType(int16_t v) { SetShort("MountType", v); }
    bool UseCalPoint(int16_t Index);
    void SetUseCalPoint(int16_t Index, bool Value);

    void AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                     double JD, const std::string& TimeStr, const std::string& DateStr);
    void SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                      double JD, int16_t Tsign, double& PhiEncOffset, double& ThetaEncOffset);
    void GetCalPoint(int16_t Index, double& PhiEnc, double& ThetaEnc, double& RA, double& Dec,
                     double& LST, double& JD, std::string& TimeStr, std::string& DateStr,
                     bool& Used);
    void GetCalPointErrors(int16_t Index, double& DistErr, double& RAErr, double& DecErr,
                           double& ThetaErr, double& PhiErr);
    void GetErrors(double& MaxErrSel, double& RMSErrSel, double& MaxErrAll, double& RMSErrAll);
    void RemoveCalPoint(int16_t Index);
    void CelestialToEncoder(double LST, double JD, double RARad2000, double DecRad2000,
                            int16_t Tsign, double& ThetaEnc, double& PhiEnc);
    void EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                            double& RARad2000, double& DecRad2000);
    void EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Alt, double& Az);
    void ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp, int16_t Tsign,
                           double& ThetaEnc, double& PhiEnc);
    void EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc, double& RARadApp,
                           double& DecRadApp);
    void EnableTermsForAltAz() { Call("EnableTermsForAltAz", {}, ""); }
    void EnableTermsForEquatorial() { Call("EnableTermsForEquatorial", {}, ""); }
    void EnableAllTerms() { Call("EnableAllTerms", {}, ""); }
    void DisableAllTerms() { Call("DisableAllTerms", {}, ""); }
    bool SaveFile(const std::string& FullFileName);
    bool LoadFile(const std::string& FullFileName);
    double GetLSTRad();
    double JDtoLSTRad(double JD);
    double GetUTRad();
    double GetJulianDay();
    void GetTrackingRates(double LSTRad, double JD, double RARadApp, double DecRadApp,
                          int16_t Tsign, double& ThetaEncRate, double& PhiEncRate);
    void GetGuideError(double LSTRad, double JD, double RARadApp, double DecRadApp, int16_t Tsign,
                       double dRA, double dDec, double& dThetaEnc, double& dPhiEnc);
    void GetJacobian(double LSTRad, double JD, double RARadApp, double DecRadApp, int16_t Tsign,
                     double& dThetaEnc_dDec, double& dThetaEnc_dRA, double& dPhiEnc_dDec,
                     double& dPhiEnc_dRA);
    double GetFieldAngle(double LSTRad, double JD, double RARadApp, double DecRadApp,
                         int16_t Tsign);
    double GetFieldAngleRate(double LSTRad, double JD, double RARadApp, double DecRadApp,
                             int16_t Tsign);
    void Release() { Call("Release", {}, ""); }

  private:
    void SetShort(const char* Property, int16_t Value);

    QDBusConnection bus_;
    QString destination_;
    QString path_;
};

}  // namespace bustest
