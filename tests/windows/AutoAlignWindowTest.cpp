// The Auto Alignment window and the Test menu's CalPoints entry: the map's
// pixels worked out by hand, the resize rule, the place under the mouse, and
// the Test Log list end to end.
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <fstream>

#include "windows/AutoAlignMap.h"
#include "windows/PictureBox.h"
#include "windows/TestMenu.h"
#include "windows/TestRegistry.h"
#include "windows/WindowSet.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fAutoAlign.h"
#include "windows/fMain.h"
#include "windows/fTest.h"

namespace {

QStringList Lines(const fTest& t) {
    QStringList lines;
    for (int i = 0; i < t.List->count(); ++i) lines << t.List->item(i)->text();
    return lines;
}

}  // namespace

class AutoAlignWindowTest : public QObject {
    Q_OBJECT
  private slots:
    void MapPutsPoleAndPointWhereTheyBelong() {
        // 200 pixels inside: centre (100, 100), outer ring 0.95 * 100 = 95.
        // Latitude 60: the pole 30 degrees from the zenith due north, 95 *
        // 30 / 90 = 31.67 above the centre: (100, 68). A point 60 degrees
        // from the zenith due east: 95 * 60 / 90 = 63.33 right: (163, 100).
        auto s = FreshModel();
        s->Latitude = 60;
        s->NumAutoAlign = 1;
        s->AutoAlignPoints[0] = {0, 1, 0, kHalfTurn / 2, kHalfTurn / 3, 1, true};
        // A flat skyline lies on the outer ring, drawn last: (100, 5) at north.
        s->Horizon.Num = 360;
        for (int a = 0; a < 360; ++a) s->Horizon.Az[a] = a;
        cPicture pic(200, 200);
        AutoAlignMap map;
        map.Draw(*s, pic);
        const Rgb red{255, 0, 0}, yellow{255, 255, 0}, green{0, 255, 0}, sky{0, 0, 32};
        const struct {
            int x, y;
            Rgb Wanted;
        } pixels[] = {{95, 68, red},      {105, 68, red},     {100, 63, red},    {100, 73, red},
                      {161, 100, yellow}, {165, 100, yellow}, {163, 98, yellow}, {163, 102, yellow},
                      {100, 5, green},    {195, 100, green},  {2, 100, sky}};
        for (const auto& p : pixels) {
            const Rgb got = PixelAt(pic, p.x, p.y);
            QVERIFY2(got == p.Wanted, QByteArray::number(p.x) + "," + QByteArray::number(p.y) +
                                          ": wanted " + RgbText(p.Wanted) + ", got " +
                                          RgbText(got));
        }
        QVERIFY(!(PixelAt(pic, 106, 68) == red));
    }

    void ResizeKeepsTheMapSquareAndTheMouseReadsIt() {
        // Side = smaller of width - 1 and height - 1 - 50, at (1, 50).
        auto s = FreshModel();
        fAutoAlign w(*s);
        w.show();
        const struct {
            int Width, Height, Side;
        } sizes[] = {{441, 490, 439}, {800, 300, 249}, {300, 800, 299}, {405, 455, 404}};
        for (const auto& c : sizes) {
            w.resize(c.Width, c.Height);
            QCoreApplication::processEvents();
            QCOMPARE(w.picGraph->geometry(), QRect(1, 50, c.Side, c.Side));
            QCOMPARE(w.picGraph->Picture().ScaleWidth(), c.Side - 2 * PictureBox::kBorder);
        }
        // At 404: 400 inside, centre 200, ring 190 pixels. At the very centre
        // the arctangent of (0, 0) is 0, so the azimuth is -(90 + 0) + 360 =
        // 270; 95 pixels down is 45 degrees up, to the south.
        const struct {
            int x, y;
            const char *Az, *El;
        } places[] = {{200, 200, "270°", "90°"},
                      {200, 10, "0°", "0°"},
                      {390, 200, "90°", "0°"},
                      {200, 295, "180°", "45°"}};
        for (const auto& c : places) {
            // Straight to the control, whatever the pointer did before.
            const QPointF at = QPointF(c.x, c.y) + QPointF(1, 1) * PictureBox::kBorder;
            QMouseEvent move(QEvent::MouseMove, at, w.picGraph->mapToGlobal(at), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(w.picGraph, &move);
            QCOMPARE(w.lblAz->text(), QString::fromUtf8(c.Az));
            QCOMPARE(w.lblEl->text(), QString::fromUtf8(c.El));
        }
    }

    void CalPointsFillsTheTestLogOnlyWhenSwitchedOn() {
        // The shipped Points.txt and sample.hrz next to the built program.
        auto s = FreshModel();
        s->ProgramFolder = AZTRUE_BUILD_DIR;
        fMain main(*s);
        s->TestLog = true;
        main.Tests->menuCalPoints->trigger();
        const QStringList lines = Lines(main.Windows().Test.Get());
        QVERIFY(main.Windows().Test.Get().isVisible());
        QCOMPARE(lines.first(), QStringLiteral("Read Horizon:"));
        // The sample (90, 1.5) is a whole degree of the table.
        for (const char* line : {"String Input:90, 1.5", "Az,El: 90  1.5", "Hrz:", "90  90  1.5",
                                 "AutoAlign Points read = 500"})
            QVERIFY2(lines.contains(QString::fromLatin1(line)), line);
        // Latitude 33.5: the pole at colatitude 56.5 degrees, sin 0.83389,
        // cos 0.55194, 0.98611 radians; the last of the 20 points before it.
        QCOMPARE(lines.mid(lines.size() - 2),
                 QStringList({"20", "DrawCP: 33.5  0.83389  0  0.55194  0.98611  0"}));
        fAutoAlign* map = main.Windows().AutoAlign.IfLoaded();
        QVERIFY(map && map->isVisible());

        // Get Horizon through the chooser, with the Test Log off.
        s->TestLog = false;
        QTemporaryDir dir;
        const QString hrz = dir.filePath(QStringLiteral("one.hrz"));
        std::ofstream(hrz.toStdString()) << "180, 30\n";
        QString title;
        AcceptFileDialog(hrz, &title);
        map->cmdHorizon->click();
        QCOMPARE(title, QStringLiteral("Load Horizon File"));
        QCOMPARE(s->Horizon.El[90], 15.0);
        QCOMPARE(Lines(main.Windows().Test.Get()).size(), lines.size());

        // The main window's unload closes the list, never the map.
        main.UnloadAll();
        QCoreApplication::processEvents();
        QVERIFY(main.Windows().Test.IfLoaded() == nullptr);
        QVERIFY(map->isVisible());
    }
};

AZTRUE_REGISTER_TEST(AutoAlignWindowTest);
#include "AutoAlignWindowTest.moc"
