// Client calls queued behind one that loads the main window: its load lets
// them run, and they must meet that one window, in the order they came.
#include <QtTest>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ProcessWindows.h"
#include "files/TraceLogForTests.h"
#include "server/cAztrue.h"
#include "windows/TestRegistry.h"

namespace {

namespace fs = std::filesystem;

// The trace log of the calls, on in a folder of the test's own.
class TraceInFolder {
  public:
    explicit TraceInFolder(const fs::path& Folder) : logs_(Folder / "Brightfold Optics") {
        fs::create_directories(logs_);
        std::ofstream(logs_ / "AztrueLog-Enabled.txt").put('\n');
        setenv("XDG_DOCUMENTS_DIR", Folder.c_str(), 1);
        ResetTraceLogForTests();
    }
    ~TraceInFolder() {
        fs::remove(logs_ / "AztrueLog-Enabled.txt");
        unsetenv("XDG_DOCUMENTS_DIR");
        ResetTraceLogForTests();
    }
    int Count(const std::string& Text) const {
        int n = 0;
        for (const auto& entry : fs::directory_iterator(logs_)) {
            std::ifstream in(entry.path(), std::ios::binary);
            for (std::string line; std::getline(in, line);)
                n += line.find(": " + Text + "\r") != std::string::npos;
        }
        return n;
    }

  private:
    fs::path logs_;
};

int VisibleMainWindows() {
    int n = 0;
    for (QWidget* w : QApplication::topLevelWidgets()) n += qobject_cast<fMain*>(w) && w->isVisible();
    return n;
}

}  // namespace

class QueuedCallsDuringLoadTest : public QObject {
    Q_OBJECT
  private slots:
    void CallsMeetTheWindowBeingLoaded_data() {
        QTest::addColumn<QString>("calls");  // A AddCalPoint, S ShowAztrue, K KillAztrue
        QTest::addColumn<int>("loads");
        QTest::addColumn<int>("visible");
        QTest::newRow("six points") << "AAAAAA" << 1 << 0;
        // The refresh of ShowAztrue loads the window again, unseen.
        QTest::newRow("show, kill") << "SK" << 2 << 0;
        QTest::newRow("point, show, kill") << "ASK" << 1 << 0;
        QTest::newRow("point, kill, show") << "AKS" << 1 << 1;
        QTest::newRow("point, show, kill, show") << "ASKS" << 1 << 1;
    }
    void CallsMeetTheWindowBeingLoaded() {
        QFETCH(QString, calls);
        QFETCH(int, loads);
        QFETCH(int, visible);
        QTemporaryDir folder;
        auto s = ClientModel(0);
        ProcessWindows windows(*s);
        int served = 0;
        int shown = -1;  // when the last call has returned
        {
            TraceInFolder trace(folder.path().toStdString());
            cAztrue server(windows.chain);
            // Queued at once; the first runs from the event loop, the
            // others inside the load that it starts.
            for (const QChar c : calls) {
                QTimer::singleShot(0, [&, c] {
                    if (c == 'A') server.AddCalPoint(0.1 * served, 0.2, 0.3, 0.4, 0.5, 2451545, "", "");
                    if (c == 'S') server.ShowAztrue();
                    if (c == 'K') server.KillAztrue();
                    if (++served == calls.size()) shown = VisibleMainWindows();
                });
            }
            QTRY_COMPARE(served, static_cast<int>(calls.size()));
            QCOMPARE(trace.Count("Form_Load()"), loads);
            QCOMPARE(shown, visible);
            windows.Windows().CloseAll();
        }
    }
};
AZTRUE_REGISTER_TEST(QueuedCallsDuringLoadTest);

#include "QueuedCallsDuringLoadTest.moc"
