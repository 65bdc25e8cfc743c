// The server under hard conditions: a client that does not wait for its
// replies, and a file-size limit that a save runs into.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDBusPendingCall>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "BusSupport.h"

namespace {

using namespace bustest;

// Calls queued while the server lets pending events run inside its refit
// are served there, one at a time and in order: each read of a point sent
// behind its AddCalPoint (and a conversion) finds it in the table.
TEST(HardConditions, CallsSentWithoutWaitingAreAnsweredInOrder) {
    ServerProcess server;
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    const auto send = [&](const char* member, const QVariantList& args) {
        QDBusMessage m = QDBusMessage::createMethodCall(server.Name(), path, kObject, member);
        m.setArguments(args);
        return QDBusConnection::sessionBus().asyncCall(m, kPatience);
    };
    std::vector<QDBusPendingCall> calls;
    for (int i = 1; i <= 30; ++i) {
        calls.push_back(send("AddCalPoint", {0.1 * i, 0.3, 0.2 * i, 0.5, 1.0, 2461056.7, "", ""}));
        calls.push_back(send("CelestialToEncoder", {1.0, 2461056.7, 0.2 * i, 0.5, N(1)}));
        calls.push_back(send("GetCalPoint", {N(i)}));
    }
    for (size_t i = 0; i < calls.size(); ++i) {
        calls[i].waitForFinished();
        const QDBusMessage r = calls[i].reply();
        EXPECT_EQ(r.type(), QDBusMessage::ReplyMessage)
            << i << ": " << r.errorMessage().toStdString();
        const double phi = 0.1 * (i / 3 + 1);  // of the point a read finds
        EXPECT_TRUE(i % 3 != 2 || r.arguments().value(0) == phi) << i << Text(r.arguments());
    }
    EXPECT_EQ(server.Get(path, "NumCalPoints"), QVariant::fromValue(short{30}));
}

// A save past the limit returns false instead of ending the server, and
// the old file stays as it was with nothing beside it.
TEST(HardConditions, SaveUnderAFileSizeLimitFailsAndTheOldFileStays) {
    QTemporaryDir documents;
    const QString old = QStringLiteral(AZTRUE_SOURCE_DIR "/data/README.md");
    const QString target = documents.filePath("run.AZT");
    ASSERT_TRUE(QFile::copy(old, target));
    // The server keeps the limit this process has while it starts it: 4 kB,
    // less than the 9 kB of the 40 stars of the sample.
    rlimit normal{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &normal), 0);
    const rlimit low{4096, normal.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    ServerProcess server(documents.path());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &normal), 0);
    ASSERT_TRUE(server.Started());
    const QString path = server.CreateObject();
    const QVariant sample = QStringLiteral(AZTRUE_SOURCE_DIR "/data/sample.AZT");
    ASSERT_EQ(server.Call(path, "LoadFile", {sample}).arguments(), QVariantList{true});
    EXPECT_EQ(server.Call(path, "SaveFile", {target}).arguments(), QVariantList{false});
    EXPECT_EQ(server.Get(path, "NumCalPoints"), QVariant::fromValue(short{40}));
    QFile before(old), after(target);
    ASSERT_TRUE(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), before.readAll());
    EXPECT_EQ(QDir(documents.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"run.AZT"});
}

}  // namespace
