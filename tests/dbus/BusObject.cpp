#include "BusObject.h"

#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDBusVariant>
#include <cstring>

#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace bustest {

namespace {

const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

double D(const QVariantList& v, int i) {
    return v.value(i).toDouble();
}
QString S(const std::string& text) {
    return QString::fromStdString(text);
}

}  // namespace

BusObject::BusObject(const QDBusConnection& Bus, const QString& Destination)
    : bus_(Bus), destination_(Destination), path_(CreateObject(Bus, Destination)) {}

QVariantList BusObject::Call(const char* Member, const QVariantList& Args,
                             const char* ReplySignature) {
    const QDBusMessage reply =
        CallMember(bus_, destination_, path_, kInterface, QString::fromLatin1(Member), Args);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        ADD_FAILURE() << Member << " failed: " << reply.errorName().toStdString() << ": "
                      << reply.errorMessage().toStdString();
        return {};
    }
    if (reply.signature() != QLatin1String(ReplySignature)) {
        ADD_FAILURE() << Member << " replied with the types '" << reply.signature().toStdString()
                      << "', wanted '" << ReplySignature << "'";
        return {};
    }
    return reply.arguments();
}

QVariant BusObject::Get(const char* Property, const char* Signature) {
    const QDBusMessage reply =
        CallMember(bus_, destination_, path_, kProperties, QStringLiteral("Get"),
                   {kInterface, QString::fromLatin1(Property)});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) {
        ADD_FAILURE() << "Get " << Property << " failed: " << reply.errorMessage().toStdString();
        return {};
    }
    const QVariant value = qvariant_cast<QDBusVariant>(reply.arguments().at(0)).variant();
    const char* type = QDBusMetaType::typeToSignature(value.metaType());
    if (!type || std::strcmp(type, Signature) != 0) {
        ADD_FAILURE() << "Get " << Property << " gave the type '" << (type ? type : "?")
                      << "', wanted '" << Signature << "'";
    }
    return value;
}

void BusObject::Set(const char* Property, const QVariant& Value) {
    const QDBusMessage reply = CallMember(
        bus_, destination_, path_, kProperties, QStringLiteral("Set"),
        {kInterface, QString::fromLatin1(Property), QVariant::fromValue(QDBusVariant(Value))});
    if (reply.type() != QDBusMessage::ReplyMessage) {
        ADD_FAILURE() << "Set " << Property << " failed: " << reply.errorName().toStdString()
                      << ": " << reply.errorMessage().toStdString();
    }
}

void BusObject::SetShort(const char* Property, int16_t Value) {
    Set(Property, N(Value));
}

bool BusObject::UseCalPoint(int16_t Index) {
    return Call("UseCalPoint", {N(Index)}, "b").value(0).toBool();
}

void BusObject::SetUseCalPoint(int16_t Index, bool Value) {
    Call("SetUseCalPoint", {N(Index), Value}, "");
}

void BusObject::AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000,
                            double LST, double JD, const std::string& TimeStr,
                            const std::string& DateStr) {
    Call("AddCalPoint", {PhiEnc, ThetaEnc, RA2000, Dec2000, LST, JD, S(TimeStr), S(DateStr)}, "");
}

void BusObject::SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000,
                             double LST, double JD, int16_t Tsign, double& PhiEncOffset,
                             double& ThetaEncOffset) {
    const QVariantList r =
        Call("SyncEncoders", {PhiEnc, ThetaEnc, RA2000, Dec2000, LST, JD, N(Tsign)}, "dd");
    PhiEncOffset = D(r, 0);
    ThetaEncOffset = D(r, 1);
}

void BusObject::GetCalPoint(int16_t Index, double& PhiEnc, double& ThetaEnc, double& RA,
                            double& Dec, double& LST, double& JD, std::string& TimeStr,
                            std::string& DateStr, bool& Used) {
    const QVariantList r = Call("GetCalPoint", {N(Index)}, "ddddddssb");
    PhiEnc = D(r, 0);
    ThetaEnc = D(r, 1);
    RA = D(r, 2);
    Dec = D(r, 3);
    LST = D(r, 4);
    JD = D(r, 5);
    TimeStr = r.value(6).toString().toStdString();
    DateStr = r.value(7).toString().toStdString();
    Used = r.value(8).toBool();
}

void BusObject::GetCalPointErrors(int16_t Index, double& DistErr, double& RAErr, double& DecErr,
                                  double& ThetaErr, double& PhiErr) {
    const QVariantList r = Call("GetCalPointErrors", {N(Index)}, "ddddd");
    DistErr = D(r, 0);
    RAErr = D(r, 1);
    DecErr = D(r, 2);
    ThetaErr = D(r, 3);
    PhiErr = D(r, 4);
}

void BusObject::GetErrors(double& MaxErrSel, double& RMSErrSel, double& MaxErrAll,
                          double& RMSErrAll) {
    const QVariantList r = Call("GetErrors", {}, "dddd");
    MaxErrSel = D(r, 0);
    RMSErrSel = D(r, 1);
    MaxErrAll = D(r, 2);
    RMSErrAll = D(r, 3);
}

void BusObject::RemoveCalPoint(int16_t Index) {
    Call("RemoveCalPoint", {N(Index)}, "");
}

void BusObject::CelestialToEncoder(double LST, double JD, double RARad2000, double DecRad2000,
                                   int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    const QVariantList r =
        Call("CelestialToEncoder", {LST, JD, RARad2000, DecRad2000, N(Tsign)}, "dd");
    ThetaEnc = D(r, 0);
    PhiEnc = D(r, 1);
}

void BusObject::EncoderToCelestial(double LST, double JD, double ThetaEnc, double PhiEnc,
                                   double& RARad2000, double& DecRad2000) {
    const QVariantList r = Call("EncoderToCelestial", {LST, JD, ThetaEnc, PhiEnc}, "dd");
    RARad2000 = D(r, 0);
    DecRad2000 = D(r, 1);
}

void BusObject::EncoderToAltAz(double ThetaEnc, double PhiEnc, double& Alt, double& Az) {
    const QVariantList r = Call("EncoderToAltAz", {ThetaEnc, PhiEnc}, "dd");
    Alt = D(r, 0);
    Az = D(r, 1);
}

void BusObject::ApparentToEncoder(double LST, double JD, double RARadApp, double DecRadApp,
                                  int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    const QVariantList r =
        Call("ApparentToEncoder", {LST, JD, RARadApp, DecRadApp, N(Tsign)}, "dd");
    ThetaEnc = D(r, 0);
    PhiEnc = D(r, 1);
}

void BusObject::EncoderToApparent(double LST, double JD, double ThetaEnc, double PhiEnc,
                                  double& RARadApp, double& DecRadApp) {
    const QVariantList r = Call("EncoderToApparent", {LST, JD, ThetaEnc, PhiEnc}, "dd");
    RARadApp = D(r, 0);
    DecRadApp = D(r, 1);
}

bool BusObject::SaveFile(const std::string& FullFileName) {
    return Call("SaveFile", {S(FullFileName)}, "b").value(0).toBool();
}

bool BusObject::LoadFile(const std::string& FullFileName) {
    return Call("LoadFile", {S(FullFileName)}, "b").value(0).toBool();
}

double BusObject::GetLSTRad() {
    return D(Call("GetLSTRad", {}, "d"), 0);
}
double BusObject::JDtoLSTRad(double JD) {
    return D(Call("JDtoLSTRad", {JD}, "d"), 0);
}
double BusObject::GetUTRad() {
    return D(Call("GetUTRad", {}, "d"), 0);
}
double BusObject::GetJulianDay() {
    return D(Call("GetJulianDay", {}, "d"), 0);
}

void BusObject::GetTrackingRates(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                 int16_t Tsign, double& ThetaEncRate, double& PhiEncRate) {
    const QVariantList r =
        Call("GetTrackingRates", {LSTRad, JD, RARadApp, DecRadApp, N(Tsign)}, "dd");
    ThetaEncRate = D(r, 0);
    PhiEncRate = D(r, 1);
}

void BusObject::GetGuideError(double LSTRad, double JD, double RARadApp, double DecRadApp,
                              int16_t Tsign, double dRA, double dDec, double& dThetaEnc,
                              double& dPhiEnc) {
    const QVariantList r =
        Call("GetGuideError", {LSTRad, JD, RARadApp, DecRadApp, N(Tsign), dRA, dDec}, "dd");
    dThetaEnc = D(r, 0);
    dPhiEnc = D(r, 1);
}

void BusObject::GetJacobian(double LSTRad, double JD, double RARadApp, double DecRadApp,
                            int16_t Tsign, double& dThetaEnc_dDec, double& dThetaEnc_dRA,
                            double& dPhiEnc_dDec, double& dPhiEnc_dRA) {
    const QVariantList r = Call("GetJacobian", {LSTRad, JD, RARadApp, DecRadApp, N(Tsign)}, "dddd");
    dThetaEnc_dDec = D(r, 0);
    dThetaEnc_dRA = D(r, 1);
    dPhiEnc_dDec = D(r, 2);
    dPhiEnc_dRA = D(r, 3);
}

double BusObject::GetFieldAngle(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                int16_t Tsign) {
    return D(Call("GetFieldAngle", {LSTRad, JD, RARadApp, DecRadApp, N(Tsign)}, "d"), 0);
}

double BusObject::GetFieldAngleRate(double LSTRad, double JD, double RARadApp, double DecRadApp,
                                    int16_t Tsign) {
    return D(Call("GetFieldAngleRate", {LSTRad, JD, RARadApp, DecRadApp, N(Tsign)}, "d"), 0);
}

}  // namespace bustest
