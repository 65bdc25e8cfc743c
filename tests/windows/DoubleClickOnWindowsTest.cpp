// A double-click on a dot of a plot or on a row of the Calibration Points
// table, sent through the window as the window system sends it, acts as one
// press: its point changes once.
#include <QtTest>
#include <algorithm>

#include "windows/PictureBox.h"
#include "windows/WindowsTestSupport.h"

class DoubleClickOnWindowsTest : public QObject {
    Q_OBJECT
  private slots:
    void DoubleClickChangesOnePoint() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        WindowSet& ws = p.Windows();
        const auto used = [&] {
            return std::count_if(&s->CalPoints[1], &s->CalPoints[6],
                                 [](auto& c) { return c.Used; });
        };
        const auto marked = [&] {
            const auto& r = ws.CalPoints.Get().RowSelected;
            return std::count(r.begin(), r.end(), true);
        };
        const auto dot = [](const auto& P) {
            return QPointF(P.StarX[2], P.StarY[2]).toPoint() + QPoint(1, 1) * PictureBox::kBorder;
        };
        const struct {
            const char* Window;
            std::function<QWidget*()> Picture;
            std::function<QPoint()> At;  // in the picture
            std::function<long()> Count;
        } cases[] = {
            {"main", [&] { return ws.Main.Get().picError; },
             [&] { return dot(ws.Main.Get().Plots); }, used},
            {"analysis", [&] { return ws.Analysis.Get().picGraph; },
             [&] { return dot(ws.Analysis.Get().Plot); }, used},
            {"points", [&] { return ws.CalPoints.Get().picInner; },
             [] { return QPoint(300, RowTop(1) + 5); }, marked},
        };
        for (const auto& c : cases) {
            QWidget* picture = c.Picture();
            picture->window()->show();
            p.chain.CalibrateAndDisplay();
            QVERIFY(QTest::qWaitForWindowExposed(picture->window()));
            const long before = c.Count();
            QTest::mouseDClick(picture->window()->windowHandle(), Qt::LeftButton, {},
                               picture->mapTo(picture->window(), c.At()));
            QVERIFY2(std::abs(c.Count() - before) == 1,
                     qPrintable(QStringLiteral("%1: wanted a change of 1 from %2, got %3")
                                    .arg(c.Window)
                                    .arg(before)
                                    .arg(c.Count())));
        }
    }
};
QTEST_MAIN(DoubleClickOnWindowsTest)

#include "DoubleClickOnWindowsTest.moc"
