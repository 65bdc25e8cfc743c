// The Virtual Telescope: "Create Cal Points" makes a mount whose errors the
// fit finds, and Track holds the sky place still, across local midnight.
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <cmath>

#include "simulation/fVirtualScope.h"
#include "sky/mStrings.h"
#include "windows/WindowSet.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fMain.h"

class VirtualScopeTest : public QObject {
    Q_OBJECT
  private slots:
    void CreatedPointsFitAndTrackingHoldsThePlaceAcrossMidnight() {
        auto s = FreshModel();
        s->ProgramFolder = AZTRUE_BUILD_DIR;  // the shipped Points.txt
        fMain main(*s);
        // At latitude 45 the window's next opening keeps the fit it made.
        main.Windows().VirtualScope.Get().txtLat->setText(QStringLiteral("45"));
        main.Windows().VirtualScope.Get().cmdRun->click();
        QCoreApplication::processEvents();
        QVERIFY(main.Windows().VirtualScope.IfLoaded() == nullptr);  // it closed
        fVirtualScope& w = main.Windows().VirtualScope.Get();
        w.Timer1->stop();  // the test ticks by hand, on its own clock
        // The sample mount of the boxes; a noise-free fit finds it to second
        // order in its errors, a few thousandths of an arcsecond.
        const struct {
            const char* Name;
            double Given, Found;
        } cases[] = {
            {"cone", Arcmin(10), s->TermCoef[5]},
            {"hub", Arcmin(-5), s->TermCoef[6]},
            {"PA west", Arcmin(15), s->ErrorWest + s->TermCoef[4]},
            {"PA north", Arcmin(-20), s->ErrorNorth + s->TermCoef[3]},
            {"Theta offset", Arcmin(7), s->ThetaEncOffset + s->TermCoef[2]},
            {"Phi offset", Arcmin(-9), s->PhiEncOffset + s->TermCoef[1]},
        };
        QCOMPARE(s->NumCalPoints, int16_t{40});
        QCOMPARE(s->Latitude, 45.0);
        for (const auto& c : cases) {
            const double diff = (c.Found - c.Given) / Arcsec(1);
            QVERIFY2(std::fabs(diff) < 0.02, QByteArray(c.Name) + ": wanted " +
                                                 QByteArray::number(c.Given, 'g', 12) + ", got " +
                                                 QByteArray::number(c.Found, 'g', 12) +
                                                 ", difference " + QByteArray::number(diff) + "\"");
        }

        // A clock of half-second steps from 23:59:55 local time.
        double t = 23 * 3600 + 59 * 60 + 55;
        w.Clock = [&t] {
            DateTimeRec d;
            d.Year = 2026;
            d.Month = 11;
            d.Day = static_cast<int16_t>(23 + std::floor(t / 86400));
            const double inDay = std::fmod(t, 86400);
            d.Hour = static_cast<int16_t>(inDay / 3600);
            d.Minute = static_cast<int16_t>(std::fmod(inDay, 3600) / 60);
            d.Second = std::fmod(inDay, 60);
            t += 0.5;
            return d;
        };
        // Track goes on after the second tick, whose step is all the day.
        w.Timer1Tick();
        w.Timer1Tick();
        w.chkTracking->setChecked(true);
        w.Timer1Tick();
        const double RA0 = RAStrToRad(w.lblRA->text().toStdString());
        const double Dec0 = DecStrToRad(w.lblDec->text().toStdString());
        const double Phi0 = RAStrToRad(w.txtPhi->text().toStdString());
        for (int i = 0; i < 20; ++i) w.Timer1Tick();  // 10 seconds, midnight half-way
        QVERIFY(t > 86400 + 4);
        const double dRA = (RAStrToRad(w.lblRA->text().toStdString()) - RA0) / Arcsec(1);
        const double dDec = (DecStrToRad(w.lblDec->text().toStdString()) - Dec0) / Arcsec(1);
        const double dPhi = (RAStrToRad(w.txtPhi->text().toStdString()) - Phi0) / Arcsec(1);
        // The axes moved with the sky (about 15" a second on Phi) while the
        // place stood still to its display (0.0001 s of RA is 0.0015").
        QVERIFY2(std::fabs(dPhi) > 50 && std::fabs(dPhi) < 500, QByteArray::number(dPhi));
        QVERIFY2(
            std::fabs(dRA) < 0.05 && std::fabs(dDec) < 0.05,
            "RA moved " + QByteArray::number(dRA) + "\", Dec " + QByteArray::number(dDec) + "\"");

        // The main window's unload closes it.
        main.UnloadAll();
        QCoreApplication::processEvents();
        QVERIFY(main.Windows().VirtualScope.IfLoaded() == nullptr);
    }
};

QTEST_MAIN(VirtualScopeTest)
#include "VirtualScopeTest.moc"
