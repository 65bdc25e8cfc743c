// The same call sequence run against the in-process class and against the
// server over the bus gives the same numbers to the last bit: the bus adds
// nothing to the model and loses nothing of a double on its way.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>

#include "BusObject.h"
#include "RecordedSequence.h"
#include "SequencePoints.h"
#include "ServerProcess.h"
#include "model/ModelState.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"

namespace {

using namespace bustest;

QByteArray FileBytes(const QString& Name) {
    QFile f(Name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

std::string Bits(double v) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", v);
    return text;
}

TEST(RecordedSequence, BusGivesTheNumbersOfTheInProcessClassToTheLastBit) {
    const std::vector<SyntheticPoint> points = SequencePoints();
    ASSERT_EQ(points.size(), 30u);
    QTemporaryDir files;
    ASSERT_TRUE(files.isValid());
    const QString localFile = files.filePath(QStringLiteral("local.AZT"));
    const QString busFile = files.filePath(QStringLiteral("bus.AZT"));

    // In process: a fresh model, as the server's is at its start.
    Record local;
    {
        auto model = std::make_unique<ModelState>();
        NoDisplay noWindows;
        RecalcChain mainWindow(*model, noWindows);
        cAztrue object(mainWindow);
        RunRecordedSequence(object, points, localFile.toStdString(), local);
    }

    // Over the bus, with the same documents folder, so that Path agrees.
    ServerProcess server(QString::fromLocal8Bit(qgetenv("XDG_DOCUMENTS_DIR")));
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    Record bus;
    RunRecordedSequence(object, points, busFile.toStdString(), bus);
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());

    ASSERT_EQ(bus.numbers.size(), local.numbers.size());
    ASSERT_EQ(bus.texts.size(), local.texts.size());
    int differences = 0;
    for (size_t i = 0; i < local.numbers.size(); ++i) {
        if (SameBits(bus.numbers[i], local.numbers[i])) continue;
        ++differences;
        ADD_FAILURE() << local.labels[i] << ": in process " << Bits(local.numbers[i])
                      << ", over the bus " << Bits(bus.numbers[i]) << ", difference "
                      << Bits(bus.numbers[i] - local.numbers[i]);
    }
    EXPECT_EQ(differences, 0) << "of " << local.numbers.size() << " numbers";
    for (size_t i = 0; i < local.texts.size(); ++i)
        EXPECT_EQ(bus.texts[i], local.texts[i]) << local.textLabels[i];

    // The two saved files are the same, byte for byte.
    const QByteArray savedLocally = FileBytes(localFile);
    EXPECT_FALSE(savedLocally.isEmpty());
    EXPECT_EQ(FileBytes(busFile), savedLocally);

    // And the sequence measured what it meant to: the fit over the bus finds
    // the imaginary mount. Its noise is 2" on each axis, so the RMS error of
    // the selected points is about 2.8" less what the terms absorb; any
    // argument out of place leaves errors of degrees. The tilt to the north
    // is 240"; 30 noisy points and the other terms of the preset move it by
    // some arcseconds, well inside 20".
    const auto value = [&](const std::string& label) {
        for (size_t i = 0; i < bus.labels.size(); ++i)
            if (bus.labels[i] == label) return bus.numbers[i];
        ADD_FAILURE() << "no " << label << " in the record";
        return 0.0;
    };
    EXPECT_EQ(value("NumCalPoints"), 30);
    EXPECT_LT(value("GetErrors 1"), 5 * kArcsec) << "RMS error of the selected points";
    EXPECT_GT(value("GetErrors 1"), 1 * kArcsec) << "RMS error of the selected points";
    EXPECT_NEAR(value("ErrorNorth"), 240 * kArcsec, 20 * kArcsec);
    EXPECT_EQ(value("SaveFile"), 1);
    EXPECT_EQ(value("LoadFile"), 1);
    EXPECT_EQ(value("NumCalPoints after removal"), 29);
    EXPECT_EQ(value("NumCalPoints after load"), 30);
    EXPECT_EQ(value("UseCalPoint(5)"), 0);
}

}  // namespace
