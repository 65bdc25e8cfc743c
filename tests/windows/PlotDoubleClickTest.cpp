// A double-click on a plot is one press: the plots toggle a point at each
// press, and a double-click must not toggle it back.
#include <QtTest>

#include "windows/PictureBox.h"
#include "windows/TestRegistry.h"

class PlotDoubleClickTest : public QObject {
    Q_OBJECT
  private slots:
    // Mouse input through the window, as the window system delivers it: a
    // click is a press and a release, a double-click a click whose second
    // press the window turns into a double-click event.
    void DoubleClickIsOnePress() {
        PictureBox box(100);
        int presses = 0;
        box.OnMouseDown = [&](double, double) { ++presses; };
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QWindow* window = box.windowHandle();
        QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(50, 50));
        QCOMPARE(presses, 1);
        QTest::mouseDClick(window, Qt::LeftButton, {}, QPoint(50, 50));
        QCOMPARE(presses, 2);
    }
};
AZTRUE_REGISTER_TEST(PlotDoubleClickTest);

#include "PlotDoubleClickTest.moc"
