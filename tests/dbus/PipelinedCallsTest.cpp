// A client that does not wait for each reply: calls queued while the server
// lets pending events run inside its recalculation are served there, one at
// a time, and every call gets its own reply.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QTemporaryDir>
#include <vector>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

TEST(PipelinedCallsTest, CallsSentWithoutWaitingAllGetTheirReplies) {
    QTemporaryDir documents;
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    QDBusConnection bus = QDBusConnection::sessionBus();
    BusObject object(bus, server.UniqueName());
    ASSERT_TRUE(object.Valid());
    object.SetThetaCountsPerRev(kSequenceCountsPerRev);
    object.SetPhiCountsPerRev(kSequenceCountsPerRev);

    // Each point runs the whole chain; a conversion and a point count are
    // sent behind each one before any reply has come back.
    const std::vector<SyntheticPoint> points = SequencePoints();
    std::vector<QDBusPendingCall> added, converted, counted;
    const auto call = [&](const char* member, const QVariantList& args) {
        QDBusMessage m = QDBusMessage::createMethodCall(
            server.UniqueName(), object.ObjectPath(),
            QString::fromLatin1(AztrueBus::kObjectInterface), QString::fromLatin1(member));
        m.setArguments(args);
        return bus.asyncCall(m, kPatience);
    };
    for (const SyntheticPoint& p : points) {
        added.push_back(call(
            "AddCalPoint", {p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD,
                            QString::fromStdString(p.TimeStr), QString::fromStdString(p.DateStr)}));
        converted.push_back(call("CelestialToEncoder", {p.LST, p.JD, p.RA, p.Dec, N(1)}));
        counted.push_back(call("GetCalPoint", {N(static_cast<int>(added.size()))}));
    }
    for (size_t i = 0; i < points.size(); ++i) {
        added[i].waitForFinished();
        EXPECT_FALSE(added[i].isError()) << added[i].error().message().toStdString();
        QDBusPendingReply<double, double> encoders = converted[i];
        encoders.waitForFinished();
        EXPECT_FALSE(encoders.isError()) << encoders.error().message().toStdString();
        // Each point was in the table when the read behind it arrived.
        QDBusPendingReply<double, double, double, double, double, double, QString, QString, bool>
            point = counted[i];
        point.waitForFinished();
        ASSERT_FALSE(point.isError()) << point.error().message().toStdString();
        EXPECT_EQ(point.argumentAt<0>(), points[i].PhiEnc) << "point " << i + 1;
        EXPECT_TRUE(point.argumentAt<8>()) << "point " << i + 1;
    }
    EXPECT_EQ(object.NumCalPoints(), static_cast<short>(points.size()));
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());
}

}  // namespace
