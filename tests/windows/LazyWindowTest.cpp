// A window built at first use: a request that a load's event pump serves
// gets the window being loaded; a closed window is dropped at once.
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include "windows/LazyWindow.h"
#include "windows/TestRegistry.h"

namespace {

// A window whose load lets queued events run, as the main window's does.
class PumpingWindow : public QWidget {
  public:
    PumpingWindow() { ++Built; }
    void FormLoad() { QCoreApplication::processEvents(); }
    static inline int Built = 0;
};

}  // namespace

class LazyWindowTest : public QObject {
    Q_OBJECT
  private slots:
    void RequestDuringTheLoadGetsTheSameWindow() {
        PumpingWindow::Built = 0;
        LazyWindow<PumpingWindow> slot([] { return new PumpingWindow; });
        PumpingWindow* queued = nullptr;
        QTimer::singleShot(0, [&] { queued = &slot.Get(); });
        PumpingWindow& w = slot.Get();
        QCOMPARE(queued, &w);
        QCOMPARE(PumpingWindow::Built, 1);

        w.close();
        QVERIFY(slot.IfLoaded() == nullptr);
        QVERIFY(&slot.Get() != &w);
        QCOMPARE(PumpingWindow::Built, 2);
    }
};
AZTRUE_REGISTER_TEST(LazyWindowTest);

#include "LazyWindowTest.moc"
