// SuggestPoints over the bus: Count directions above the horizon in the walk
// from north through east, and a Count out of range refused as invalid.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusError>
#include <QTemporaryDir>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

TEST(SuggestPoints, GivesCountDirectionsAboveTheHorizonAndRefusesABadCount) {
    QTemporaryDir documents;
    bustest::ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    bustest::BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    object.SetThetaCountsPerRev(bustest::kSequenceCountsPerRev);
    object.SetPhiCountsPerRev(bustest::kSequenceCountsPerRev);
    for (const SyntheticPoint& p : bustest::SequencePoints())
        object.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);
    auto call = [&](short count) {
        return bustest::CallMember(QDBusConnection::sessionBus(), server.UniqueName(),
                                   object.ObjectPath(), AztrueBus::kStatisticsInterface,
                                   "SuggestPoints", {QVariant::fromValue(count)});
    };
    const QDBusMessage reply = call(4);
    ASSERT_EQ(reply.signature().toStdString(), "adad") << reply.errorMessage().toStdString();
    const auto az = qdbus_cast<QList<double>>(reply.arguments().value(0));
    const auto el = qdbus_cast<QList<double>>(reply.arguments().value(1));
    ASSERT_TRUE(az.size() == 4 && el.size() == 4) << az.size() << " " << el.size();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(el[i] > 0 && el[i] < 1.5708) << "elevation " << el[i];
        EXPECT_TRUE(az[i] >= (i ? az[i - 1] : 0) && az[i] < 6.2832) << "azimuth " << az[i];
    }
    const std::string invalid = QDBusError::errorString(QDBusError::InvalidArgs).toStdString();
    for (short bad : {short(-1), short(501)})
        EXPECT_EQ(call(bad).errorName().toStdString(), invalid) << "Count " << bad;
}
