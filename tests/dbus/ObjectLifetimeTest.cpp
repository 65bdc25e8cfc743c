// The life of objects and of the process: objects are numbered from 1, a
// second object resets the settings and keeps the points, and the release
// of an object, by Release or by its client leaving the bus, or Dispose,
// ends the process after the reply.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "BusObject.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);

class ObjectLifetimeTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(documents.isValid());
        server = std::make_unique<ServerProcess>(documents.path());
        ASSERT_TRUE(server->Started()) << server->Failure().toStdString();
    }

    // A connection of another client, closed at the end of the test.
    QDBusConnection OtherClient(const QString& Name) {
        others.push_back(Name);
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, Name);
    }

    void TearDown() override {
        for (const QString& name : others) QDBusConnection::disconnectFromBus(name);
    }

    QTemporaryDir documents;
    std::unique_ptr<ServerProcess> server;
    std::vector<QString> others;
};

TEST_F(ObjectLifetimeTest, ReleaseAnswersAndThenEndsTheProcess) {
    BusObject object(QDBusConnection::sessionBus(), server->UniqueName());
    ASSERT_TRUE(object.Valid());
    const QDBusMessage reply =
        CallMember(QDBusConnection::sessionBus(), server->UniqueName(), object.ObjectPath(),
                   kInterface, QStringLiteral("Release"));
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_TRUE(server->EndsCleanly());
    EXPECT_TRUE(WaitForNameGone(QDBusConnection::sessionBus(), server->UniqueName()));
}

TEST_F(ObjectLifetimeTest, DisposeAnswersAndThenEndsTheProcessThoughAnotherClientHoldsAnObject) {
    QDBusConnection other = OtherClient(QStringLiteral("holder"));
    BusObject held(other, server->UniqueName());
    ASSERT_TRUE(held.Valid());
    BusObject object(QDBusConnection::sessionBus(), server->UniqueName());
    ASSERT_TRUE(object.Valid());
    const QDBusMessage reply =
        CallMember(QDBusConnection::sessionBus(), server->UniqueName(), object.ObjectPath(),
                   kInterface, QStringLiteral("Dispose"));
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_TRUE(server->EndsCleanly());
}

TEST_F(ObjectLifetimeTest, ClientThatLeavesWithoutReleaseEndsTheServer) {
    {
        QDBusConnection other = OtherClient(QStringLiteral("leaver"));
        BusObject object(other, server->UniqueName());
        ASSERT_TRUE(object.Valid());
        object.SetLatitude(12.5);
        EXPECT_EQ(object.Latitude(), 12.5);
    }
    EXPECT_TRUE(server->Running());
    QDBusConnection::disconnectFromBus(QStringLiteral("leaver"));
    EXPECT_TRUE(server->EndsCleanly());
}

TEST_F(ObjectLifetimeTest, ClientThatLeavesRightAfterAskingForAnObjectEndsTheServer) {
    {
        QDBusConnection other = OtherClient(QStringLiteral("hasty"));
        QDBusMessage call = QDBusMessage::createMethodCall(
            server->UniqueName(), QString::fromLatin1(AztrueBus::kFactoryPath),
            QString::fromLatin1(AztrueBus::kFactoryInterface), QStringLiteral("CreateObject"));
        // The client asks and leaves before the answer can reach it. Its
        // next call, to the bus daemon, returns once the daemon has passed
        // the request on: the messages of a connection keep their order.
        ASSERT_TRUE(other.send(call));
        EXPECT_TRUE(other.interface()->isServiceRegistered(server->UniqueName()).value());
    }
    // The connection closes with its last handle.
    QDBusConnection::disconnectFromBus(QStringLiteral("hasty"));
    EXPECT_TRUE(server->EndsCleanly());
}

TEST_F(ObjectLifetimeTest, LeavingOfAClientWithoutObjectsEndsNothing) {
    {
        QDBusConnection other = OtherClient(QStringLiteral("onlooker"));
        const QDBusMessage reply = CallMember(
            other, server->UniqueName(), QString::fromLatin1(AztrueBus::kFactoryPath),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage);
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("onlooker"));
    BusObject object(QDBusConnection::sessionBus(), server->UniqueName());
    ASSERT_TRUE(object.Valid());
    EXPECT_EQ(object.NumCalPoints(), 0);
    EXPECT_TRUE(server->Running());
    object.Release();
    EXPECT_TRUE(server->EndsCleanly());
}

TEST_F(ObjectLifetimeTest, SecondObjectIsNumberedTwoResetsTheSettingsAndKeepsThePoints) {
    BusObject first(QDBusConnection::sessionBus(), server->UniqueName());
    ASSERT_TRUE(first.Valid());
    EXPECT_EQ(first.ObjectPath(), QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/1"));
    first.SetLatitude(-20);
    first.AddCalPoint(1.0, 0.5, 1.2, 0.3, 1.1, 2461056.7, "20:00:00", "2026/1/15");
    first.AddCalPoint(2.0, 0.7, 2.2, 0.1, 1.2, 2461056.71, "20:04:00", "2026/1/15");

    BusObject second(QDBusConnection::sessionBus(), server->UniqueName());
    ASSERT_TRUE(second.Valid());
    EXPECT_EQ(second.ObjectPath(), QStringLiteral("/com/brightfold/AZTSERVR/cAztrue/2"));
    // The default latitude of a new model is 33.5; the points stay.
    EXPECT_EQ(first.Latitude(), 33.5);
    EXPECT_EQ(second.NumCalPoints(), 2);
    double phi = 0, theta = 0, ra = 0, dec = 0, lst = 0, jd = 0;
    std::string timeStr, dateStr;
    bool used = false;
    second.GetCalPoint(2, phi, theta, ra, dec, lst, jd, timeStr, dateStr, used);
    EXPECT_EQ(phi, 2.0);
    EXPECT_EQ(theta, 0.7);
    EXPECT_EQ(timeStr, "20:04:00");
    EXPECT_TRUE(used);

    // Both objects share the one model; the release of one ends it all.
    second.Release();
    EXPECT_TRUE(server->EndsCleanly());
}

}  // namespace
