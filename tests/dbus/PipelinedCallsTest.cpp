// A client that does not wait for each reply: calls queued while the server
// lets pending events run inside its refit are served there one at a time,
// in order, and every call gets its own reply.
#include <gtest/gtest.h>

#include <QDBusPendingReply>

#include "BusSupport.h"

namespace {

using namespace bustest;

TEST(PipelinedCalls, AllGetTheirRepliesInOrder) {
    ServerProcess server;
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    const QString path = server.CreateObject();
    const auto send = [&](const char* member, const QVariantList& args) {
        QDBusMessage m = QDBusMessage::createMethodCall(server.Name(), path, kObject,
                                                        QString::fromLatin1(member));
        m.setArguments(args);
        return QDBusConnection::sessionBus().asyncCall(m, kPatience);
    };
    // Each point refits; a conversion and a read of the point follow it
    // before any reply has come back.
    constexpr int kPoints = 30;
    std::vector<QDBusPendingCall> added, converted, read;
    for (int i = 1; i <= kPoints; ++i) {
        const double phi = 0.1 * i, theta = 0.3 + 0.02 * i, ra = 0.2 * i, dec = 0.5 - 0.03 * i;
        added.push_back(
            send("AddCalPoint", {phi, theta, ra, dec, 1.0 + 0.01 * i, 2461056.7,
                                 QStringLiteral("20:00:00"), QStringLiteral("2026/1/15")}));
        converted.push_back(send("CelestialToEncoder", {1.0, 2461056.7, ra, dec, N(1)}));
        read.push_back(send("GetCalPoint", {N(i)}));
    }
    for (int i = 0; i < kPoints; ++i) {
        QDBusPendingReply<> a = added[i];
        QDBusPendingReply<double, double> c = converted[i];
        QDBusPendingReply<double, double, double, double, double, double, QString, QString, bool>
            point = read[i];
        point.waitForFinished();
        EXPECT_FALSE(a.isError() || c.isError()) << a.error().message().toStdString();
        ASSERT_FALSE(point.isError()) << point.error().message().toStdString();
        // The point was in the table when the read behind it arrived.
        EXPECT_EQ(point.argumentAt<0>(), 0.1 * (i + 1)) << "point " << i + 1;
    }
    EXPECT_EQ(server.Get(path, QStringLiteral("NumCalPoints")),
              QVariant::fromValue(short{kPoints}));
}

}  // namespace
