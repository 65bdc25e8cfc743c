// The cone's value label in the Model Parameters window: its tooltip gives a
// standard error and a significance whose product is the value shown.
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

#include "windows/WindowsTestSupport.h"
#include "windows/fErrors.h"

class ParameterTooltipTest : public QObject {
    Q_OBJECT
  private slots:
    // The test mount's cone is 8e-4 radian (165") under 3" of noise on 40
    // stars: a real error, beyond 3 standard errors. The value reads in arcminutes to
    // 2 decimals, the error in arcseconds to 1: the product agrees within
    // those roundings. Term 13, left out of the alt-az set, has no tooltip.
    void ConeTooltipGivesItsStandardError() {
        auto s = ClientModel(40);
        ProcessWindows p(*s);
        p.Windows().Main.Get().cmdMountErrors->click();
        fErrors& w = *p.Windows().Errors.IfLoaded();
        w.cmdAltAz->click();
        auto* cone = w.findChild<QLabel*>(QStringLiteral("lblErr_5"));
        const auto m = QRegularExpression(
                           QStringLiteral("^Standard error ([0-9.]+)\", significance ([0-9.]+)$"))
                           .match(cone->toolTip());
        QVERIFY2(m.hasMatch() && cone->text().endsWith('\''), qPrintable(cone->toolTip()));
        const double value = cone->text().chopped(1).toDouble() * 60;
        const double sigma = m.captured(1).toDouble(), ratio = m.captured(2).toDouble();
        QVERIFY2(
            ratio > 3 && std::fabs(ratio * sigma - value) <= 0.3 + 0.05 * (ratio + sigma),
            qPrintable(QStringLiteral("%1\" against %2 x %3").arg(value).arg(ratio).arg(sigma)));
        QCOMPARE(w.findChild<QLabel*>(QStringLiteral("lblErr_13"))->toolTip(), QString());
    }
};
QTEST_MAIN(ParameterTooltipTest)

#include "ParameterTooltipTest.moc"
