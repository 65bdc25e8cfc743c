// A save past the process's file-size limit returns false instead of ending
// the server, and the old file stays as it was with nothing beside it.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "BusSupport.h"

namespace {

using namespace bustest;

TEST(SaveUnderFileSizeLimit, SaveFailsAndTheServerAndTheOldFileStay) {
    QTemporaryDir documents;
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
    const QString path = server.CreateObject();
    const auto result = [&](const char* member, const QString& file) {
        return server.Call(path, QString::fromLatin1(member), {file}).arguments().value(0);
    };
    ASSERT_EQ(result("LoadFile", QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT")), true);
    EXPECT_EQ(result("SaveFile", target), false);
    EXPECT_EQ(server.Get(path, QStringLiteral("NumCalPoints")), QVariant::fromValue(short{40}));
    QFile before(old), after(target);
    ASSERT_TRUE(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), before.readAll());
    EXPECT_EQ(QDir(documents.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("run.AZT")});
}

}  // namespace
