// One automation object on the bus: a plain service object that owns a
// cAztrue and serves it through the adaptor generated from the interface
// description (com.brightfold.AZTSERVR._cAztrue.xml), and beside it a
// cAztrueStatistics over the same model, served through the adaptor of
// com.brightfold.AZTSERVR.Statistics.xml. Properties and
// methods take the D-Bus types (s QString, d double, n short, b bool) and
// pass them on unchanged; what the bus adds is the refusal of bad input:
// a double argument that is not a finite number gets InvalidArgs and
// reaches nothing of the model. Property writes are checked the same way
// by PropertiesAdaptor before they arrive here.
#pragma once

#include <QDBusContext>
#include <QDBusError>
#include <QList>
#include <QObject>
#include <QString>
#include <initializer_list>
#include <memory>
#include <utility>

class cAztrue;
class cAztrueStatistics;

class cAztrueService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_PROPERTY(QString Version READ Version)
    Q_PROPERTY(QString Path READ Path WRITE SetPath)
    Q_PROPERTY(QString FullFileName READ FullFileName)
    Q_PROPERTY(double Temperature READ Temperature WRITE SetTemperature)
    Q_PROPERTY(bool EnableRefraction READ EnableRefraction WRITE SetEnableRefraction)
    Q_PROPERTY(double TimeZone READ TimeZone WRITE SetTimeZone)
    Q_PROPERTY(bool DST READ DST WRITE SetDST)
    Q_PROPERTY(short Year READ Year WRITE SetYear)
    Q_PROPERTY(short Month READ Month WRITE SetMonth)
    Q_PROPERTY(short Day READ Day WRITE SetDay)
    Q_PROPERTY(short Hour READ Hour WRITE SetHour)
    Q_PROPERTY(short Minute READ Minute WRITE SetMinute)
    Q_PROPERTY(double Second READ Second WRITE SetSecond)
    Q_PROPERTY(double ErrorNorth READ ErrorNorth)
    Q_PROPERTY(double ErrorWest READ ErrorWest)
    Q_PROPERTY(double ThetaEncOffset READ ThetaEncOffset)
    Q_PROPERTY(double PhiEncOffset READ PhiEncOffset)
    Q_PROPERTY(double Sensitivity READ Sensitivity)
    Q_PROPERTY(double Pressure READ Pressure WRITE SetPressure)
    Q_PROPERTY(double Latitude READ Latitude WRITE SetLatitude)
    Q_PROPERTY(double Longitude READ Longitude WRITE SetLongitude)
    Q_PROPERTY(double ThetaCountsPerRev READ ThetaCountsPerRev WRITE SetThetaCountsPerRev)
    Q_PROPERTY(double PhiCountsPerRev READ PhiCountsPerRev WRITE SetPhiCountsPerRev)
    Q_PROPERTY(bool PhiPosCW READ PhiPosCW WRITE SetPhiPosCW)
    Q_PROPERTY(bool ThetaPosUp READ ThetaPosUp WRITE SetThetaPosUp)
    Q_PROPERTY(short NumCalPoints READ NumCalPoints)
    Q_PROPERTY(short MountType READ MountType WRITE SetMountType)

  public:
    // Runs the creation of a cAztrue over the process-wide model.
    explicit cAztrueService(QObject* Parent = nullptr);
    // The object's termination: its trace line, and the end of the process.
    ~cAztrueService() override;

    QString Version() const;
    QString Path() const;
    void SetPath(const QString& Value);
    QString FullFileName() const;
    double Temperature() const;
    void SetEnableRefraction(bool Value);
    bool EnableRefraction() const;
    void SetTemperature(double Value);
    void SetTimeZone(double Value);
    double TimeZone() const;
    void SetDST(bool Value);
    bool DST() const;
    void SetYear(short Value);
    short Year() const;
    void SetMonth(short Value);
    short Month() const;
    void SetDay(short Value);
    short Day() const;
    void SetHour(short Value);
    short Hour() const;
    void SetMinute(short Value);
    short Minute() const;
    void SetSecond(double Value);
    double Second() const;
    double ErrorNorth() const;
    double ErrorWest() const;
    double ThetaEncOffset() const;
    double PhiEncOffset() const;
    double Sensitivity() const;
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
    short NumCalPoints() const;
    short MountType() const;
    void SetMountType(short Value);

    // The methods in the adaptor's form: the first out-argument is the
    // result, the others are references.
    bool UseCalPoint(short Index);
    void SetUseCalPoint(short Index, bool Value);
    void AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                     double JD, const QString& TimeStr, const QString& DateStr);
    double SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                        double JD, short Tsign, double& ThetaEncOffset);
    // A bad Index gives 0, empty texts and false.
    double GetCalPoint(short Index, double& ThetaEnc, double& RA, double& Dec, double& LST,
                       double& JD, QString& TimeStr, QString& DateStr, bool& Used);
    double GetCalPointErrors(short Index, double& RAErr, double& DecErr, double& ThetaErr,
                             double& PhiErr);
    double GetErrors(double& RMSErrSel, double& MaxErrAll, double& RMSErrAll);
    void RemoveCalPoint(short Index);
    void ShowAztrue();
    void KillAztrue();
    double CelestialToEncoder(double LST, double JD, double RARad2000, double DecRad2000,
                              short Tsign, double& PhiEnc);
    double EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                              double& DecRad2000);
    double EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Az);
    double ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp, short Tsign,
                             double& PhiEnc);
    double EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc,
                             double& DecRadApp);
    void EnableTermsForAltAz();
    void EnableTermsForEquatorial();
    void EnableAllTerms();
    void DisableAllTerms();
    bool SaveFile(const QString& FullFileName);
    bool LoadFile(const QString& FullFileName);
    void LoadDateFromComputer();
    void LoadTimeFromComputer();
    double GetLSTRad();
    double JDtoLSTRad(double JD);
    double GetUTRad();
    double GetJulianDay();
    double GetTrackingRates(double LSTRad, double JD, double RARadApp, double DecRadApp,
                            short Tsign, double& PhiEncRate);
    double GetGuideError(double LSTRad, double JD, double RARadApp, double DecRadApp, short Tsign,
                         double dRA, double dDec, double& dPhiEnc);
    double GetJacobian(double LSTRad, double JD, double RARadApp, double DecRadApp, short Tsign,
                       double& dThetaEnc_dRA, double& dPhiEnc_dDec, double& dPhiEnc_dRA);
    double GetFieldAngle(double LSTRad, double JD, double RARadApp, double DecRadApp, short Tsign);
    double GetFieldAngleRate(double LSTRad, double JD, double RARadApp, double DecRadApp,
                             short Tsign);
    void Dispose();
    // The client lets go of the object; the factory ends it.
    void Release();

    // The statistics interface, in the adaptor's form. A Limit that is not
    // a finite number gets InvalidArgs.
    QList<short> GetTermStatistics(QList<double>& Coef, QList<double>& Sigma);
    double GetCrossValidatedErrors(double& Max);
    QList<short> GetCorrelations(double Limit, QList<short>& TermB, QList<double>& Rho);
    // A Count below 0 or above the candidate table's room gets InvalidArgs;
    // candidates that cannot be read get Failed.
    QList<double> SuggestPoints(short Count, QList<double>& Elevation);

    // Answers the call being served with an error instead of its reply.
    void RefuseCall(QDBusError::ErrorType Type, const QString& Message);

  signals:
    void ReleaseRequested(cAztrueService* Object);

  private:
    using NamedValue = std::pair<const char*, double>;
    // True when every value is a finite number; otherwise the call gets
    // InvalidArgs naming the first bad one, and the caller must do nothing.
    bool AllFinite(const char* Member, std::initializer_list<NamedValue> Values);

    std::unique_ptr<cAztrue> object_;
    std::unique_ptr<cAztrueStatistics> statistics_;
};
