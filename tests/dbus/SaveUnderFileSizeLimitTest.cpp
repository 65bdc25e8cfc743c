// The server under a file-size limit: a save past the limit returns false
// instead of ending the server, and the old file stays.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDBusConnection>
#include <QDir>
#include <QTemporaryDir>

#include "BusObject.h"
#include "ServerProcess.h"

namespace {

using namespace bustest;

TEST(SaveUnderFileSizeLimit, SaveFailsAndTheServerAndTheOldFileStay) {
    QTemporaryDir documents;
    ASSERT_TRUE(documents.isValid());
    const QString old = QStringLiteral(AZTRUE_SOURCE_DIR "/data/README.md");
    const QString target = documents.filePath(QStringLiteral("run.AZT"));
    ASSERT_TRUE(QFile::copy(old, target));
    // The server keeps the limit this process has while it starts it: 4 kB,
    // less than the 9 kB of the 40 stars of the sample.
    rlimit normal{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &normal), 0);
    const rlimit low{4096, normal.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    ServerProcess server(documents.path());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &normal), 0);
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();

    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.LoadFile(AZTRUE_SOURCE_DIR "/data/sample.AZT"));
    EXPECT_FALSE(object.SaveFile(target.toStdString()));
    EXPECT_EQ(object.NumCalPoints(), 40);  // the server answers on
    // The old file as it was, and no temporary file beside it.
    QFile before(old), after(target);
    ASSERT_TRUE(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), before.readAll());
    EXPECT_EQ(QDir(documents.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("run.AZT")});
}

}  // namespace
