// A client that tracks calls the conversions without end: ten thousand of
// them in a row leave the server's memory where it was.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include "BusObject.h"
#include "SequencePoints.h"
#include "ServerProcess.h"

namespace {

using namespace bustest;

TEST(ConversionMemoryTest, TenThousandConversionsDoNotGrowTheServer) {
    QTemporaryDir documents;
    // In the sanitizer build freed memory waits in quarantines (256 MB for
    // the process, 1 MB per thread) before it is used again, which looks
    // like growth; without them what is freed is reused, as in the
    // optimised build. Other builds ignore the variable.
    QProcessEnvironment sanitizer;
    QString asanOptions = qEnvironmentVariable("ASAN_OPTIONS");
    if (!asanOptions.isEmpty()) asanOptions += QLatin1Char(':');
    sanitizer.insert(
        QStringLiteral("ASAN_OPTIONS"),
        asanOptions + QStringLiteral("quarantine_size_mb=0:thread_local_quarantine_size_kb=0"));
    ServerProcess server(documents.path(), QDBusConnection::sessionBus(), sanitizer);
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    const std::vector<SyntheticPoint> points = SequencePoints();
    object.SetThetaCountsPerRev(kSequenceCountsPerRev);
    object.SetPhiCountsPerRev(kSequenceCountsPerRev);
    object.EnableTermsForAltAz();
    for (const SyntheticPoint& p : points)
        object.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);

    // A star followed through the evening, a tenth of a second per call.
    const SyntheticPoint& star = points[7];
    double theta = 0, phi = 0;
    auto track = [&](int calls, int first) {
        for (int i = first; i < first + calls; ++i) {
            const double lst = star.LST + i * 7.2921158e-6;
            object.CelestialToEncoder(lst, star.JD, star.RA, star.Dec, 1, theta, phi);
            if (::testing::Test::HasFailure()) return;
        }
    };
    // The first thousand calls bring the allocator and the bus buffers to
    // their working size.
    track(1000, 0);
    const long before = server.ResidentKb();
    track(10000, 1000);
    const long after = server.ResidentKb();
    RecordProperty("ResidentKbBefore", static_cast<int>(before));
    RecordProperty("ResidentKbAfter", static_cast<int>(after));
    ASSERT_GT(before, 0);
    ASSERT_GT(after, 0);
    // A leak of 50 bytes a call would add about 500 kB; the allocator's
    // own movement stays well below the 256 kB allowed.
    EXPECT_LT(after - before, 256)
        << "resident memory before " << before << " kB, after " << after << " kB";
    EXPECT_GT(theta, 0.0);
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());
}

}  // namespace
