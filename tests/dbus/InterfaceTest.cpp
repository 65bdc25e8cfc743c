// The interface on the bus is the contract: the members of the class's
// member table in its order and with its types, the same as the interface
// description in the repository, and every one of them answers with its
// declared types.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QTemporaryDir>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "InterfaceDescription.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);
const QString kDescription =
    QStringLiteral(AZTRUE_SOURCE_DIR "/src/dbus/com.brightfold.AZTSERVR._cAztrue.xml");
const QString kFactoryDescription =
    QStringLiteral(AZTRUE_SOURCE_DIR "/src/dbus/com.brightfold.AZTSERVR.Factory.xml");

// The member table of the automation class, row by row: a property read
// (Get), a property write (Set) or an operation (Call), with the type of a
// property in the bus's letters: text s, double d, 16-bit integer n,
// boolean b.
struct TableRow {
    const char* name;
    const char* kind;
    const char* type;
};

const TableRow kMemberTable[] = {
    {"Version", "Get", "s"},
    {"Path", "Get", "s"},
    {"Path", "Set", "s"},
    {"FullFileName", "Get", "s"},
    {"Temperature", "Get", "d"},
    {"EnableRefraction", "Set", "b"},
    {"EnableRefraction", "Get", "b"},
    {"Temperature", "Set", "d"},
    {"TimeZone", "Set", "d"},
    {"TimeZone", "Get", "d"},
    {"DST", "Set", "b"},
    {"DST", "Get", "b"},
    {"Year", "Set", "n"},
    {"Year", "Get", "n"},
    {"Month", "Set", "n"},
    {"Month", "Get", "n"},
    {"Day", "Set", "n"},
    {"Day", "Get", "n"},
    {"Hour", "Set", "n"},
    {"Hour", "Get", "n"},
    {"Minute", "Set", "n"},
    {"Minute", "Get", "n"},
    {"Second", "Set", "d"},
    {"Second", "Get", "d"},
    {"ErrorNorth", "Get", "d"},
    {"ErrorWest", "Get", "d"},
    {"ThetaEncOffset", "Get", "d"},
    {"PhiEncOffset", "Get", "d"},
    {"Sensitivity", "Get", "d"},
    {"Pressure", "Get", "d"},
    {"Pressure", "Set", "d"},
    {"Latitude", "Get", "d"},
    {"Latitude", "Set", "d"},
    {"Longitude", "Get", "d"},
    {"Longitude", "Set", "d"},
    {"ThetaCountsPerRev", "Set", "d"},
    {"PhiCountsPerRev", "Set", "d"},
    {"PhiCountsPerRev", "Get", "d"},
    {"PhiPosCW", "Set", "b"},
    {"PhiPosCW", "Get", "b"},
    {"ThetaPosUp", "Set", "b"},
    {"ThetaPosUp", "Get", "b"},
    {"ThetaCountsPerRev", "Get", "d"},
    {"NumCalPoints", "Get", "n"},
    {"MountType", "Get", "n"},
    {"MountType", "Set", "n"},
    {"UseCalPoint", "Get", "b"},
    {"UseCalPoint", "Set", "b"},
    {"AddCalPoint", "Call", ""},
    {"SyncEncoders", "Call", ""},
    {"GetCalPoint", "Call", ""},
    {"GetCalPointErrors", "Call", ""},
    {"GetErrors", "Call", ""},
    {"RemoveCalPoint", "Call", ""},
    {"ShowAztrue", "Call", ""},
    {"KillAztrue", "Call", ""},
    {"CelestialToEncoder", "Call", ""},
    {"EncoderToCelestial", "Call", ""},
    {"EncoderToAltAz", "Call", ""},
    {"ApparentToEncoder", "Call", ""},
    {"EncoderToApparent", "Call", ""},
    {"EnableTermsForAltAz", "Call", ""},
    {"EnableTermsForEquatorial", "Call", ""},
    {"EnableAllTerms", "Call", ""},
    {"DisableAllTerms", "Call", ""},
    {"SaveFile", "Call", ""},
    {"LoadFile", "Call", ""},
    {"LoadDateFromComputer", "Call", ""},
    {"LoadTimeFromComputer", "Call", ""},
    {"GetLSTRad", "Call", ""},
    {"JDtoLSTRad", "Call", ""},
    {"GetUTRad", "Call", ""},
    {"GetJulianDay", "Call", ""},
    {"GetTrackingRates", "Call", ""},
    {"GetGuideError", "Call", ""},
    {"GetJacobian", "Call", ""},
    {"GetFieldAngle", "Call", ""},
    {"GetFieldAngleRate", "Call", ""},
    {"Dispose", "Call", ""},
};

// The arguments of the operations as their descriptions give them: the
// in-arguments in order, and the out-arguments in order. A result that is
// the operation's value (a variant holding a double, or the Boolean of a
// file operation) has no name of its own there; only its type is fixed.
struct Operation {
    const char* name;
    std::vector<std::string> in;
    std::vector<std::string> out;
};

const std::vector<std::string> kFiveInputs = {"d LSTRad", "d JD", "d RARadApp", "d DecRadApp",
                                              "n Tsign"};

std::vector<Operation> Operations() {
    auto five = [](std::vector<std::string> more) {
        std::vector<std::string> in = kFiveInputs;
        in.insert(in.end(), more.begin(), more.end());
        return in;
    };
    return {
        {"UseCalPoint", {"n Index"}, {"b"}},
        {"SetUseCalPoint", {"n Index", "b Value"}, {}},
        {"AddCalPoint",
         {"d PhiEnc", "d ThetaEnc", "d RA2000", "d Dec2000", "d LST", "d JD", "s TimeStr",
          "s DateStr"},
         {}},
        {"SyncEncoders",
         {"d PhiEnc", "d ThetaEnc", "d RA2000", "d Dec2000", "d LST", "d JD", "n Tsign"},
         {"d PhiEncOffset", "d ThetaEncOffset"}},
        {"GetCalPoint",
         {"n Index"},
         {"d PhiEnc", "d ThetaEnc", "d RA", "d Dec", "d LST", "d JD", "s TimeStr", "s DateStr",
          "b Used"}},
        {"GetCalPointErrors",
         {"n Index"},
         {"d DistErr", "d RAErr", "d DecErr", "d ThetaErr", "d PhiErr"}},
        {"GetErrors", {}, {"d MaxErrSel", "d RMSErrSel", "d MaxErrAll", "d RMSErrAll"}},
        {"RemoveCalPoint", {"n Index"}, {}},
        {"ShowAztrue", {}, {}},
        {"KillAztrue", {}, {}},
        {"CelestialToEncoder",
         {"d LST", "d JD", "d RARad2000", "d DecRad2000", "n Tsign"},
         {"d ThetaEnc", "d PhiEnc"}},
        {"EncoderToCelestial",
         {"d LST", "d JD", "d ThetaEnc", "d PhiEnc"},
         {"d RARad2000", "d DecRad2000"}},
        {"EncoderToAltAz", {"d ThetaEnc", "d PhiEnc"}, {"d Alt", "d Az"}},
        {"ApparentToEncoder",
         {"d LST", "d JD", "d RARadApp", "d DecRadApp", "n Tsign"},
         {"d ThetaEnc", "d PhiEnc"}},
        {"EncoderToApparent",
         {"d LST", "d JD", "d ThetaEnc", "d PhiEnc"},
         {"d RARadApp", "d DecRadApp"}},
        {"EnableTermsForAltAz", {}, {}},
        {"EnableTermsForEquatorial", {}, {}},
        {"EnableAllTerms", {}, {}},
        {"DisableAllTerms", {}, {}},
        {"SaveFile", {"s FullFileName"}, {"b"}},
        {"LoadFile", {"s FullFileName"}, {"b"}},
        {"LoadDateFromComputer", {}, {}},
        {"LoadTimeFromComputer", {}, {}},
        {"GetLSTRad", {}, {"d"}},
        {"JDtoLSTRad", {"d JD"}, {"d"}},
        {"GetUTRad", {}, {"d"}},
        {"GetJulianDay", {}, {"d"}},
        {"GetTrackingRates", five({}), {"d ThetaEncRate", "d PhiEncRate"}},
        {"GetGuideError", five({"d dRA", "d dDec"}), {"d dThetaEnc", "d dPhiEnc"}},
        {"GetJacobian",
         five({}),
         {"d dThetaEnc_dDec", "d dThetaEnc_dRA", "d dPhiEnc_dDec", "d dPhiEnc_dRA"}},
        {"GetFieldAngle", five({}), {"d"}},
        {"GetFieldAngleRate", five({}), {"d"}},
        {"Dispose", {}, {}},
        {"Release", {}, {}},
    };
}

// The members that the table gives, in its order: each property once, at
// the first row that names it, read-write when the table also has its Set;
// the indexed property as the pair UseCalPoint and SetUseCalPoint; and the
// client's Release last.
std::vector<std::string> MembersOfTheTable() {
    std::map<std::string, std::set<std::string>> kinds;
    for (const TableRow& row : kMemberTable) kinds[row.name].insert(row.kind);
    std::vector<std::string> order;
    std::set<std::string> seen;
    for (const TableRow& row : kMemberTable) {
        const std::string name = row.name;
        if (name == "UseCalPoint") {
            if (std::string(row.kind) == "Get") order.push_back("method UseCalPoint");
            if (std::string(row.kind) == "Set") order.push_back("method SetUseCalPoint");
            continue;
        }
        if (std::string(row.kind) == "Call") {
            order.push_back("method " + name);
            continue;
        }
        if (!seen.insert(name).second) continue;
        const char* access = kinds[name].count("Set") ? "readwrite" : "read";
        order.push_back("property " + name + " " + row.type + " " + access);
    }
    order.push_back("method Release");
    return order;
}

std::string Summary(const Member& m) {
    return m.kind == "property" ? m.Line() : m.kind + " " + m.name;
}

class InterfaceTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(documents.isValid());
        server = std::make_unique<ServerProcess>(documents.path());
        ASSERT_TRUE(server->Started()) << server->Failure().toStdString();
        path = CreateObject(bus, server->UniqueName());
        ASSERT_FALSE(path.isEmpty());
    }

    QString Introspect(const QString& ObjectPath) {
        const QDBusMessage reply = CallMember(bus, server->UniqueName(), ObjectPath,
                                              QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                              QStringLiteral("Introspect"));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply.arguments().value(0).toString();
    }

    QDBusConnection bus = QDBusConnection::sessionBus();
    QTemporaryDir documents;
    std::unique_ptr<ServerProcess> server;
    QString path;
};

TEST(InterfaceDescriptionTest, ListsTheMemberTableInItsOrderWithItsTypes) {
    const std::vector<Member> described = InterfaceMembers(FileText(kDescription), kInterface);
    const std::vector<std::string> wanted = MembersOfTheTable();
    // 79 rows: 48 property reads and writes (27 properties, UseCalPoint as two
    // methods) and 31 operations; Release comes on top.
    EXPECT_EQ(sizeof kMemberTable / sizeof kMemberTable[0], 79u);
    ASSERT_EQ(described.size(), wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i)
        EXPECT_EQ(Summary(described[i]), wanted[i]) << "member " << i;
}

TEST(InterfaceDescriptionTest, OperationsHaveTheArgumentsOfTheirDescriptions) {
    const std::vector<Member> described = InterfaceMembers(FileText(kDescription), kInterface);
    for (const Operation& op : Operations()) {
        const Member* m = nullptr;
        for (const Member& d : described)
            if (d.kind == "method" && d.name == op.name) m = &d;
        ASSERT_NE(m, nullptr) << op.name;
        EXPECT_EQ(m->inArgs, op.in) << op.name;
        ASSERT_EQ(m->outArgs.size(), op.out.size()) << op.name;
        for (size_t k = 0; k < op.out.size(); ++k) {
            // A named result must have its name; a bare one only its type.
            const std::string got =
                op.out[k].size() == 1 ? m->outArgs[k].substr(0, 1) : m->outArgs[k];
            EXPECT_EQ(got, op.out[k]) << op.name << " out-argument " << k;
        }
    }
}

TEST_F(InterfaceTest, IntrospectionOfAnObjectIsTheInterfaceDescription) {
    const std::vector<Member> onTheBus = InterfaceMembers(Introspect(path), kInterface);
    const std::vector<Member> described = InterfaceMembers(FileText(kDescription), kInterface);
    ASSERT_FALSE(described.empty());
    ASSERT_EQ(onTheBus.size(), described.size());
    for (size_t i = 0; i < described.size(); ++i)
        EXPECT_EQ(onTheBus[i].Line(), described[i].Line()) << "member " << i;
    EXPECT_EQ(path, QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/1"));
}

TEST_F(InterfaceTest, IntrospectionOfTheFactoryIsItsDescription) {
    const QString factory = QString::fromLatin1(AztrueBus::kFactoryInterface);
    const std::vector<Member> onTheBus =
        InterfaceMembers(Introspect(QString::fromLatin1(AztrueBus::kFactoryPath)), factory);
    const std::vector<Member> described = InterfaceMembers(FileText(kFactoryDescription), factory);
    ASSERT_EQ(described.size(), 1u);
    ASSERT_EQ(onTheBus.size(), 1u);
    EXPECT_EQ(onTheBus[0].Line(), described[0].Line());
    EXPECT_EQ(described[0].Line(), "method CreateObject () -> (o path)");
}

// A value of each type for a call: any value does, the model takes them all.
QVariant ValueOfType(char type) {
    switch (type) {
        case 'd':
            return 0.25;
        case 'n':
            return N(1);
        case 'b':
            return true;
        default:
            return QString();
    }
}

TEST_F(InterfaceTest, EveryMemberAnswersWithItsDeclaredTypes) {
    const std::vector<Member> members = InterfaceMembers(Introspect(path), kInterface);
    ASSERT_EQ(members.size(), 61u);
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    int answered = 0;
    for (const Member& m : members) {
        if (m.kind == "property") {
            const QDBusMessage got =
                CallMember(bus, server->UniqueName(), path, properties, QStringLiteral("Get"),
                           {kInterface, QString::fromStdString(m.name)});
            ASSERT_EQ(got.type(), QDBusMessage::ReplyMessage)
                << m.name << ": " << got.errorMessage().toStdString();
            const QVariant value = qvariant_cast<QDBusVariant>(got.arguments().value(0)).variant();
            const char* type = QDBusMetaType::typeToSignature(value.metaType());
            EXPECT_STREQ(type, m.type.c_str()) << m.name;
            if (m.access == "readwrite") {
                // Writing back what was read runs the property's Set.
                const QDBusMessage set =
                    CallMember(bus, server->UniqueName(), path, properties, QStringLiteral("Set"),
                               {kInterface, QString::fromStdString(m.name),
                                QVariant::fromValue(QDBusVariant(value))});
                EXPECT_EQ(set.type(), QDBusMessage::ReplyMessage)
                    << m.name << ": " << set.errorMessage().toStdString();
            }
            ++answered;
            continue;
        }
        // The two members that end the process come last, below.
        if (m.name == "Dispose" || m.name == "Release") continue;
        QVariantList args;
        for (char type : m.InTypes()) args.push_back(ValueOfType(type));
        const QDBusMessage reply = CallMember(bus, server->UniqueName(), path, kInterface,
                                              QString::fromStdString(m.name), args);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage)
            << m.name << ": " << reply.errorMessage().toStdString();
        EXPECT_EQ(reply.signature().toStdString(), m.OutTypes()) << m.name;
        ++answered;
    }
    EXPECT_EQ(answered, 59);

    // Dispose answers before the process ends.
    const QDBusMessage reply =
        CallMember(bus, server->UniqueName(), path, kInterface, QStringLiteral("Dispose"));
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_TRUE(server->EndsCleanly());
}

}  // namespace
