// A double-click on a plot is one press: the plots toggle a point at each
// press, and a double-click must not toggle it back.
#include <QtTest>

#include "windows/PictureBox.h"
#include "windows/TestRegistry.h"

class PlotDoubleClickTest : public QObject {
    Q_OBJECT
  private slots:
    // Through the window as the window system delivers them: a click, then a
    // double-click, whose second press comes as a double-click event.
    void DoubleClickIsOnePress() {
        PictureBox box(100);
        int presses = 0;
        box.OnMouseDown = [&](double, double) { ++presses; };
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {}, QPoint(50, 50));
        QCOMPARE(presses, 1);
        QTest::mouseDClick(box.windowHandle(), Qt::LeftButton, {}, QPoint(50, 50));
        QCOMPARE(presses, 2);
    }
};
AZTRUE_REGISTER_TEST(PlotDoubleClickTest);

#include "PlotDoubleClickTest.moc"
