// Starting the server: directly, as a second instance, without a bus, and by
// activation from a client's first call.
#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>

#include "PrivateBus.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"
#include "model/ModelState.h"

namespace {

using namespace bustest;

const QString kName = QString::fromLatin1(AztrueBus::kServiceName);
const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);

// The version text of a fresh model, for a check that a call really reached
// a new object of the model.
QString FreshVersion() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return QString::fromStdString(s->Version);
}

QString VersionOf(const QDBusConnection& Bus, const QString& Destination, const QString& Path) {
    const QDBusMessage reply =
        CallMember(Bus, Destination, Path, QStringLiteral("org.freedesktop.DBus.Properties"),
                   QStringLiteral("Get"), {kInterface, QStringLiteral("Version")});
    return qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant().toString();
}

TEST(StartTest, StartedDirectlyTheServerOwnsTheNameAndCreatesObjects) {
    QTemporaryDir documents;
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    const QString path = CreateObject(QDBusConnection::sessionBus(), server.UniqueName());
    EXPECT_EQ(path, QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/1"));
    EXPECT_EQ(VersionOf(QDBusConnection::sessionBus(), server.UniqueName(), path), FreshVersion());
    CallMember(QDBusConnection::sessionBus(), server.UniqueName(), path, kInterface,
               QStringLiteral("Release"));
    EXPECT_TRUE(server.EndsCleanly());
}

TEST(StartTest, SecondInstanceFindsTheNameTakenAndExitsAtOnce) {
    QTemporaryDir documents;
    ServerProcess first(documents.path());
    ASSERT_TRUE(first.Started()) << first.Failure().toStdString();
    QProcess second;
    second.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    ASSERT_TRUE(second.waitForFinished(kPatience));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 1);
    const QString message = QString::fromLocal8Bit(second.readAllStandardError());
    EXPECT_TRUE(message.contains(QStringLiteral("already running")) && message.contains(kName))
        << message.toStdString();
    // The first one serves on, under the same name.
    const QDBusReply<QString> owner =
        QDBusConnection::sessionBus().interface()->serviceOwner(kName);
    EXPECT_EQ(owner.value(), first.UniqueName());
    EXPECT_TRUE(first.Running());
}

TEST(StartTest, WithoutABusTheServerSaysSoAndExits) {
    QProcess server;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
               QStringLiteral("unix:path=/nonexistent/aztrue-test-bus"));
    server.setProcessEnvironment(env);
    server.start(QStringLiteral(AZTRUE_EXECUTABLE), {QStringLiteral("--automation")});
    ASSERT_TRUE(server.waitForFinished(kPatience));
    EXPECT_EQ(server.exitCode(), 1);
    const QString message = QString::fromLocal8Bit(server.readAllStandardError());
    EXPECT_TRUE(message.contains(QStringLiteral("cannot connect to the D-Bus session bus")))
        << message.toStdString();
}

TEST(StartTest, ActivationStartsTheServerAtTheFirstCall) {
    QTemporaryDir documents;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DOCUMENTS_DIR"), documents.path());
    PrivateBus bus(env);
    ASSERT_TRUE(bus.Ready()) << bus.Failure().toStdString();
    const QDBusConnection& c = bus.Connection();
    ASSERT_FALSE(c.interface()->isServiceRegistered(kName).value());

    // The first call goes to the name that nobody owns yet.
    const QString path = CreateObject(c, kName);
    ASSERT_EQ(path, QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/1"));
    EXPECT_EQ(VersionOf(c, kName, path), FreshVersion());

    // The owner is the built executable, started with --automation.
    const QDBusReply<uint> pid = c.interface()->servicePid(kName);
    ASSERT_TRUE(pid.isValid());
    EXPECT_EQ(QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid.value())).canonicalFilePath(),
              QFileInfo(QStringLiteral(AZTRUE_EXECUTABLE)).canonicalFilePath());
    QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid.value()));
    ASSERT_TRUE(cmdline.open(QIODevice::ReadOnly));
    EXPECT_TRUE(cmdline.readAll().split('\0').contains("--automation"));

    // Its release ends it, and the name is free again.
    const QDBusMessage reply = CallMember(c, kName, path, kInterface, QStringLiteral("Release"));
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_TRUE(WaitForNameGone(c, kName));
}

TEST(StartTest, AutomationTakesNoFurtherArguments) {
    QProcess server;
    server.start(QStringLiteral(AZTRUE_EXECUTABLE),
                 {QStringLiteral("--automation"), QStringLiteral("extra")});
    ASSERT_TRUE(server.waitForFinished(kPatience));
    EXPECT_EQ(server.exitCode(), 2);
    EXPECT_TRUE(server.readAllStandardError().contains("usage: aztrue --automation"));
}

}  // namespace

namespace {

// The server on a private bus, started directly there.
class BusLossTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.Ready()) << bus.Failure().toStdString();
        QProcessEnvironment env;
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.Address());
        server = std::make_unique<ServerProcess>(documents.path(), bus.Connection(), env);
        ASSERT_TRUE(server->Started()) << server->Failure().toStdString();
    }

    QTemporaryDir documents;
    PrivateBus bus{QProcessEnvironment::systemEnvironment()};
    std::unique_ptr<ServerProcess> server;
};

TEST_F(BusLossTest, ServerWithAnObjectEndsWhenTheBusGoesAway) {
    ASSERT_FALSE(CreateObject(bus.Connection(), server->UniqueName()).isEmpty());
    bus.Stop();
    EXPECT_TRUE(server->EndsCleanly());
}

TEST_F(BusLossTest, ServerWithoutObjectsEndsWhenTheBusGoesAway) {
    bus.Stop();
    EXPECT_TRUE(server->EndsCleanly());
}

}  // namespace
