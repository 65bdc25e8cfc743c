// The server under a file-size limit: a save that would pass the limit
// returns false instead of ending the server, and the old file stays.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "BusObject.h"
#include "ServerProcess.h"

namespace {

using namespace bustest;

TEST(SaveUnderFileSizeLimit, SaveFailsAndTheServerAndTheOldFileStay) {
    QTemporaryDir documents;
    ASSERT_TRUE(documents.isValid());
    const QString target = documents.filePath(QStringLiteral("run.AZT"));
    const QByteArray old = "Number of Cal Stars:\r\n 0 \r\n";
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(old) == old.size());
    file.close();

    // The server keeps the limit this process has while it starts it: 4 kB,
    // less than the 9 kB the 40 stars of the sample take as a file.
    rlimit normal{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &normal), 0);
    rlimit low = normal;
    low.rlim_cur = 4096;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    ServerProcess server(documents.path());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &normal), 0);
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();

    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.LoadFile(AZTRUE_SOURCE_DIR "/data/sample.AZT"));
    EXPECT_FALSE(object.SaveFile(target.toStdString()));
    EXPECT_EQ(object.NumCalPoints(), 40);
    EXPECT_TRUE(server.Running());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), old);
    // No temporary file is left beside it.
    EXPECT_EQ(
        QDir(documents.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("run.AZT")});
}

}  // namespace
