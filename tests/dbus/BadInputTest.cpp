// Bad input from a client: wrong types or counts of arguments, unknown
// members, properties, interfaces and objects, values that are not finite
// numbers, and indices out of range. Each gets the standard D-Bus error or
// what the class itself does with it; the server answers on afterwards and
// nothing of the model is lost.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <QTemporaryDir>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

QVariant V(const QVariant& v) {
    return QVariant::fromValue(QDBusVariant(v));
}

// What a client can see of the model, as exact numbers.
std::vector<double> Snapshot(BusObject& o) {
    std::vector<double> s = {
        static_cast<double>(o.NumCalPoints()), o.Latitude(),   o.Temperature(),
        static_cast<double>(o.MountType()),    o.ErrorNorth(), o.ThetaEncOffset()};
    double e[4] = {};
    o.GetErrors(e[0], e[1], e[2], e[3]);
    s.insert(s.end(), e, e + 4);
    double p[6] = {};
    std::string t, d;
    bool used = false;
    o.GetCalPoint(3, p[0], p[1], p[2], p[3], p[4], p[5], t, d, used);
    s.insert(s.end(), p, p + 6);
    s.push_back(used ? 1 : 0);
    for (int i = 1; i <= o.NumCalPoints(); ++i) s.push_back(o.UseCalPoint(i) ? 1 : 0);
    return s;
}

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

class BadInputTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(documents.isValid());
        server = std::make_unique<ServerProcess>(documents.path());
        ASSERT_TRUE(server->Started()) << server->Failure().toStdString();
        object = std::make_unique<BusObject>(QDBusConnection::sessionBus(), server->UniqueName());
        ASSERT_TRUE(object->Valid());
        object->SetThetaCountsPerRev(kSequenceCountsPerRev);
        object->SetPhiCountsPerRev(kSequenceCountsPerRev);
        object->EnableTermsForAltAz();
        const std::vector<SyntheticPoint> points = SequencePoints();
        for (int i = 0; i < 12; ++i) {
            const SyntheticPoint& p = points[i];
            object->AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr,
                                p.DateStr);
        }
        before = Snapshot(*object);
    }

    void TearDown() override {
        if (!object || !server || !server->Started()) return;
        // The server answers after all of it, with the model as it was.
        EXPECT_TRUE(server->Running());
        const std::vector<double> after = Snapshot(*object);
        EXPECT_TRUE(SameBits(after, before)) << "the model changed";
        object->Release();
        EXPECT_TRUE(server->EndsCleanly());
    }

    // Sends the call and returns its error name, or "no error".
    std::string ErrorOf(const QString& Path, const QString& Interface, const QString& Member,
                        const QVariantList& Args) {
        const QDBusMessage reply = CallMember(QDBusConnection::sessionBus(), server->UniqueName(),
                                              Path, Interface, Member, Args);
        if (reply.type() != QDBusMessage::ErrorMessage) return "no error";
        return reply.errorName().toStdString();
    }
    std::string ErrorOf(const char* Member, const QVariantList& Args) {
        return ErrorOf(object->ObjectPath(), kInterface, QString::fromLatin1(Member), Args);
    }
    std::string SetError(const char* Property, const QVariant& Value) {
        return ErrorOf(object->ObjectPath(), kProperties, QStringLiteral("Set"),
                       {kInterface, QString::fromLatin1(Property), V(Value)});
    }

    QTemporaryDir documents;
    std::unique_ptr<ServerProcess> server;
    std::unique_ptr<BusObject> object;
    std::vector<double> before;
};

const std::string kUnknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
const std::string kInvalidArgs = "org.freedesktop.DBus.Error.InvalidArgs";

TEST_F(BadInputTest, WrongTypesAndCountsOfArgumentsFindNoMethod) {
    // Tsign as a 32-bit integer, one argument short, one too many.
    EXPECT_EQ(ErrorOf("CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5, 1}), kUnknownMethod);
    EXPECT_EQ(ErrorOf("CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5}), kUnknownMethod);
    EXPECT_EQ(ErrorOf("CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5, N(1), 2.0}), kUnknownMethod);
    // A text for an encoder value; an index as a double.
    EXPECT_EQ(ErrorOf("AddCalPoint",
                      {QStringLiteral("1"), 0.5, 1.0, 0.3, 1.0, 2461056.7, QString(), QString()}),
              kUnknownMethod);
    EXPECT_EQ(ErrorOf("RemoveCalPoint", {1.0}), kUnknownMethod);
    EXPECT_EQ(ErrorOf("GetErrors", {N(1)}), kUnknownMethod);
    EXPECT_EQ(ErrorOf(QString::fromLatin1(AztrueBus::kFactoryPath),
                      QString::fromLatin1(AztrueBus::kFactoryInterface),
                      QStringLiteral("CreateObject"), {N(1)}),
              kUnknownMethod);
}

TEST_F(BadInputTest, UnknownMembersInterfacesAndObjectsGetTheStandardErrors) {
    EXPECT_EQ(ErrorOf("Calibrate", {}), kUnknownMethod);
    EXPECT_EQ(ErrorOf("dispose", {}), kUnknownMethod);
    EXPECT_EQ(ErrorOf(object->ObjectPath(), QStringLiteral("com.brightfold.AZTSERVR._Nothing"),
                      QStringLiteral("GetErrors"), {}),
              "org.freedesktop.DBus.Error.UnknownInterface");
    EXPECT_EQ(ErrorOf(QString::fromLatin1(AztrueBus::kObjectPathPrefix) + QStringLiteral("7"),
                      kInterface, QStringLiteral("GetErrors"), {}),
              "org.freedesktop.DBus.Error.UnknownObject");
}

TEST_F(BadInputTest, UnknownReadOnlyAndWronglyTypedPropertiesGetTheStandardErrors) {
    const QString path = object->ObjectPath();
    EXPECT_EQ(
        ErrorOf(path, kProperties, QStringLiteral("Get"), {kInterface, QStringLiteral("Altitude")}),
        "org.freedesktop.DBus.Error.UnknownProperty");
    // A property of the Qt object behind the interface is none of the bus's.
    EXPECT_EQ(ErrorOf(path, kProperties, QStringLiteral("Get"),
                      {kInterface, QStringLiteral("objectName")}),
              "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(ErrorOf(path, kProperties, QStringLiteral("Get"),
                      {QStringLiteral("com.brightfold.Other"), QStringLiteral("Latitude")}),
              "org.freedesktop.DBus.Error.UnknownInterface");
    EXPECT_EQ(SetError("Version", QStringLiteral("9")),
              "org.freedesktop.DBus.Error.PropertyReadOnly");
    EXPECT_EQ(SetError("NumCalPoints", N(0)), "org.freedesktop.DBus.Error.PropertyReadOnly");
    EXPECT_EQ(SetError("ErrorNorth", 0.0), "org.freedesktop.DBus.Error.PropertyReadOnly");
    // Each property takes exactly its own type: no 32-bit integer for a
    // double or for a 16-bit integer (100000 does not fit one), no text for
    // a number, no number for a Boolean.
    EXPECT_EQ(SetError("Latitude", 10), kInvalidArgs);
    EXPECT_EQ(SetError("Year", 100000), kInvalidArgs);
    EXPECT_EQ(SetError("MountType", QStringLiteral("1")), kInvalidArgs);
    EXPECT_EQ(SetError("PhiPosCW", N(0)), kInvalidArgs);
    EXPECT_EQ(
        ErrorOf(path, kProperties, QStringLiteral("Set"), {kInterface, QStringLiteral("Latitude")}),
        kUnknownMethod);
}

TEST_F(BadInputTest, NumbersThatAreNotFiniteAreRefused) {
    for (double bad : {kNaN, kInf, -kInf}) {
        EXPECT_EQ(
            ErrorOf("AddCalPoint", {1.0, 0.5, bad, 0.3, 1.0, 2461056.7, QString(), QString()}),
            kInvalidArgs);
        EXPECT_EQ(ErrorOf("SyncEncoders", {1.0, 0.5, 1.0, 0.3, bad, 2461056.7, N(1)}),
                  kInvalidArgs);
        EXPECT_EQ(ErrorOf("CelestialToEncoder", {1.0, bad, 1.0, 0.5, N(1)}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("EncoderToCelestial", {1.0, 2451545.0, bad, 0.5}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("EncoderToAltAz", {0.5, bad}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("ApparentToEncoder", {bad, 2451545.0, 1.0, 0.5, N(-1)}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("EncoderToApparent", {1.0, 2451545.0, 0.5, bad}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("JDtoLSTRad", {bad}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("GetTrackingRates", {1.0, 2451545.0, bad, 0.5, N(1)}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("GetGuideError", {1.0, 2451545.0, 1.0, 0.5, N(1), 0.0, bad}),
                  kInvalidArgs);
        EXPECT_EQ(ErrorOf("GetJacobian", {1.0, 2451545.0, 1.0, bad, N(1)}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("GetFieldAngle", {bad, 2451545.0, 1.0, 0.5, N(1)}), kInvalidArgs);
        EXPECT_EQ(ErrorOf("GetFieldAngleRate", {1.0, 2451545.0, 1.0, 0.5, N(1)}), "no error");
        EXPECT_EQ(ErrorOf("GetFieldAngleRate", {1.0, bad, 1.0, 0.5, N(1)}), kInvalidArgs);
        for (const char* property : {"Latitude", "Temperature", "Pressure", "Longitude",
                                     "ThetaCountsPerRev", "PhiCountsPerRev", "TimeZone", "Second"})
            EXPECT_EQ(SetError(property, bad), kInvalidArgs) << property;
    }
}

TEST_F(BadInputTest, ClockSecondsTooLargeForTheSiderealTimeAreRefusedThere) {
    // Any finite Second is stored; the sidereal time, which reduces its sum
    // a day at a time, refuses one it could not reduce in reasonable time.
    object->SetSecond(1e300);
    EXPECT_EQ(ErrorOf("GetLSTRad", {}), kInvalidArgs);
    EXPECT_EQ(ErrorOf("GetJulianDay", {}), "no error");
    object->SetSecond(1e9);
    EXPECT_EQ(ErrorOf("GetLSTRad", {}), "no error");
    object->SetSecond(0);
}

TEST_F(BadInputTest, IndicesOutOfRangeDoWhatTheClassDoes) {
    const short count = object->NumCalPoints();
    ASSERT_EQ(count, 12);
    for (int index : {0, -1, count + 1, 32767, -32768}) {
        // A read gives zeros, empty texts and false.
        const QVariantList point = object->Call("GetCalPoint", {N(index)}, "ddddddssb");
        ASSERT_EQ(point.size(), 9) << index;
        for (int k = 0; k < 6; ++k) EXPECT_EQ(point[k].toDouble(), 0.0) << index;
        EXPECT_EQ(point[6].toString(), QString());
        EXPECT_EQ(point[7].toString(), QString());
        EXPECT_FALSE(point[8].toBool());
        const QVariantList errors = object->Call("GetCalPointErrors", {N(index)}, "ddddd");
        ASSERT_EQ(errors.size(), 5);
        for (const QVariant& e : errors) EXPECT_EQ(e.toDouble(), 0.0) << index;
        EXPECT_FALSE(object->UseCalPoint(index));
        // Writes and removals change nothing (the fit runs again, to the
        // same result).
        object->SetUseCalPoint(index, false);
        object->RemoveCalPoint(index);
    }
    EXPECT_EQ(object->NumCalPoints(), count);
    // A mount type beyond 0 to 2 changes neither flag.
    object->SetMountType(3);
    object->SetMountType(-1);
    EXPECT_EQ(object->MountType(), 0);
}

TEST_F(BadInputTest, HugeFiniteValuesPassThroughAndTheServerAnswers) {
    for (double big : {1e300, -1e300, 5e-324}) {
        EXPECT_EQ(ErrorOf("CelestialToEncoder", {big, big, big, big, N(32767)}), "no error");
        EXPECT_EQ(ErrorOf("EncoderToCelestial", {big, big, big, big}), "no error");
        EXPECT_EQ(ErrorOf("GetFieldAngleRate", {big, big, big, big, N(-32768)}), "no error");
        EXPECT_EQ(ErrorOf("JDtoLSTRad", {big}), "no error");
    }
    EXPECT_EQ(ErrorOf("SaveFile", {QStringLiteral("/nonexistent/folder/x.AZT")}), "no error");
    const QVariantList loaded =
        object->Call("LoadFile", {QStringLiteral("/nonexistent/folder/x.AZT")}, "b");
    EXPECT_FALSE(loaded.value(0).toBool());
}

}  // namespace
