// The descriptions in src/dbus are the contract: the server introspects them, every
// member answers with its types, and bad input gets the D-Bus errors and changes nothing.

#include <QDBusMetaType>
#include <QFile>
#include <QXmlStreamReader>
#include <cmath>

#include "BusSupport.h"

namespace {

using namespace bustest;

// A member of an interface: a property's type and access, or a method's
// in and out types ("ddn") and its arguments as "in d LST".
struct Member {
    QString name, type, access, in, out;
    QStringList args;
    std::string Line() const {
        return (QStringList{name, type, access} + args).join(u' ').toStdString();
    }
};

std::vector<Member> Members(const QString& Xml, const QString& Interface) {
    std::vector<Member> members;
    QXmlStreamReader xml(Xml);
    for (bool inside = false; !xml.atEnd();) {
        if (xml.readNext() == QXmlStreamReader::EndElement && xml.name() == u"interface")
            inside = false;
        if (!xml.isStartElement()) continue;
        const auto a = [&](const char* key) { return xml.attributes().value(key).toString(); };
        if (xml.name() == u"interface") inside = a("name") == Interface;
        if (!inside) continue;
        if (xml.name() == u"property" || xml.name() == u"method")
            members.push_back({a("name"), a("type"), a("access"), {}, {}, {}});
        // An argument is "in" unless it says otherwise.
        const bool out = a("direction") == u"out";
        if (xml.name() == u"arg" && !members.empty()) {
            (out ? members.back().out : members.back().in) += a("type");
            members.back().args << QString(out ? "out " : "in ") + a("type") + u' ' + a("name");
        }
    }
    return members;
}

std::vector<Member> Described(const QString& Interface) {
    QFile f(QStringLiteral(AZTRUE_SOURCE_DIR "/src/dbus/") + Interface + ".xml");
    return Members(f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString(),
                   Interface);
}

QVariantList ArgsOfTypes(const QString& Types) {  // a valid value of each
    const QMap<QChar, QVariant> value = {{'d', 0.25}, {'n', N(1)}, {'b', true}, {'s', ""}};
    QVariantList values;
    for (const QChar t : Types) values << value[t];
    return values;
}

TEST(Interface, IntrospectionIsTheDescriptionAndEveryMemberAnswersWithItsTypes) {
    ServerProcess server;
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    const struct {
        QString path, interface;
        size_t count;
    } kInterfaces[] = {
        {"/com/brightfold/AZTSERVR", kFactory, 1}, {path, kObject, 61}, {path, kStatistics, 4}};
    for (const auto& i : kInterfaces) {
        const QDBusMessage xml =
            server.Call(i.path, "Introspect", {}, "org.freedesktop.DBus.Introspectable");
        const std::vector<Member> onTheBus =
            Members(xml.arguments().value(0).toString(), i.interface);
        const std::vector<Member> described = Described(i.interface);
        ASSERT_EQ(onTheBus.size(), described.size()) << i.interface.toStdString();
        for (size_t k = 0; k < described.size(); ++k)
            EXPECT_EQ(onTheBus[k].Line(), described[k].Line());
        ASSERT_EQ(described.size(), i.count) << i.interface.toStdString();
        for (const Member& m : i.interface == kFactory ? std::vector<Member>{} : described) {
            if (!m.type.isEmpty()) {
                // A property reads with its type; a writable one takes it back.
                const QVariant value = server.Get(path, m.name);
                EXPECT_EQ(QDBusMetaType::typeToSignature(value.metaType()), m.type) << m.Line();
                EXPECT_TRUE(m.access == u"read" ||
                            server.Set(path, m.name, value).errorName().isEmpty())
                    << m.Line();
            } else if (m.name != u"Dispose" && m.name != u"Release") {  // these end it, below
                const QDBusMessage reply =
                    server.Call(path, m.name, ArgsOfTypes(m.in), i.interface);
                EXPECT_EQ(reply.errorMessage(), QString()) << m.Line();
                EXPECT_EQ(reply.signature(), m.out) << m.Line();
            }
        }
    }
    EXPECT_EQ(server.Call(path, "Dispose").type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(server.EndsCleanly());
}

TEST(BadInput, GetsTheStandardErrorsAndChangesNothing) {
    ServerProcess server;
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject(), p = path;
    const QVariant sample = QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT");
    ASSERT_EQ(server.Call(path, "LoadFile", {sample}).arguments(), QVariantList{true});
    const auto snapshot = [&] {  // the fit and the last point
        return server.Call(path, "GetErrors").arguments() +
               server.Call(path, "GetCalPoint", {N(40)}).arguments();
    };
    const QVariantList before = snapshot();
    const QString e = QStringLiteral("org.freedesktop.DBus.Error.");
    const auto V = [](const QVariant& v) { return QVariant::fromValue(QDBusVariant(v)); };
    const QVariantList noPoint = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0, QString(), QString(), false};
    // clang-format off
    const struct {
        QString path, interface, member;
        QVariantList args;
        QString error;            // empty: none
        QVariantList reply = {};  // checked when not empty
    } kCases[] = {
        // Tsign as a 32-bit integer; an argument short; one too many.
        {p, kObject, "CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5, 1}, e + "UnknownMethod"},
        {p, kObject, "CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5}, e + "UnknownMethod"},
        {p, kObject, "CelestialToEncoder", {1.0, 2451545.0, 1.0, 0.5, N(1), 2.0}, e + "UnknownMethod"},
        {"/com/brightfold/AZTSERVR", kFactory, "CreateObject", {N(1)}, e + "UnknownMethod"},
        {p, "com.brightfold.AZTSERVR._Nothing", "GetErrors", {}, e + "UnknownInterface"},
        {p + "7", kObject, "GetErrors", {}, e + "UnknownObject"},
        {p, kProperties, "Get", {kObject, "Altitude"}, e + "UnknownProperty"},
        // A property of the Qt object behind the interface is none of the bus's.
        {p, kProperties, "Get", {kObject, "objectName"}, e + "UnknownProperty"},
        {p, kProperties, "Get", {kStatistics, "Latitude"}, e + "UnknownProperty"},
        {p, kProperties, "Get", {"com.brightfold.Other", "Latitude"}, e + "UnknownInterface"},
        {p, kProperties, "Set", {kObject, "Version", V("9")}, e + "PropertyReadOnly"},
        // A write takes exactly the property's type.
        {p, kProperties, "Set", {kObject, "Latitude", V(10)}, kInvalidArgs},
        {p, kProperties, "Set", {kObject, "MountType", V("1")}, kInvalidArgs},
        {p, kObject, "GetCalPoint", {N(0)}, {}, noPoint},
        {p, kObject, "GetCalPointErrors", {N(41)}, {}, {0.0, 0.0, 0.0, 0.0, 0.0}},
        // The sidereal time reduces the clock a day at a time: a Second it
        // could not reduce in reasonable time is refused there.
        {p, kProperties, "Set", {kObject, "Second", V(1e300)}, {}},
        {p, kObject, "GetLSTRad", {}, kInvalidArgs},
        {p, kProperties, "Set", {kObject, "Second", V(1e9)}, {}},
        {p, kObject, "GetLSTRad", {}, {}},
        {p, kStatistics, "SuggestPoints", {N(-1)}, kInvalidArgs},
        {p, kStatistics, "SuggestPoints", {N(501)}, kInvalidArgs},
    };
    // clang-format on
    for (const auto& c : kCases) {
        const QDBusMessage reply = server.Call(c.path, c.member, c.args, c.interface);
        EXPECT_EQ(reply.errorName(), c.error) << c.member.toStdString() << Text(c.args);
        EXPECT_TRUE(c.reply.isEmpty() || reply.arguments() == c.reply)
            << "wanted " << Text(c.reply) << " got " << Text(reply.arguments());
    }

    // Every double argument and double property refuses a number that is
    // not finite, in each place: 54 arguments of 14 methods, 8 properties.
    QStringList refused, accepted;  // "member argument" or "property"
    const auto note = [&](const QDBusMessage& r, const QString& what) {
        (r.errorName() == kInvalidArgs ? refused : accepted) << what;
    };
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (const QString& interface : {kObject, kStatistics}) {
            for (const Member& m : Described(interface)) {
                for (int k = 0; k < m.in.size(); ++k) {
                    QVariantList args = ArgsOfTypes(m.in);
                    args[k] = bad;
                    if (m.in[k] == u'd')
                        note(server.Call(path, m.name, args, interface),
                             m.name + u' ' + QString::number(k));
                }
                if (m.type == u"d" && m.access == u"readwrite")
                    note(server.Set(path, m.name, bad), m.name);
            }
        }
    }
    EXPECT_EQ(accepted.join(u", ").toStdString(), "") << "numbers that are not finite accepted";
    EXPECT_EQ(refused.size(), 3 * (54 + 8));
    const QVariantList after = snapshot();
    EXPECT_EQ(after, before) << "wanted " << Text(before) << "\ngot " << Text(after);
}

}  // namespace
