// Client calls queued behind one that loads the main window run inside its
// load: they meet that one window, each taking effect in the order sent.
#include <QtTest>

#include "server/cAztrue.h"
#include "windows/WindowsTestSupport.h"

namespace {

// A load gives the new main window its title: one change per load.
struct LoadCounter : QObject {
    bool eventFilter(QObject* o, QEvent* e) override {
        Loads += e->type() == QEvent::WindowTitleChange && qobject_cast<fMain*>(o);
        return false;
    }
    int Loads = 0;
};

}  // namespace

class QueuedCallsDuringLoadTest : public QObject {
    Q_OBJECT
  private slots:
    void CallsMeetTheWindowBeingLoaded() {
        // A AddCalPoint, S ShowAztrue, K KillAztrue; main windows shown after
        // the last call. The refresh of ShowAztrue loads the window again.
        const struct {
            QString Calls;
            int Loads, Shown;
        } cases[] = {{"AAAAAA", 1, 0}, {"SK", 2, 0}, {"ASK", 1, 0}, {"AKS", 1, 1}};
        for (const auto& c : cases) {
            auto s = ClientModel(0);
            ProcessWindows p(*s);
            cAztrue server(p.chain);
            LoadCounter counter;
            qApp->installEventFilter(&counter);
            qsizetype served = 0;
            int shown = -1;
            // Queued at once: the first runs from the event loop, the others
            // inside the load that it starts, and it returns last.
            for (const QChar call : c.Calls) {
                QTimer::singleShot(0, [&, call] {
                    if (call == 'A') server.AddCalPoint(0.1, 0.2, 0.3, 0.4, 0.5, 2451545, "", "");
                    if (call == 'S') server.ShowAztrue();
                    if (call == 'K') server.KillAztrue();
                    if (++served < c.Calls.size()) return;
                    shown = 0;
                    for (QWidget* w : QApplication::topLevelWidgets())
                        shown += qobject_cast<fMain*>(w) && w->isVisible();
                });
            }
            QTRY_COMPARE(served, c.Calls.size());
            qApp->removeEventFilter(&counter);
            QVERIFY2(counter.Loads == c.Loads && shown == c.Shown,
                     qPrintable(QStringLiteral("%1: wanted %2 loads, %3 shown; got %4, %5")
                                    .arg(c.Calls)
                                    .arg(c.Loads)
                                    .arg(c.Shown)
                                    .arg(counter.Loads)
                                    .arg(shown)));
        }
    }
};
QTEST_MAIN(QueuedCallsDuringLoadTest)

#include "QueuedCallsDuringLoadTest.moc"
