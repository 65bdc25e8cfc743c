// SuggestPoints over the bus: two arrays of the count asked for, on a
// fitted model, in the walk from north through east; and a Count out of range refused as invalid.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusError>
#include <QTemporaryDir>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

TEST(SuggestPoints, GivesCountDirectionsAboveTheHorizonAndRefusesABadCount) {
    QTemporaryDir documents;
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    object.SetThetaCountsPerRev(kSequenceCountsPerRev);
    object.SetPhiCountsPerRev(kSequenceCountsPerRev);
    object.EnableTermsForAltAz();
    for (const SyntheticPoint& p : SequencePoints())
        object.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);
    auto call = [&](short count) {
        return CallMember(QDBusConnection::sessionBus(), server.UniqueName(), object.ObjectPath(),
                          QString::fromLatin1(AztrueBus::kStatisticsInterface),
                          QStringLiteral("SuggestPoints"), {QVariant::fromValue(count)});
    };
    const QDBusMessage reply = call(4);
    ASSERT_EQ(reply.signature().toStdString(), "adad") << reply.errorMessage().toStdString();
    const auto az = qdbus_cast<QList<double>>(reply.arguments().value(0));
    const auto el = qdbus_cast<QList<double>>(reply.arguments().value(1));
    ASSERT_TRUE(az.size() == 4 && el.size() == 4) << az.size() << " " << el.size();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(az[i] >= 0 && az[i] < 6.2832) << "azimuth " << az[i];
        EXPECT_TRUE(el[i] > 0 && el[i] < 1.5708) << "elevation " << el[i];
        if (i > 0) {
            EXPECT_GT(az[i], az[i - 1]) << "the walk from north through east";
        }
    }
    const std::string invalid = QDBusError::errorString(QDBusError::InvalidArgs).toStdString();
    for (short bad : {short(-1), short(501)})
        EXPECT_EQ(call(bad).errorName().toStdString(), invalid) << "Count " << bad;
}

}  // namespace
