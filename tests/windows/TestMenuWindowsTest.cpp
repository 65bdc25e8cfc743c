// The Test menu's windows on the one model: the Virtual Telescope's mount
// found by a fit and its tracking across local midnight; the Time check.
#include <QCheckBox>
#include <QListWidget>

#include "simulation/fVirtualScope.h"
#include "sky/mStrings.h"
#include "windows/TestMenu.h"
#include "windows/WindowSet.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fMain.h"
#include "windows/fTest.h"

class TestMenuWindowsTest : public QObject {
    Q_OBJECT
  private slots:
    // "Create Cal Points" closes the window and adds the sample mount of its
    // boxes, which a noise-free fit finds to second order in its errors, a
    // few thousandths of an arcsecond. At latitude 45 the window's next
    // opening keeps that fit.
    void CreatedPointsFitAndTrackingHoldsThePlaceAcrossMidnight() {
        auto s = FreshModel();
        s->ProgramFolder = AZTRUE_BUILD_DIR;  // the shipped Points.txt
        fMain main(*s);
        main.Windows().VirtualScope.Get().txtLat->setText(QStringLiteral("45"));
        main.Windows().VirtualScope.Get().cmdRun->click();
        QCoreApplication::processEvents();
        QVERIFY(main.Windows().VirtualScope.IfLoaded() == nullptr);
        fVirtualScope& w = main.Windows().VirtualScope.Get();
        w.Timer1->stop();  // ticked by hand, on the test's own clock
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
            QVERIFY2(std::fabs(diff) < 0.02,
                     qPrintable(QString::asprintf("%s: wanted %.12g, got %.12g, difference %.3g\"",
                                                  c.Name, c.Given, c.Found, diff)));
        }

        // Half-second steps from 23:59:55 local time; Track goes on after the
        // second tick, whose step is all the day.
        double t = 23 * 3600 + 59 * 60 + 55;
        w.Clock = [&t] {
            const double inDay = std::fmod(t, 86400);
            t += 0.5;
            return DateTimeRec{.Year = 2026,
                               .Month = 11,
                               .Day = int16_t(23 + std::floor((t - 0.5) / 86400)),
                               .Hour = int16_t(inDay / 3600),
                               .Minute = int16_t(std::fmod(inDay, 3600) / 60),
                               .Second = std::fmod(inDay, 60)};
        };
        const auto RA = [](const QString& Text) { return RAStrToRad(Text.toStdString()); };
        w.Timer1Tick();
        w.Timer1Tick();
        w.chkTracking->setChecked(true);
        w.Timer1Tick();
        const double RA0 = RA(w.lblRA->text()), Phi0 = RA(w.txtPhi->text());
        const double Dec0 = DecStrToRad(w.lblDec->text().toStdString());
        for (int i = 0; i < 20; ++i) w.Timer1Tick();  // 10 seconds, midnight half-way
        QVERIFY(t > 86400 + 4);
        const double dRA = (RA(w.lblRA->text()) - RA0) / Arcsec(1);
        const double dDec = (DecStrToRad(w.lblDec->text().toStdString()) - Dec0) / Arcsec(1);
        const double dPhi = (RA(w.txtPhi->text()) - Phi0) / Arcsec(1);
        // The axes moved with the sky (about 15" a second on Phi) while the
        // place stood still to its display (0.0001 s of RA is 0.0015").
        QVERIFY2(std::fabs(dPhi) > 50 && std::fabs(dPhi) < 500, QByteArray::number(dPhi));
        QVERIFY2(std::fabs(dRA) < 0.05 && std::fabs(dDec) < 0.05,
                 qPrintable(QString::asprintf("RA moved %g\", Dec %g\"", dRA, dDec)));
    }

    // On a badly built mount, fitted so that the way back is a real inverse,
    // the Time check goes to the encoders and back to the same RA and Dec.
    void TimeCheckGoesToEncodersAndBack() {
        auto s = FreshModel();
        fMain main(*s);
        SyntheticMount m{.ErrorNorth = Arcmin(15),
                         .ErrorWest = Arcmin(-20),
                         .ThetaEncOffset = Arcmin(7),
                         .PhiEncOffset = Arcmin(-9)};
        m.TermCoef[5] = Arcmin(10);
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        main.Windows().TestServer.EnableTermsForAltAz();
        s->TestLog = true;
        main.Tests->Time();
        const QListWidget& list = *main.Windows().Test.Get().List;
        QStringList ra, dec, jd0;
        for (int i = 0; i < list.count(); ++i) {
            const QString line = list.item(i)->text();
            for (auto [prefix, into] :
                 {std::pair("RARad = ", &ra), {"DecRad = ", &dec}, {"JD0 = ", &jd0}})
                if (line.startsWith(prefix)) *into << line;
        }
        QCOMPARE(ra.size(), 2);
        QCOMPARE(ra[1], ra[0]);
        QCOMPARE(dec, QStringList({"DecRad = 0.523599", "DecRad = 0.523599"}));
        // 10 January 2000, 0:30 at zone -5 is 5:30 UT: JD 2451553.5 + 5.5 / 24
        // (Meeus, Astronomical Algorithms, ch. 7: 2000 Jan 10.0 = 2451553.5).
        QVERIFY2(jd0.size() == 1 && jd0[0].startsWith("JD0 = 2451553.729167  "),
                 qPrintable(jd0.join('|')));
        CHECK_NEAR(s->ErrorNorth, m.ErrorNorth, Arcsec(0.1));  // a real fit took place
    }
};
QTEST_MAIN(TestMenuWindowsTest)

#include "TestMenuWindowsTest.moc"
