// The life of the server process, and the server under hard conditions.
#include <sys/resource.h>

#include <QDBusPendingCall>
#include <QDir>
#include <QTemporaryDir>
#include <functional>

#include "BusSupport.h"

namespace {

using namespace bustest;

// A call from a client that leaves at once: true when answered, or with Wait false
// when the bus daemon has passed it on (it answers the next call after that).
bool CallAndLeave(const ServerProcess& Server, const QString& Member, bool Wait = true) {
    auto other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "other");
    const auto call = QDBusMessage::createMethodCall(
        Server.Name(), kFactoryPath,
        Member == u"Introspect" ? "org.freedesktop.DBus.Introspectable" : kFactory, Member);
    const bool answered =
        Wait ? other.call(call, QDBus::Block, kPatience).type() == QDBusMessage::ReplyMessage
             : other.send(call) && other.interface()->isServiceRegistered(Server.Name()).value();
    other = QDBusConnection("");
    QDBusConnection::disconnectFromBus("other");
    return answered;
}

TEST(Lifetime, EachEndOfTheObjectEndsTheProcessAfterItsReply) {
    // clang-format off
    const struct {
        const char* name;
        std::function<bool(ServerProcess&)> end;  // true when the replies came
    } kEnds[] = {
        {"Release of the second object, after a client without objects left",
         [](ServerProcess& s) {
             const bool introspected = CallAndLeave(s, "Introspect");
             const QString first = s.CreateObject(), second = s.CreateObject();
             return introspected && first.endsWith(u"/1") && second.endsWith(u"/2") &&
                    s.Running() && s.Call(second, "Release").errorName().isEmpty();
         }},
        {"Dispose while another client holds an object", [](ServerProcess& s) {
             QDBusConnection::connectToBus(QDBusConnection::SessionBus, "holder").call(
                 QDBusMessage::createMethodCall(s.Name(), kFactoryPath, kFactory, "CreateObject"));
             return s.Call(s.CreateObject(), "Dispose").errorName().isEmpty();
         }},
        {"its creator leaving without Release",
         [](ServerProcess& s) { return CallAndLeave(s, "CreateObject"); }},
        {"its creator leaving before the reply to CreateObject",
         [](ServerProcess& s) { return CallAndLeave(s, "CreateObject", false); }},
    };
    // clang-format on
    for (const auto& e : kEnds) {
        ServerProcess server;
        ASSERT_TRUE(server.Started());
        EXPECT_TRUE(e.end(server)) << e.name;
        EXPECT_TRUE(server.EndsCleanly()) << e.name;
        QDBusConnection::disconnectFromBus("holder");
    }
}

TEST(Lifetime, TheEndOfTheBusEndsTheServer) {
    QProcess daemon;
    daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    while (!daemon.canReadLine() && daemon.waitForReadyRead(kPatience)) continue;
    const QByteArray address = daemon.readLine().trimmed();
    QProcessEnvironment env;
    env.insert("DBUS_SESSION_BUS_ADDRESS", address);
    ServerProcess server({}, env, QDBusConnection::connectToBus(address, "bus"));
    ASSERT_TRUE(server.Started()) << address.toStdString();
    EXPECT_FALSE(server.CreateObject().isEmpty());
    QDBusConnection::disconnectFromBus("bus");
    daemon.terminate();
    EXPECT_TRUE(server.EndsCleanly());
}

TEST(Lifetime, SecondServerOrOneWithoutBusExitsAtOnceAndSaysWhy) {
    ServerProcess first;
    ASSERT_TRUE(first.Started());
    const QString session = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const struct {
        QString bus;
        const char* says;
    } kStarts[] = {
        {session, "already running: another process owns com.brightfold.AZTSERVR"},
        {"unix:path=/nonexistent/aztrue-test-bus", "cannot connect to the D-Bus session bus"},
    };
    for (const auto& s : kStarts) {
        QProcess server;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", s.bus);
        server.setProcessEnvironment(env);
        server.start(AZTRUE_EXECUTABLE, {"--automation"});
        ASSERT_TRUE(server.waitForFinished(kPatience));
        EXPECT_EQ(server.exitCode(), 1) << s.says;
        EXPECT_TRUE(server.readAllStandardError().contains(s.says)) << s.says;
    }
    EXPECT_TRUE(first.Running()) << "the first server serves on";
}

// Calls queued while the server lets pending events run inside its refit
// are served there, one at a time and in order: each read of a point sent
// behind its AddCalPoint finds it in the table.
TEST(HardConditions, CallsSentWithoutWaitingAreAnsweredInOrder) {
    ServerProcess server;
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    const auto send = [&](const char* member, const QVariantList& args) {
        QDBusMessage m = QDBusMessage::createMethodCall(server.Name(), path, kObject, member);
        m.setArguments(args);
        return QDBusConnection::sessionBus().asyncCall(m, kPatience);
    };
    std::vector<QDBusPendingCall> calls;
    for (int i = 1; i <= 30; ++i) {
        calls.push_back(send("AddCalPoint", {0.1 * i, 0.3, 0.2 * i, 0.5, 1.0, 2461056.7, "", ""}));
        calls.push_back(send("GetCalPoint", {N(i)}));
    }
    for (size_t i = 0; i < calls.size(); ++i) {
        calls[i].waitForFinished();
        const QDBusMessage r = calls[i].reply();
        EXPECT_EQ(r.type(), QDBusMessage::ReplyMessage)
            << i << ": " << r.errorMessage().toStdString();
        EXPECT_TRUE(i % 2 == 0 || r.arguments().value(0) == 0.1 * (i / 2 + 1))
            << Text(r.arguments());
    }
}

TEST(HardConditions, SaveUnderAFileSizeLimitFailsAndTheOldFileStays) {
    QTemporaryDir documents;
    const QString old = QStringLiteral(AZTRUE_SOURCE_DIR "/data/README.md");
    const QString target = documents.filePath("run.AZT");
    ASSERT_TRUE(QFile::copy(old, target));
    // The server keeps the limit this process has while it starts it: 4 kB,
    // less than the 9 kB of the 40 stars of the sample.
    rlimit normal{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &normal), 0);
    const rlimit low{4096, normal.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    ServerProcess server(documents.path());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &normal), 0);
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    const QVariant sample = QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT");
    ASSERT_EQ(server.Call(path, "LoadFile", {sample}).arguments(), QVariantList{true});
    EXPECT_EQ(server.Call(path, "SaveFile", {target}).arguments(), QVariantList{false});
    EXPECT_EQ(server.Get(path, "NumCalPoints"), QVariant::fromValue(short{40}));
    QFile before(old), after(target);
    ASSERT_TRUE(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), before.readAll());
    EXPECT_EQ(QDir(documents.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"run.AZT"});
}

}  // namespace
