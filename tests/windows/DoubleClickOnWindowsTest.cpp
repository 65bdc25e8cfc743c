// A double-click on a dot or a row of any window's picture acts as one
// press, delivered through the window as the window system sends it.
#include <QtTest>
#include <algorithm>

#include "windows/PictureBox.h"
#include "windows/ProcessWindows.h"
#include "windows/TestRegistry.h"

class DoubleClickOnWindowsTest : public QObject {
    Q_OBJECT
  private slots:
    void DoubleClickChangesOnePoint() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        WindowSet& ws = p.Windows();
        const auto used = [&] {
            int n = 0;
            for (int i = 1; i <= s->NumCalPoints; ++i) n += s->CalPoints[i].Used;
            return n;
        };
        const auto marked = [&] {
            const auto& rows = ws.CalPoints.Get().RowSelected;
            return static_cast<int>(std::count(rows.begin(), rows.begin() + 5, true));
        };
        constexpr double b = PictureBox::kBorder;
        struct Case {
            const char* Window;
            std::function<QWidget*()> Show;  // the picture, its window shown
            std::function<QPointF()> At;     // a dot or row, in the picture's pixels
            std::function<int()> Count;      // points used, or rows marked
        } cases[] = {
            {"main", [&] { ws.Main.Show(); return ws.Main.Get().picError; },
             [&] { const auto& P = ws.Main.Get().Plots; return QPointF(P.StarX[2] + b, P.StarY[2] + b); },
             used},
            {"analysis", [&] { ws.Analysis.Show(); return ws.Analysis.Get().picGraph; },
             [&] { const auto& P = ws.Analysis.Get().Plot; return QPointF(P.StarX[2] + b, P.StarY[2] + b); },
             used},
            {"points", [&] { ws.CalPoints.Show(); return ws.CalPoints.Get().picInner; },
             [&] { return QPointF(300, RowTop(1) + 5); }, marked},
        };
        for (const Case& c : cases) {
            QWidget* picture = c.Show();
            p.chain.CalibrateAndDisplay();
            QVERIFY(QTest::qWaitForWindowExposed(picture->window()));
            const int before = c.Count();
            const QPoint at = picture->mapTo(picture->window(), c.At().toPoint());
            QTest::mouseDClick(picture->window()->windowHandle(), Qt::LeftButton, {}, at);
            QVERIFY2(std::abs(c.Count() - before) == 1,
                     qPrintable(QStringLiteral("%1: wanted a change of one from %2, got %3")
                                    .arg(c.Window).arg(before).arg(c.Count())));
        }
        ws.CloseAll();
    }
};
AZTRUE_REGISTER_TEST(DoubleClickOnWindowsTest);

#include "DoubleClickOnWindowsTest.moc"
