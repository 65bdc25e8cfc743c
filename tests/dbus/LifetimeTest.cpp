// The life of the server process: it ends cleanly, after its reply, when its
// object is released or disposed of, or its creator or the bus goes away; a
// client without objects ends nothing; a second server, one without a bus
// or one with further arguments exits at once and says why.
#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <functional>

#include "BusSupport.h"

namespace {

using namespace bustest;

const QString kFactoryPath = QString::fromLatin1(AztrueBus::kFactoryPath);
const QString kFactory = QString::fromLatin1(AztrueBus::kFactoryInterface);

// A call from another client, which leaves at once: true when answered, or
// with Wait false, once the bus daemon has passed it on (it answers the
// client's next call after that), so that the client leaves before the reply.
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

bool Replied(const QDBusMessage& Reply) {
    return Reply.type() == QDBusMessage::ReplyMessage;
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
                    s.Running() && Replied(s.Call(second, "Release"));
         }},
        {"Dispose while another client holds an object", [](ServerProcess& s) {
             QDBusConnection::connectToBus(QDBusConnection::SessionBus, "holder").call(
                 QDBusMessage::createMethodCall(s.Name(), kFactoryPath, kFactory, "CreateObject"));
             return Replied(s.Call(s.CreateObject(), "Dispose"));
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
    QByteArray address;
    while (!address.contains('\n') && daemon.waitForReadyRead(kPatience))
        address += daemon.readAllStandardOutput();
    QProcessEnvironment env;
    env.insert("DBUS_SESSION_BUS_ADDRESS", address.trimmed());
    ServerProcess server({}, env, QDBusConnection::connectToBus(address.trimmed(), "bus"));
    ASSERT_TRUE(server.Started()) << address.toStdString();
    EXPECT_FALSE(server.CreateObject().isEmpty());
    QDBusConnection::disconnectFromBus("bus");
    daemon.terminate();
    EXPECT_TRUE(server.EndsCleanly());
    daemon.waitForFinished(kPatience);
}

TEST(Lifetime, SecondServerOneWithoutBusOrWithArgumentsExitsAtOnceAndSaysWhy) {
    ServerProcess first;
    ASSERT_TRUE(first.Started());
    const QString session = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    // clang-format off
    const struct {
        QString bus;
        QStringList args;
        int status;
        const char* says;
    } kStarts[] = {
        {session, {}, 1, "already running: another process owns com.brightfold.AZTSERVR"},
        {"unix:path=/nonexistent/aztrue-test-bus", {}, 1, "cannot connect to the D-Bus session bus"},
        {session, {"extra"}, 2, "usage: aztrue --automation"},
    };
    // clang-format on
    for (const auto& s : kStarts) {
        QProcess server;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", s.bus);
        server.setProcessEnvironment(env);
        server.start(AZTRUE_EXECUTABLE, QStringList{"--automation"} + s.args);
        ASSERT_TRUE(server.waitForFinished(kPatience));
        EXPECT_EQ(server.exitCode(), s.status) << s.says;
        EXPECT_TRUE(server.readAllStandardError().contains(s.says)) << s.says;
    }
    EXPECT_TRUE(first.Running()) << "the first server serves on";
}

}  // namespace
