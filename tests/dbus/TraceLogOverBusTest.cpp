// The trace log of a server that clients call over the bus: with the marker
// file in the documents folder every member writes its line, from the
// object's creation to its termination; a refused call writes none.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <limits>
#include <string>
#include <vector>

#include "BusObject.h"
#include "ServerProcess.h"
#include "dbus/BusNames.h"

namespace {

using namespace bustest;

const QString kInterface = QString::fromLatin1(AztrueBus::kObjectInterface);

class TraceLogOverBusTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(documents.isValid());
        ASSERT_TRUE(QDir(documents.path()).mkpath(QStringLiteral("Brightfold Optics")));
    }

    void TurnLogOn() {
        QFile marker(LogFolder() + QStringLiteral("/AztrueLog-Enabled.txt"));
        ASSERT_TRUE(marker.open(QIODevice::WriteOnly));
    }

    QString LogFolder() const { return documents.filePath(QStringLiteral("Brightfold Optics")); }

    // The log files: "AztrueLog-" + yyyy-MM-dd + ".txt".
    QStringList LogFiles() const {
        return QDir(LogFolder())
            .entryList({QStringLiteral("AztrueLog-\?\?\?\?-\?\?-\?\?.txt")}, QDir::Files);
    }

    // The texts of the calls in the log, after their date and time; a line
    // not of the form "yyyy-MM-dd HH:mm:ss: text" CR LF fails the test.
    std::vector<std::string> LoggedCalls() const {
        std::vector<std::string> calls;
        const QStringList files = LogFiles();
        EXPECT_EQ(files.size(), 1) << "log files: " << files.join(QLatin1Char(' ')).toStdString();
        if (files.isEmpty()) return calls;
        QFile log(LogFolder() + QLatin1Char('/') + files.first());
        EXPECT_TRUE(log.open(QIODevice::ReadOnly));
        const QRegularExpression form(
            QStringLiteral(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d: (.*)\r$)"));
        const QList<QByteArray> lines = log.readAll().split('\n');
        for (int i = 0; i + 1 < lines.size(); ++i) {
            const QRegularExpressionMatch m = form.match(QString::fromUtf8(lines[i]));
            EXPECT_TRUE(m.hasMatch()) << "line " << i << ": " << lines[i].toStdString();
            calls.push_back(m.captured(1).toStdString());
        }
        EXPECT_TRUE(lines.last().isEmpty()) << "the last line has no line end";
        return calls;
    }

    QTemporaryDir documents;
};

TEST_F(TraceLogOverBusTest, EveryCallFromCreationToReleaseWritesItsLine) {
    TurnLogOn();
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    object.SetLatitude(33.5);
    double theta = 0, phi = 0;
    object.CelestialToEncoder(1, 2451545, 1, 0.5, 1, theta, phi);
    double v[6];
    std::string timeStr, dateStr;
    bool used = false;
    object.GetCalPoint(5, v[0], v[1], v[2], v[3], v[4], v[5], timeStr, dateStr, used);
    object.Get("Temperature", "d");
    // A refused write reaches no member and writes no line.
    const QDBusMessage refused =
        CallMember(QDBusConnection::sessionBus(), server.UniqueName(), object.ObjectPath(),
                   QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
                   {kInterface, QStringLiteral("Latitude"),
                    QVariant::fromValue(QDBusVariant(std::numeric_limits<double>::quiet_NaN()))});
    EXPECT_EQ(refused.type(), QDBusMessage::ErrorMessage);
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());

    // The lines of the members, in the texts that the trace log gives them
    // (the read of Temperature keeps its old spelling). The first refit of
    // the setter loads the main window unseen; the termination unloads it
    // before the process ends.
    const std::vector<std::string> wanted = {
        "Class_Initialize()",   "Let Latitude = 33.5",
        "Form_Load()",          "CelestialToEncoder(1, 2451545, 1, 0.5, 1)",
        "GetCalPoint(5)",       "Get Termerature",
        "Class_Terminate()",    "Form_Unload(0)",
        "UnloadAll()",          "UnloadAll finished",
        "Form_Unload finished",
    };
    EXPECT_EQ(LoggedCalls(), wanted);
}

TEST_F(TraceLogOverBusTest, DisposeIsTheLastLineAndNoTerminationFollows) {
    TurnLogOn();
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    object.Call("Dispose", {}, "");
    EXPECT_TRUE(server.EndsCleanly());
    const std::vector<std::string> wanted = {"Class_Initialize()", "Dispose()"};
    EXPECT_EQ(LoggedCalls(), wanted);
}

// The main window's lifecycle seen through the log of the windowed
// server: ShowAztrue loads the window, KillAztrue unloads it and the object
// keeps answering, and its next refit loads the window again. A client
// stays attached through all of it.
TEST_F(TraceLogOverBusTest, ShowAndKillLoadAndUnloadTheMainWindowWhileTheClientStays) {
    TurnLogOn();
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    object.Call("ShowAztrue", {}, "");
    object.Call("KillAztrue", {}, "");
    object.SetLatitude(40);
    EXPECT_EQ(object.Latitude(), 40.0);
    EXPECT_TRUE(server.Running());
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());
    const std::vector<std::string> wanted = {
        "Class_Initialize()", "ShowAztrue()", "Form_Load()",        "KillAztrue()",
        "Form_Unload(0)",     "UnloadAll()",  "UnloadAll finished", "Form_Unload finished",
        "Let Latitude = 40",  "Form_Load()",  "Get Latitude",       "Class_Terminate()",
        "Form_Unload(0)",     "UnloadAll()",  "UnloadAll finished", "Form_Unload finished",
    };
    EXPECT_EQ(LoggedCalls(), wanted);
}

TEST_F(TraceLogOverBusTest, WithoutTheMarkerNoLogAppears) {
    ServerProcess server(documents.path());
    ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
    BusObject object(QDBusConnection::sessionBus(), server.UniqueName());
    ASSERT_TRUE(object.Valid());
    object.SetLatitude(40);
    object.Release();
    EXPECT_TRUE(server.EndsCleanly());
    EXPECT_TRUE(LogFiles().isEmpty());
}

}  // namespace
