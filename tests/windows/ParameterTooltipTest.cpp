// The tooltips of the Model Parameters window's values: a term in the mount
// reads as clearly significant, its value is its significance times its
// standard error, and a term the fit left out has none.
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

#include "windows/ProcessWindows.h"
#include "windows/TestRegistry.h"
#include "windows/fErrors.h"

class ParameterTooltipTest : public QObject {
    Q_OBJECT
  private slots:
    // The cone error of the test mount is 8e-4 radian (165") under 3" of
    // noise on 40 stars: far beyond 10 standard errors. The value's text is
    // in arcminutes to 2 decimals, the error in arcseconds to 1: their
    // product agrees within those roundings.
    void ConeTooltipGivesItsStandardError() {
        auto s = ClientModel(40);
        ProcessWindows p(*s);
        p.Windows().Main.Get().cmdMountErrors->click();
        fErrors& w = *p.Windows().Errors.IfLoaded();
        w.cmdAltAz->click();
        auto* cone = w.findChild<QLabel*>(QStringLiteral("lblErr_5"));
        const QRegularExpressionMatch m =
            QRegularExpression(
                QStringLiteral("^Standard error ([0-9.]+)\", significance (-?[0-9.]+)$"))
                .match(cone->toolTip());
        QVERIFY2(m.hasMatch(), qPrintable(cone->toolTip()));
        QVERIFY2(cone->text().endsWith('\''), qPrintable(cone->text()));
        const double value = cone->text().chopped(1).toDouble() * 60;
        const double sigma = m.captured(1).toDouble();
        const double ratio = m.captured(2).toDouble();
        QVERIFY2(ratio > 10, qPrintable(cone->toolTip()));
        const double slack = 0.3 + 0.05 * std::fabs(ratio) + 0.05 * sigma;
        QVERIFY2(
            std::fabs(ratio * sigma - value) <= slack,
            qPrintable(QStringLiteral("value %1\", got %2 x %3").arg(value).arg(ratio).arg(sigma)));
        QCOMPARE(w.findChild<QLabel*>(QStringLiteral("lblErr_13"))->toolTip(), QString());
    }
};
AZTRUE_REGISTER_TEST(ParameterTooltipTest);

#include "ParameterTooltipTest.moc"
