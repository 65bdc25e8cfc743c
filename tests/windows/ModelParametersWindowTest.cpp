// The Model Parameters window as an operator and a client use it: presets,
// the sensitivity limit typed key by key, the check boxes following a
// client's preset and a loaded file without a fit, and where each term
// stands.
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <set>

#include "model/TermCaptions.h"
#include "server/cAztrue.h"
#include "windows/ProcessWindows.h"
#include "windows/TestRegistry.h"
#include "windows/fErrors.h"

namespace {

QString Cell(fErrors& w, int Term) {
    return w.findChild<QLabel*>(QStringLiteral("lblErr_%1").arg(Term))->text();
}

// Numbers of the terms whose cells are empty, and the same text for ranges.
QString EmptyCells(fErrors& w) {
    QStringList e;
    for (int t = 3; t <= 46; ++t)
        if (Cell(w, t).isEmpty()) e << QString::number(t);
    return e.join(' ');
}
QString Terms(std::initializer_list<std::pair<int, int>> Ranges) {
    QStringList e;
    for (auto [from, to] : Ranges)
        for (int t = from; t <= to; ++t) e << QString::number(t);
    return e.join(' ');
}

}  // namespace

class ModelParametersWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // Each button refits with its set of terms; the cells of the terms it
    // leaves out are empty, all others show a value. The empty sets are
    // those the window's users are told of: Equatorial 31 to 46; Alt-Az 13
    // to 20, 25 to 28, 33 to 46; Disable All everything but Cone and Hub.
    void PresetButtonsEmptyTheirCells() {
        auto s = ClientModel(40);
        ProcessWindows p(*s);
        p.Windows().Main.Get().cmdMountErrors->click();
        fErrors& w = *p.Windows().Errors.IfLoaded();
        QVERIFY(w.isVisible());
        const struct {
            QPushButton* Button;
            QString Empty;
        } cases[] = {{w.cmdEnable, ""},
                     {w.cmdGEM, Terms({{31, 46}})},
                     {w.cmdAltAz, Terms({{13, 20}, {25, 28}, {33, 46}})},
                     {w.cmdEnable, ""},
                     {w.cmdDisable, Terms({{7, 46}})}};
        for (const auto& c : cases) {
            w.cmdGEM->setEnabled(true);
            w.cmdAltAz->setEnabled(true);
            const int fits = p.display.Fits;
            QTest::mouseClick(c.Button, Qt::LeftButton);
            QCOMPARE(p.display.Fits, fits + 1);
            QCOMPARE(EmptyCells(w), c.Empty);
        }
        // "Disable All" left Cone and Hub ticked.
        QVERIFY(w.chkEnable[1]->isChecked() && w.chkEnable[2]->isChecked());
        QVERIFY(!w.chkEnable[3]->isChecked());
    }

    // Each keystroke that leaves a number refits with it: a limit of 3 cuts
    // the fit down, 300 lets more terms in again; a letter changes nothing.
    void LimitFollowsEachKeystroke() {
        auto s = ClientModel(40);
        ProcessWindows p(*s);
        fErrors& w = p.Windows().Errors.Get();
        p.chain.CalibrateAndDisplay();
        const int start = p.display.Fits;
        auto filled = [&w] { return 44 - EmptyCells(w).split(' ', Qt::SkipEmptyParts).size(); };
        w.txtMaxSensitivity->selectAll();
        QTest::keyClicks(w.txtMaxSensitivity, QStringLiteral("3"));
        QCOMPARE(s->MaxSensitivity, 3.0);
        const int at3 = filled();
        QTest::keyClicks(w.txtMaxSensitivity, QStringLiteral("00"));
        QCOMPARE(p.display.Fits, start + 3);
        QCOMPARE(s->MaxSensitivity, 300.0);
        QVERIFY2(filled() > at3,
                 qPrintable(QStringLiteral("%1 terms at 3, %2 at 300").arg(at3).arg(filled())));
        QTest::keyClicks(w.txtMaxSensitivity, QStringLiteral("x"));
        QCOMPARE(p.display.Fits, start + 3);
        QCOMPARE(s->MaxSensitivity, 300.0);
        QCOMPARE(w.txtMaxSensitivity->text(), QStringLiteral("300x"));
    }

    // A client's preset and a loaded file show in the boxes; copying them
    // starts no fit beyond the one the client's member runs itself.
    void ClientPresetAndFileReachTheBoxes() {
        auto s = ClientModel(30);
        ProcessWindows p(*s);
        cAztrue client(p.chain);
        fErrors& w = p.Windows().Errors.Get();
        const int fits = p.display.Fits;
        client.EnableTermsForAltAz();
        QCOMPARE(p.display.Fits, fits + 1);
        const std::set<int> altAz = {1, 2, 3, 4, 5, 10, 11, 14, 15};
        for (int i = 1; i <= 22; ++i) QCOMPARE(w.chkEnable[i]->isChecked(), altAz.count(i) == 1);

        client.EnableAllTerms();
        QCOMPARE(p.display.Fits, fits + 2);
        for (int i = 1; i <= 22; ++i) QVERIFY(w.chkEnable[i]->isChecked());

        QVERIFY(client.LoadFile(QT_TESTCASE_SOURCEDIR "/../data/sample.AZT"));
        QCOMPARE(p.display.Fits, fits + 2);
        for (int i = 1; i <= 22; ++i) QCOMPARE(w.chkEnable[i]->isChecked(), s->TermEnable[i] == 1);
        QVERIFY(!w.chkEnable[3]->isChecked());  // the sample's flags differ from "all"
    }

    // Activation brings the boxes up to date and allows only the preset of
    // the mount type.
    void ActivationEnablesThePresetOfTheMount() {
        auto s = ClientModel(10);
        ProcessWindows p(*s);
        fErrors& w = p.Windows().Errors.Get();
        for (bool altAz : {true, false}) {
            s->IsAltAz = altAz;
            s->TermEnable[7] = altAz ? 0 : 1;
            QEvent activate(QEvent::WindowActivate);
            QApplication::sendEvent(&w, &activate);
            QCOMPARE(w.cmdAltAz->isEnabled(), altAz);
            QCOMPARE(w.cmdGEM->isEnabled(), !altAz);
            QCOMPARE(w.chkEnable[7]->isChecked(), !altAz);
        }
    }

    // Every value cell stands in the frame, row and column that the term
    // captions of the model give it, beside its number in brackets; the
    // tables fit the fixed window.
    void TermsStandWhereTheirCaptionsSay() {
        auto s = ClientModel(0);
        ProcessWindows p(*s);
        fErrors& w = p.Windows().Errors.Get();
        QCOMPARE(w.size(), QSize(485, 422));
        QCOMPARE(w.minimumSize(), w.maximumSize());
        const QSize need = w.layout()->minimumSize();
        QVERIFY2(need.width() <= 485 && need.height() <= 422,
                 qPrintable(QStringLiteral("needs %1 x %2").arg(need.width()).arg(need.height())));
        for (int t = 5; t <= 46; ++t) {
            QLabel* value = w.findChild<QLabel*>(QStringLiteral("lblErr_%1").arg(t));
            auto* frame = qobject_cast<QGroupBox*>(value->parentWidget());
            auto* grid = qobject_cast<QGridLayout*>(frame->layout());
            int row = 0, col = 0, rs = 0, cs = 0;
            grid->getItemPosition(grid->indexOf(value), &row, &col, &rs, &cs);
            auto text = [grid](int r, int c) {
                QWidget* x = grid->itemAtPosition(r, c)->widget();
                if (auto* b = qobject_cast<QCheckBox*>(x)) return b->text();
                return qobject_cast<QLabel*>(x)->text();
            };
            // The block's header row is the nearest row above without a box.
            int header = row - 1;
            while (t > 6 && grid->itemAtPosition(header, 0) != nullptr) --header;
            const TermCaption& want = TermCaptionOf(t);
            QCOMPARE(frame->title().toStdString(), want.Group);
            QCOMPARE(text(row, 0).toStdString(), want.Row);
            QCOMPARE(text(row, col - 1), QStringLiteral("(%1)").arg(t));
            if (t > 6) QCOMPARE(text(header, col - 1).toStdString(), want.Column);
            const int flag = t <= 6 ? t - 4 : (t - 1) / 2;
            QCOMPARE(grid->itemAtPosition(row, 0)->widget()->objectName(),
                     QStringLiteral("chkEnable_%1").arg(flag));
        }
    }
};
AZTRUE_REGISTER_TEST(ModelParametersWindowTest);

#include "ModelParametersWindowTest.moc"
