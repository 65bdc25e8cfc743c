// The table windows over a fit, with the main window following their refits;
// the README's pictures of them and of the plot command.
#include <QCheckBox>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include "windows/CalPointsTable.h"
#include "windows/WindowsTestSupport.h"

namespace {

QCheckBox* UseBox(fCalPoints& w, int Row) {
    return w.findChild<QCheckBox*>(QStringLiteral("chkUse_%1").arg(Row));
}

void PressRow(fCalPoints& w, int Row, Qt::MouseButton Button = Qt::LeftButton) {
    QTest::mousePress(w.picInner, Button, Qt::NoModifier, QPoint(300, RowTop(Row) + 5));
}

// `aztrue plot Args` with no display in the environment.
int RunPlot(const QStringList& Args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(v);
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(AZTRUE_BUILD_DIR "/aztrue"), QStringList{"plot"} + Args);
    return p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

// The terms 3 to 46 whose cells in the Model Parameters window are empty.
QString EmptyCells(fErrors& w) {
    QStringList e;
    for (int t = 3; t <= 46; ++t)
        if (w.findChild<QLabel*>(QStringLiteral("lblErr_%1").arg(t))->text().isEmpty())
            e << QString::number(t);
    return e.join(' ');
}

QString Range(int From, int To) {
    return From > To ? "" : (QString::number(From) + " " + Range(From + 1, To)).trimmed();
}

}  // namespace

class TableWindowsTest : public QObject {
    Q_OBJECT
  private slots:
    // Each box or button refits once, the main window follows; rows marked by a
    // press of any button go after "Yes" to the question, stay after "No".
    void CalPointsBoxesAndDeleteRefit() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        fMain& m = p.Windows().Main.Get();
        m.cmdCalPoints->click();
        fCalPoints& w = *p.Windows().CalPoints.IfLoaded();
        const std::pair<std::function<void()>, QString> steps[] = {
            {[&w] { QTest::mouseClick(UseBox(w, 1), Qt::LeftButton); }, "4/5"},
            {[&w] { QTest::mouseClick(UseBox(w, 3), Qt::LeftButton); }, "3/5"},
            {[&w] { w.cmdNone->click(); }, "0/5"},
            {[&w] { w.cmdAll->click(); }, "5/5"}};
        for (const auto& [act, num] : steps) {
            const int fits = p.display.Fits;
            act();
            QCOMPARE(p.display.Fits, fits + 1);
            QCOMPARE(m.lblNum->text(), num);
            for (int r = 0; r < 5; ++r)
                QCOMPARE(UseBox(w, r)->isChecked(), s->CalPoints[r + 1].Used);
        }
        PressRow(w, 1);
        PressRow(w, 3, Qt::RightButton);
        for (auto [answer, left] : {std::pair(QMessageBox::No, "d1 d2 d3 d4 d5"),
                                    std::pair(QMessageBox::Yes, "d1 d3 d5")}) {
            WhenModal<QMessageBox>(
                [answer = answer](QMessageBox* box) { box->button(answer)->click(); });
            w.cmdDel->click();
            QStringList dates;
            for (int i = 1; i <= s->NumCalPoints; ++i) dates << s->CalPoints[i].DateStr.c_str();
            QCOMPARE(dates.join(' '), QString(left));
        }
        QCOMPARE(m.lblNum->text(), QStringLiteral("3/3"));
        QVERIFY(!w.cmdDel->isEnabled());
    }

    // Theta in -half..half a turn, Phi in 0..a turn (0.5 rad = 28.6479 degrees
    // = 28° 38' 52.4"); the error with one decimal below 1000".
    void CalPointsCellsOfAPoint() {
        auto s = FreshModel();
        QStringList got;
        for (auto [theta, phi, err] :
             {std::tuple(-0.5, 1.0, 999.94), std::tuple(4.0, -1.0, 1000.4)}) {
            std::tie(s->CalPoints[3].AxisTheta, s->CalPoints[3].AxisPhi, s->CalPoints[3].DistErr) =
                std::tuple(theta, phi, Arcsec(err));
            for (int k : {0, 5, 6, 7}) got << QString::fromStdString(CalPointCells(*s, 3)[k]);
        }
        QCOMPARE(got, (QStringList{" 3", "-28° 38' 52\"", "57° 17' 45\"", "999.9\"", " 3",
                                   "-130° 49' 01\"", "302° 42' 15\"", "1000\""}));
    }

    // Each preset refits with its terms, and the cells of the terms it
    // leaves out are empty: Equatorial 31 to 46; Alt-Az 13 to 20, 25 to 28,
    // 33 to 46; Disable All all but Cone and Hub.
    void ModelParametersPresetsRefitAndTooltips() {
        auto s = ClientModel(40);
        ProcessWindows p(*s);
        p.Windows().Main.Get().cmdMountErrors->click();
        fErrors& w = *p.Windows().Errors.IfLoaded();
        const std::pair<QPushButton*, QString> cases[] = {
            {w.cmdGEM, Range(31, 46)},
            {w.cmdAltAz, Range(13, 20) + " " + Range(25, 28) + " " + Range(33, 46)},
            {w.cmdEnable, ""},
            {w.cmdDisable, Range(7, 46)},
            {w.cmdEnable, ""}};
        for (const auto& [button, empty] : cases) {
            button->setEnabled(true);  // the other mount type's preset is off
            const int fits = p.display.Fits;
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(p.display.Fits, fits + 1);
            QCOMPARE(EmptyCells(w), empty);
        }
        // The cone, 8e-4 rad (165") under 3" of noise on 40 stars, is real:
        // beyond 3 standard errors. Its tooltip's error (arcseconds, 1 decimal)
        // times its significance is the value shown (arcminutes, 2 decimals)
        // within those roundings. Term 13, left out of the alt-az set, has none.
        QTest::mouseClick(w.cmdAltAz, Qt::LeftButton);
        auto* cone = w.findChild<QLabel*>(QStringLiteral("lblErr_5"));
        const auto m = QRegularExpression(
                           QStringLiteral("^Standard error ([0-9.]+)\", significance ([0-9.]+)$"))
                           .match(cone->toolTip());
        QVERIFY2(m.hasMatch() && cone->text().endsWith('\''), qPrintable(cone->toolTip()));
        const double value = cone->text().chopped(1).toDouble() * 60;
        const double sigma = m.captured(1).toDouble(), ratio = m.captured(2).toDouble();
        QVERIFY2(ratio > 3 && std::fabs(ratio * sigma - value) <= 0.3 + 0.05 * (ratio + sigma),
                 qPrintable(QString("%1\" against %2 x %3").arg(value).arg(ratio).arg(sigma)));
        QCOMPARE(w.findChild<QLabel*>(QStringLiteral("lblErr_13"))->toolTip(), QString());
    }

    // The plot command writes, without a display, the windows' pictures of the
    // sample (one for the README); a file that is no calibration exits 3 and
    // writes nothing. Then the table windows, one point out and one row marked.
    void PicturesForTheReadme() {
        auto s = std::make_unique<ModelState>();
        fMain m(*s);
        QVERIFY(m.OpenCalibrationFile(kSample.toStdString()));
        QTemporaryDir dir;
        const QString out = dir.filePath("out");
        QCOMPARE(RunPlot({kSample, "--out", out}), 0);
        QCOMPARE(QDir(out).entryList(QDir::Files).size(), 8);
        auto picture = [&out](const char* Name) {
            return QImage(out + "/" + Name).convertToFormat(QImage::Format_RGB32);
        };
        QCOMPARE(picture("errors.png"), m.picError->Picture().Image());
        fAnalysis& a = m.Windows().Analysis.Get();
        a.optYPhi->click();
        a.OptZ->click();
        QCOMPARE(picture("analysis-phi-error-vs-zenith-distance.png"),
                 a.picGraph->Picture().Image());
        QCOMPARE(RunPlot({out + "/errors.png", "--out", dir.filePath("bad")}), 3);
        QVERIFY(!QDir(dir.filePath("bad")).exists());
        QFile::remove(QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png");
        QVERIFY(QFile::copy(out + "/analysis-phi-error-vs-phi.png",
                            QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png"));

        m.cmdCalPoints->click();
        m.cmdMountErrors->click();
        fCalPoints& c = *m.Windows().CalPoints.IfLoaded();
        c.resize(675, fCalPoints::kInnerHeight);  // every column in sight
        QTest::mouseClick(UseBox(c, 4), Qt::LeftButton);
        PressRow(c, 6);
        fErrors& e = *m.Windows().Errors.IfLoaded();
        QVERIFY(QTest::qWaitForWindowExposed(&e));
        QVERIFY(e.grab().save(QT_TESTCASE_SOURCEDIR "/../docs/model-parameters.png"));
        QVERIFY(c.grab().save(QT_TESTCASE_SOURCEDIR "/../docs/calibration-points.png"));
    }
};
QTEST_MAIN(TableWindowsTest)

#include "TableWindowsTest.moc"
