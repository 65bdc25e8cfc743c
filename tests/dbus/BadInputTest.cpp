// Bad input from a client gets the standard D-Bus error, the server answers
// on, and nothing of the model changes: wrong types and counts, unknown
// members, properties, interfaces and objects, read-only properties, and
// numbers that are not finite in any double argument or property.
#include <gtest/gtest.h>

#include <QDBusVariant>
#include <limits>

#include "BusSupport.h"

namespace {

using namespace bustest;

const QString kPrefix = QStringLiteral("org.freedesktop.DBus.Error.");

TEST(BadInput, GetsTheStandardErrorsAndChangesNothing) {
    ServerProcess server;
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    const QString path = server.CreateObject();
    const auto call = [&](const QString& member, const QVariantList& args,
                          const QString& interface = kObject) {
        return server.Call(path, member, args, interface);
    };
    ASSERT_TRUE(
        call(QStringLiteral("LoadFile"), {QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT")})
            .arguments()
            .value(0)
            .toBool());
    // What a client sees of the model: the fit and the last point.
    const auto snapshot = [&] {
        return call(QStringLiteral("GetErrors"), {}).arguments() +
               call(QStringLiteral("GetCalPoint"), {N(40)}).arguments() +
               QVariantList{server.Get(path, QStringLiteral("Latitude"))};
    };
    const QVariantList before = snapshot();

    const QString factoryPath = QString::fromLatin1(AztrueBus::kFactoryPath);
    const QString factory = QString::fromLatin1(AztrueBus::kFactoryInterface);
    const auto V = [](const QVariant& x) { return QVariant::fromValue(QDBusVariant(x)); };
    const QVariant v = V(1.0);
    const struct {
        QString path, interface, member;
        QVariantList args;
        const char* error;
    } kCases[] = {
        // Tsign as a 32-bit integer; an argument short; one too many.
        {path, kObject, "CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5, 1}, "UnknownMethod"},
        {path, kObject, "CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5}, "UnknownMethod"},
        {path,
         kObject,
         "CelestialToEncoder",
         {1.0, 2451545.0, 1.0, 0.5, N(1), 2.0},
         "UnknownMethod"},
        {path, kObject, "RemoveCalPoint", {1.0}, "UnknownMethod"},
        {path, kObject, "GetErrors", {N(1)}, "UnknownMethod"},
        {factoryPath, factory, "CreateObject", {N(1)}, "UnknownMethod"},
        {path, kObject, "Calibrate", {}, "UnknownMethod"},
        {path, kObject, "dispose", {}, "UnknownMethod"},
        {path, "com.brightfold.AZTSERVR._Nothing", "GetErrors", {}, "UnknownInterface"},
        {path + "7", kObject, "GetErrors", {}, "UnknownObject"},
        {path, kProperties, "Get", {kObject, "Altitude"}, "UnknownProperty"},
        // A property of the Qt object behind the interface is none of the bus's.
        {path, kProperties, "Get", {kObject, "objectName"}, "UnknownProperty"},
        {path, kProperties, "Get", {kStatistics, "Latitude"}, "UnknownProperty"},
        {path, kProperties, "Get", {"com.brightfold.Other", "Latitude"}, "UnknownInterface"},
        {path, kProperties, "Set", {kObject, "Version", v}, "PropertyReadOnly"},
        {path, kProperties, "Set", {kObject, "NumCalPoints", v}, "PropertyReadOnly"},
        {path, kProperties, "Set", {kObject, "ErrorNorth", v}, "PropertyReadOnly"},
        {path, kProperties, "Set", {kObject, "Latitude"}, "UnknownMethod"},
        // A write takes exactly the property's type.
        {path, kProperties, "Set", {kObject, "Latitude", V(10)}, "InvalidArgs"},
        {path, kProperties, "Set", {kObject, "Year", V(100000)}, "InvalidArgs"},
        {path, kProperties, "Set", {kObject, "MountType", V(QStringLiteral("1"))}, "InvalidArgs"},
        {path, kProperties, "Set", {kObject, "PhiPosCW", V(N(0))}, "InvalidArgs"},
    };
    for (const auto& c : kCases) {
        const QDBusMessage reply = server.Call(c.path, c.member, c.args, c.interface);
        EXPECT_EQ(reply.errorName(), kPrefix + QLatin1String(c.error))
            << c.member.toStdString() << Text(c.args);
    }

    // Every double argument and double property refuses a number that is
    // not finite, in each place.
    const double kNaN = std::numeric_limits<double>::quiet_NaN();
    const double kInf = std::numeric_limits<double>::infinity();
    int refusals = 0;
    for (const QString& interface : {kObject, kStatistics}) {
        for (const Member& m : InterfaceMembers(DescriptionFile(interface), interface)) {
            for (int k = 0; k < m.in.size(); ++k) {
                if (!m.in[k].startsWith(u'd')) continue;
                for (const double bad : {kNaN, kInf, -kInf}) {
                    QVariantList args = ArgsOfTypes(m.in);
                    args[k] = bad;
                    EXPECT_EQ(call(m.name, args, interface).errorName(), kInvalidArgs)
                        << m.name.toStdString() << Text(args);
                    ++refusals;
                }
            }
            if (m.type == u"d" && m.access == u"readwrite") {
                for (const double bad : {kNaN, kInf, -kInf})
                    EXPECT_EQ(server.Set(path, m.name, bad).errorName(), kInvalidArgs)
                        << m.name.toStdString() << " = " << bad;
                refusals += 3;
            }
        }
    }
    // 54 double arguments of 14 methods and 8 double properties.
    EXPECT_EQ(refusals, 3 * (54 + 8));

    // A bad point index gives zeros, empty texts and false.
    const QVariantList noPoint = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0, QString(), QString(), false};
    const QVariantList noErrors = {0.0, 0.0, 0.0, 0.0, 0.0};
    for (const int index : {0, 41, -32768}) {
        const QVariantList point = call(QStringLiteral("GetCalPoint"), {N(index)}).arguments();
        EXPECT_EQ(point, noPoint) << "GetCalPoint(" << index << ") " << Text(point);
        const QVariantList errors =
            call(QStringLiteral("GetCalPointErrors"), {N(index)}).arguments();
        EXPECT_EQ(errors, noErrors) << "GetCalPointErrors(" << index << ") " << Text(errors);
    }
    // The sidereal time reduces the clock a day at a time: a Second it
    // could not reduce in reasonable time is refused there.
    for (const auto& [second, error] :
         {std::pair{1e300, kInvalidArgs}, std::pair{1e9, QString()}}) {
        ASSERT_EQ(server.Set(path, QStringLiteral("Second"), second).type(),
                  QDBusMessage::ReplyMessage);
        EXPECT_EQ(call(QStringLiteral("GetLSTRad"), {}).errorName(), error) << second;
    }

    const QVariantList after = snapshot();
    EXPECT_EQ(after, before) << "wanted " << Text(before) << "\ngot " << Text(after);
    EXPECT_TRUE(server.Running());
}

}  // namespace
