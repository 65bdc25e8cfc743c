// The automation class of the server: a client's whole view of the pointing
// model. It holds no model data of its own; every member writes its trace
// line and then reads or writes the shared model or calls a model routine.
// Members stand in the order of the automation interface. Angles are
// radians except Latitude and Longitude (degrees), encoder values counts.
#pragma once

#include <cstdint>
#include <string>

#include "server/RecalcChain.h"

struct ModelState;

class cAztrue {
  public:
    // Creation: trace line, InitModel (the calibration points stay),
    // ServerStarted, and DisplayEnabled of the main window object set true.
    explicit cAztrue(RecalcChain& MainWindow);
    // The same over the process-wide model and main window object.
    cAztrue();
    // The program's own object for its development windows and checks: it
    // works on the model of MainWindow as it stands, without InitModel or
    // ServerStarted, and its end closes nothing.
    struct Attach {};
    cAztrue(RecalcChain& MainWindow, Attach);
    // Termination closes every window and ends the process (DisposeAll).
    ~cAztrue();
    cAztrue(const cAztrue&) = delete;
    cAztrue& operator=(const cAztrue&) = delete;

    std::string Version() const;
    std::string Path() const;
    void SetPath(const std::string& Value);
    std::string FullFileName() const;
    double Temperature() const;
    void SetEnableRefraction(bool Value);
    bool EnableRefraction() const;
    void SetTemperature(double Value);
    void SetTimeZone(double Value);
    double TimeZone() const;
    void SetDST(bool Value);
    bool DST() const;
    void SetYear(int16_t Value);
    int16_t Year() const;
    void SetMonth(int16_t Value);
    int16_t Month() const;
    void SetDay(int16_t Value);
    int16_t Day() const;
    void SetHour(int16_t Value);
    int16_t Hour() const;
    void SetMinute(int16_t Value);
    int16_t Minute() const;
    void SetSecond(double Value);
    double Second() const;
    // These five fit again before every read.
    double ErrorNorth();
    double ErrorWest();
    double ThetaEncOffset();
    double PhiEncOffset();
    double Sensitivity();
    double Pressure() const;
    void SetPressure(double Value);
    double Latitude() const;
    void SetLatitude(double Value);
    double Longitude() const;
    void SetLongitude(double Value);
    void SetThetaCountsPerRev(double Value);
    void SetPhiCountsPerRev(double Value);
    double PhiCountsPerRev() const;
    void SetPhiPosCW(bool Value);
    bool PhiPosCW() const;
    void SetThetaPosUp(bool Value);
    bool ThetaPosUp() const;
    double ThetaCountsPerRev() const;
    int16_t NumCalPoints() const;
    // 0 alt-azimuth, 1 equatorial fork, 2 German equatorial.
    int16_t MountType() const;
    void SetMountType(int16_t Value);
    bool UseCalPoint(int16_t Index) const;
    void SetUseCalPoint(int16_t Index, bool Value);

    // Calibration points. The encoder pair stands Phi first here.
    void AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                     double JD, const std::string& TimeStr, const std::string& DateStr);
    void SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                      double JD, int16_t Tsign, double& PhiEncOffset, double& ThetaEncOffset);
    // A bad Index leaves the out arguments alone.
    void GetCalPoint(int16_t Index, double& PhiEnc, double& ThetaEnc, double& RA, double& Dec,
                     double& LST, double& JD, std::string& TimeStr, std::string& DateStr,
                     bool& Used);
    void GetCalPointErrors(int16_t Index, double& DistErr, double& RAErr, double& DecErr,
                           double& ThetaErr, double& PhiErr);
    void GetErrors(double& MaxErrSel, double& RMSErrSel, double& MaxErrAll, double& RMSErrAll);
    void RemoveCalPoint(int16_t Index);

    void ShowAztrue();
    void KillAztrue();

    // Conversions with the model of the last fit. Theta first here.
    void CelestialToEncoder(double LST, double JD, double RARad2000, double DecRad2000,
                            int16_t Tsign, double& ThetaEnc, double& PhiEnc);
    void EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                            double& RARad2000, double& DecRad2000);
    void EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Alt, double& Az);
    void ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp, int16_t Tsign,
                           double& ThetaEnc, double& PhiEnc);
    void EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc, double& RARadApp,
                           double& DecRadApp);

    void EnableTermsForAltAz();
    void EnableTermsForEquatorial();
    void EnableAllTerms();
    void DisableAllTerms();

    bool SaveFile(const std::string& FullFileName);
    bool LoadFile(const std::string& FullFileName);

    // Time of day from the clock fields (local civil time).
    void LoadDateFromComputer();
    void LoadTimeFromComputer();
    double GetLSTRad();
    double JDtoLSTRad(double JD);
    double GetUTRad();
    double GetJulianDay();

    // Rates and derivatives of the model for an apparent place.
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

    void Dispose();

  private:
    bool ValidIndex(int16_t Index) const;

    ModelState& model_;
    RecalcChain& main_;
    bool endsProcess_ = true;  // a client's object ends the process with it
};
