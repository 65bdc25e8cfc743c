// The life of the server process: it ends cleanly, after its reply, when
// its object is released, disposed of, or its client or the bus goes away;
// a client without objects ends nothing; a second server, one without a
// bus or one with further arguments exits at once.
#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <functional>

#include "BusSupport.h"

namespace {

using namespace bustest;

const QString kFactoryPath = QString::fromLatin1(AztrueBus::kFactoryPath);

// A call on another client's connection, which closes afterwards.
QDBusMessage CallAndLeave(const ServerProcess& Server, const QString& Path, const QString& Member,
                          const QString& Interface, bool Wait = true) {
    QDBusMessage reply;
    {
        QDBusConnection other =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("other"));
        QDBusMessage call = QDBusMessage::createMethodCall(Server.Name(), Path, Interface, Member);
        if (Wait) reply = other.call(call, QDBus::Block, kPatience);
        // Leaving before the reply can come: the next call, to the bus
        // daemon, returns once the daemon has passed the request on.
        if (!Wait && other.send(call)) other.interface()->isServiceRegistered(Server.Name());
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
    return reply;
}

TEST(Lifetime, EachEndOfTheObjectEndsTheProcessAfterItsReply) {
    const QString factory = QString::fromLatin1(AztrueBus::kFactoryInterface);
    const struct {
        const char* name;
        std::function<bool(ServerProcess&)> end;  // true when a reply came as it should
    } kEnds[] = {
        {"Release of the second of two objects, numbered 1 and 2",
         [](ServerProcess& s) {
             const QString first = s.CreateObject(), second = s.CreateObject();
             return first.endsWith(u"/1") && second.endsWith(u"/2") &&
                    s.Call(second, QStringLiteral("Release")).type() == QDBusMessage::ReplyMessage;
         }},
        {"Dispose while another client holds an object",
         [&](ServerProcess& s) {
             QDBusConnection other = QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                                                   QStringLiteral("holder"));
             other.call(QDBusMessage::createMethodCall(s.Name(), kFactoryPath, factory,
                                                       QStringLiteral("CreateObject")));
             return s.Call(s.CreateObject(), QStringLiteral("Dispose")).type() ==
                    QDBusMessage::ReplyMessage;
         }},
        {"its client leaving without Release",
         [&](ServerProcess& s) {
             return CallAndLeave(s, kFactoryPath, QStringLiteral("CreateObject"), factory).type() ==
                    QDBusMessage::ReplyMessage;
         }},
        {"its client leaving before the reply to CreateObject",
         [&](ServerProcess& s) {
             CallAndLeave(s, kFactoryPath, QStringLiteral("CreateObject"), factory, false);
             return true;
         }},
    };
    for (const auto& e : kEnds) {
        ServerProcess server;
        ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
        EXPECT_TRUE(e.end(server)) << e.name;
        EXPECT_TRUE(server.EndsCleanly()) << e.name;
        QDBusConnection::disconnectFromBus(QStringLiteral("holder"));
    }
}

TEST(Lifetime, ClientWithoutObjectsLeavesAndTheServerServesOn) {
    ServerProcess server;
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    EXPECT_EQ(CallAndLeave(server, kFactoryPath, QStringLiteral("Introspect"),
                           QStringLiteral("org.freedesktop.DBus.Introspectable"))
                  .type(),
              QDBusMessage::ReplyMessage);
    const QString path = server.CreateObject();
    EXPECT_EQ(server.Get(path, QStringLiteral("NumCalPoints")), QVariant::fromValue(short{0}));
    EXPECT_TRUE(server.Running());
}

TEST(Lifetime, TheEndOfTheBusEndsTheServerWithOrWithoutObjects) {
    for (const bool withObject : {true, false}) {
        QProcess daemon;
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--session"), QStringLiteral("--nofork"),
                      QStringLiteral("--print-address=1")});
        QByteArray address;
        while (!address.contains('\n') && daemon.waitForReadyRead(kPatience))
            address += daemon.readAllStandardOutput();
        ASSERT_TRUE(address.contains('\n')) << "no address from dbus-daemon";
        {
            QProcessEnvironment env;
            env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address.trimmed());
            ServerProcess server({}, env,
                                 QDBusConnection::connectToBus(address.trimmed(), "private"));
            ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
            EXPECT_TRUE(!withObject || !server.CreateObject().isEmpty());
            QDBusConnection::disconnectFromBus(QStringLiteral("private"));
            daemon.terminate();
            EXPECT_TRUE(server.EndsCleanly()) << (withObject ? "with" : "without") << " an object";
        }
        daemon.waitForFinished(kPatience);
    }
}

TEST(Lifetime, SecondServerOneWithoutBusOrWithArgumentsExitsAtOnceAndSaysWhy) {
    ServerProcess first;
    ASSERT_TRUE(first.Started()) << first.Failure().toStdString();
    const QString session = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const struct {
        QString busAddress;
        QStringList args;
        int status;
        const char* says;
    } kStarts[] = {
        {session,
         {},
         1,
         "the automation server is already running: another process owns com.brightfold.AZTSERVR"},
        {"unix:path=/nonexistent/aztrue-test-bus",
         {},
         1,
         "cannot connect to the D-Bus session bus"},
        {session, {"extra"}, 2, "usage: aztrue --automation"},
    };
    for (const auto& s : kStarts) {
        QProcess server;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), s.busAddress);
        server.setProcessEnvironment(env);
        server.start(QStringLiteral(AZTRUE_EXECUTABLE), QStringList{"--automation"} + s.args);
        ASSERT_TRUE(server.waitForFinished(kPatience));
        EXPECT_EQ(server.exitCode(), s.status) << s.says;
        EXPECT_TRUE(server.readAllStandardError().contains(s.says)) << s.says;
    }
    // The first one serves on under the name.
    EXPECT_EQ(QDBusConnection::sessionBus()
                  .interface()
                  ->serviceOwner(QString::fromLatin1(AztrueBus::kServiceName))
                  .value(),
              first.Name());
}

}  // namespace
