// The statistics interface beside the automation interface of an object:
// its answers have the declared types and the values of the in-process
// routine on the same points, and a Limit that is not a number is refused.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusError>
#include <QTemporaryDir>
#include <limits>
#include <memory>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"
#include "model/FitStatistics.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

using namespace bustest;

TEST(StatisticsInterface, AnswersWithItsTypesAndTheInProcessValues) {
    QTemporaryDir documents;
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    // The tests' mount on encoders whose count is a radian, where the fit
    // settles in a few passes: the cross-validation fits 30 times over.
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    SyntheticMount m = SequenceMount();
    m.ThetaEncOffset *= kFullTurn / kSequenceCountsPerRev;
    m.PhiEncOffset *= kFullTurn / kSequenceCountsPerRev;
    const std::vector<SyntheticPoint> points = MakeSyntheticPoints(*s, m);
    EnableAltAz(*s);
    object.EnableTermsForAltAz();
    for (const SyntheticPoint& p : points)
        object.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);
    AddSyntheticPoints(*s, points);
    Calibrate(*s);
    ComputeResiduals(*s);
    const FitStatistics want = ComputeFitStatistics(*s);

    auto call = [&](const char* member, const QVariantList& args, const char* signature) {
        const QDBusMessage reply =
            CallMember(QDBusConnection::sessionBus(), server.UniqueName(), object.ObjectPath(),
                       QString::fromLatin1(AztrueBus::kStatisticsInterface),
                       QString::fromLatin1(member), args);
        EXPECT_EQ(reply.signature().toStdString(), signature) << member;
        return reply;
    };
    const QList<QVariant> terms = call("GetTermStatistics", {}, "anadad").arguments();
    const auto number = qdbus_cast<QList<short>>(terms.value(0));
    const auto coef = qdbus_cast<QList<double>>(terms.value(1));
    const auto sigma = qdbus_cast<QList<double>>(terms.value(2));
    const int k = want.NumFitted;
    ASSERT_TRUE(number.size() == k && coef.size() == k && sigma.size() == k) << number.size();
    for (int i = 0; i < k; ++i) {
        EXPECT_EQ(number[i], want.Terms[i].Term);
        EXPECT_NEAR(coef[i], want.Terms[i].Coef, 1e-12) << "term " << number[i];
        EXPECT_NEAR(sigma[i] / want.Terms[i].Sigma, 1, 1e-9) << "term " << number[i];
    }
    call("GetCrossValidatedErrors", {}, "dd");
    const QList<QVariant> all = call("GetCorrelations", {-1.0}, "ananad").arguments();
    EXPECT_EQ(qdbus_cast<QList<double>>(all.value(2)).size(), k * (k - 1) / 2);
    const QDBusMessage refused =
        call("GetCorrelations", {std::numeric_limits<double>::quiet_NaN()}, "s");
    EXPECT_EQ(refused.errorName(), QDBusError::errorString(QDBusError::InvalidArgs));
}

}  // namespace
