// The Test menu's checks on the one model through TestServer.
#include <QListWidget>
#include <QMenu>
#include <QtTest>

#include "model/SyntheticCalibration.h"
#include "server/RecalcChain.h"
#include "windows/TestMenu.h"
#include "windows/WindowSet.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fMain.h"
#include "windows/fTest.h"

class TestChecksTest : public QObject {
    Q_OBJECT
  private slots:
    void TimeCheckGoesToEncodersAndBackOnAFittedModel() {
        auto s = FreshModel();
        fMain main(*s);
        // A badly built mount, fitted, so that the way back is a real inverse.
        SyntheticMount m;
        m.ErrorNorth = Arcmin(15);
        m.ErrorWest = Arcmin(-20);
        m.ThetaEncOffset = Arcmin(7);
        m.PhiEncOffset = Arcmin(-9);
        m.TermCoef[5] = Arcmin(10);
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        main.Windows().TestServer.EnableTermsForAltAz();
        s->TestLog = true;
        main.Tests->Time();
        const QListWidget& list = *main.Windows().Test.Get().List;
        QStringList ra, dec;
        QString jd0;
        for (int i = 0; i < list.count(); ++i) {
            const QString line = list.item(i)->text();
            if (line.startsWith(QStringLiteral("RARad = "))) ra << line;
            if (line.startsWith(QStringLiteral("DecRad = "))) dec << line;
            if (line.startsWith(QStringLiteral("JD0 = "))) jd0 = line;
        }
        QCOMPARE(ra.size(), 2);
        QCOMPARE(ra[1], ra[0]);
        QCOMPARE(dec, QStringList({"DecRad = 0.523599", "DecRad = 0.523599"}));
        // 10 January 2000, 0:30 at zone -5 is 5:30 UT: JD 2451553.5 + 5.5 / 24
        // (Meeus, Astronomical Algorithms, ch. 7: 2000 Jan 10.0 = 2451553.5).
        QVERIFY2(jd0.startsWith(QStringLiteral("JD0 = 2451553.729167  ")), qPrintable(jd0));
        // The model's fit found the given axis tilt (a real fit took place).
        QVERIFY(std::fabs(s->ErrorNorth - m.ErrorNorth) < Arcsec(0.1));
    }
};

QTEST_MAIN(TestChecksTest)
#include "TestChecksTest.moc"
