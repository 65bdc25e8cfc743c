// The trace log of a server called over the bus: the object's creation by
// the factory, each member that a call reaches and the end after Release or
// Dispose write their lines; a call the bus refuses writes none.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <limits>

#include "BusSupport.h"

namespace {

using namespace bustest;

TEST(TraceLogOverBus, CallsFromCreationToTheEndWriteTheirLines) {
    // The lines after "date time: ", each ending in CR LF. The first refit
    // loads the main window unseen; the end unloads it.
    const QString begin = QStringLiteral(
        "Class_Initialize()|Let Latitude = 40|Form_Load()|Get Termerature|Let Second = 1e+300|");
    const QString unload =
        QStringLiteral("Form_Unload(0)|UnloadAll()|UnloadAll finished|Form_Unload finished");
    const struct {
        const char* end;
        QString lines;
    } kCases[] = {{"Release", begin + "Class_Terminate()|" + unload},
                  {"Dispose", begin + "Dispose()|" + unload}};
    for (const auto& c : kCases) {
        QTemporaryDir documents;
        const QString folder = documents.filePath(QStringLiteral("Brightfold Optics"));
        ASSERT_TRUE(QDir().mkpath(folder));
        ASSERT_TRUE(
            QFile(folder + QStringLiteral("/AztrueLog-Enabled.txt")).open(QIODevice::WriteOnly));
        ServerProcess server(documents.path());
        ASSERT_TRUE(server.Started()) << server.Failure().toStdString();
        const QString path = server.CreateObject();
        server.Set(path, QStringLiteral("Latitude"), 40.0);
        server.Get(path, QStringLiteral("Temperature"));
        EXPECT_EQ(
            server.Set(path, QStringLiteral("Latitude"), std::numeric_limits<double>::quiet_NaN())
                .errorName(),
            kInvalidArgs);
        server.Set(path, QStringLiteral("Second"), 1e300);
        EXPECT_EQ(server.Call(path, QStringLiteral("GetLSTRad")).errorName(), kInvalidArgs);
        server.Call(path, QString::fromLatin1(c.end));
        EXPECT_TRUE(server.EndsCleanly());

        const QStringList logs =
            QDir(folder).entryList({QStringLiteral("AztrueLog-\?\?\?\?-\?\?-\?\?.txt")});
        ASSERT_EQ(logs.size(), 1) << logs.join(u' ').toStdString();
        QFile log(folder + u'/' + logs[0]);
        ASSERT_TRUE(log.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(log.readAll());
        const QRegularExpression line(QStringLiteral(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d: (.*)\r$)"),
                                      QRegularExpression::MultilineOption);
        QStringList got;
        for (const QRegularExpressionMatch& m : line.globalMatch(text)) got << m.captured(1);
        EXPECT_EQ(got.join(u'|').toStdString(), c.lines.toStdString());
        EXPECT_EQ(text.count(u'\n'), got.size()) << "lines not of the form: " << text.toStdString();
    }
}

}  // namespace
