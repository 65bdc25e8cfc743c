// The figures of the main window and of the Model Parameters window as text:
// ErrStr's choice of unit and rounding, the direction words, the sensitivity
// colour and text, the point count and the empty "Selected Points" row.
#include <QtTest>

#include "windows/DisplayFigures.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsTestSupport.h"

namespace {
const std::string kDeg = "\u00B0";
}

class ErrStrTest : public QObject {
    Q_OBJECT
  private slots:
    // Zero is below one arcminute: arcseconds with the double-quote character.
    void ZeroReadsInArcseconds() { QCOMPARE(ErrStr(0.0), std::string("0\"")); }

    // Half a degree is 30 arcminutes; the conversion back through the same pi
    // is off in the last bit at most, which the 2 decimals hide.
    void HalfDegreeReadsInArcminutes() {
        QCOMPARE(ErrStr(0.5 * kHalfTurn / 180), std::string("30'"));
        QCOMPARE(ErrStr(-0.5 * kHalfTurn / 180), std::string("-30'"));
    }

    void OneAndAHalfDegreesReadInDegrees() {
        QCOMPARE(ErrStr(1.5 * kHalfTurn / 180), std::string("1.5") + kDeg);
        QCOMPARE(ErrStr(-1.5 * kHalfTurn / 180), std::string("-1.5") + kDeg);
    }

    // The unit is chosen on the unrounded value: 0.99999 arcminute is
    // 59.9994 arcseconds, which rounds to 60 but stays in arcseconds; and
    // 0.99999 degree is 59.9994 arcminutes, shown as 60'.
    void JustUnderOneArcminuteStaysInArcseconds() {
        QCOMPARE(ErrStr(Arcmin(0.99999)), std::string("60\""));
        QCOMPARE(ErrStr(0.99999 * kHalfTurn / 180), std::string("60'"));
    }

    // 2 decimals for degrees and arcminutes, 1 for arcseconds:
    // 12.3456 degrees -> 12.35, 7.891 arcminutes -> 7.89, 12.34 arcseconds -> 12.3.
    void DecimalsPerUnit() {
        QCOMPARE(ErrStr(12.3456 * kHalfTurn / 180), std::string("12.35") + kDeg);
        QCOMPARE(ErrStr(Arcmin(7.891)), std::string("7.89'"));
        QCOMPARE(ErrStr(Arcsec(12.34)), std::string("12.3\""));
    }

    // A tiny negative angle rounds to zero and is written without a sign.
    void TinyNegativeHasNoSign() { QCOMPARE(ErrStr(-1e-9), std::string("0\"")); }
};
AZTRUE_REGISTER_TEST(ErrStrTest);

class DisplayFiguresTest : public QObject {
    Q_OBJECT
  private slots:
    // North total = term 3 + ErrorNorth = 0.001 - 0.003 = -0.002 rad, that is
    // 0.002 * 10800 / 3.141592654 = 6.8755 arcminutes: the main window shows
    // the size with "to South", the Model Parameters window the signed value.
    void NegativeNorthReadsToSouth() {
        auto s = FreshModel();
        s->TermActive[3] = true;
        s->TermCoef[3] = 0.001;
        s->ErrorNorth = -0.003;
        const DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblNorthDir, std::string("to South"));
        QVERIFY(f.Main.NorthDirVisible);
        QCOMPARE(f.Main.lblErr3, std::string("6.88'"));
        QCOMPARE(f.Parameters.lblErr[3], std::string("-6.88'"));
    }

    void PositiveAndZeroNorthReadToNorth() {
        auto s = FreshModel();
        s->TermActive[3] = true;
        s->ErrorNorth = Arcmin(3);
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblNorthDir, std::string("to North"));
        s->ErrorNorth = 0;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblNorthDir, std::string("to North"));
    }

    void WestAndEast() {
        auto s = FreshModel();
        s->TermActive[4] = true;
        s->TermCoef[4] = Arcmin(-2);
        s->ErrorWest = Arcmin(0.5);
        DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblWestDir, std::string("to East"));
        QCOMPARE(f.Main.lblErr4, std::string("1.5'"));
        QCOMPARE(f.Parameters.lblErr[4], std::string("-1.5'"));
        s->ErrorWest = Arcmin(2.5);
        f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblWestDir, std::string("to West"));
        QCOMPARE(f.Main.lblErr4, std::string("30\""));
    }

    // A misalignment term the fit left out: both figures empty, words hidden.
    void InactiveTermsAreEmpty() {
        auto s = FreshModel();
        s->ErrorNorth = Arcmin(3);
        s->TermCoef[9] = Arcmin(1);
        s->TermActive[10] = true;
        s->TermCoef[10] = Arcmin(-4.5);
        const DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblErr3, std::string());
        QVERIFY(!f.Main.NorthDirVisible);
        QVERIFY(!f.Main.WestDirVisible);
        QCOMPARE(f.Parameters.lblErr[3], std::string());
        QCOMPARE(f.Parameters.lblErr[9], std::string());
        QCOMPARE(f.Parameters.lblErr[10], std::string("-4.5'"));
    }

    // Terms 1 and 2 are shown with the encoder offsets added.
    void EncoderOffsetsAddToTermsOneAndTwo() {
        auto s = FreshModel();
        s->TermCoef[1] = Arcmin(1);
        s->PhiEncOffset = Arcmin(2);
        s->TermCoef[2] = 2 * kHalfTurn / 180;
        s->ThetaEncOffset = 0.25 * kHalfTurn / 180;
        const DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Parameters.lblPhi0, std::string("3'"));
        QCOMPARE(f.Parameters.lblTheta0, std::string("2.25") + kDeg);
    }

    // Black up to and including 300, red above; the limit is the fixed 300,
    // not MaxSensitivity. 300.5 rounds to the even 300 but is red.
    void SensitivityColour() {
        auto s = FreshModel();
        s->MaxSensitivity = 1000;
        s->Sensitivity = 300;
        DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.SensitivityColor, 0L);
        QCOMPARE(f.Parameters.SensitivityColor, 0L);
        QCOMPARE(f.Main.lblSensitivity, std::string("300"));
        s->Sensitivity = 300.5;
        f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.SensitivityColor, 255L);
        QCOMPARE(f.Parameters.SensitivityColor, 255L);
        QCOMPARE(f.Main.lblSensitivity, std::string("300"));
        s->Sensitivity = 5000;
        QCOMPARE(ComputeDisplayFigures(*s).Main.SensitivityColor, 255L);
    }

    // 9999 reads 9999, 9999.5 rounds to the even 10000, 10000 and more read "> 9999".
    void SensitivityText() {
        auto s = FreshModel();
        s->Sensitivity = 9999;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblSensitivity, std::string("9999"));
        s->Sensitivity = 9999.5;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblSensitivity, std::string("10000"));
        s->Sensitivity = 10000;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblSensitivity, std::string("> 9999"));
        QCOMPARE(ComputeDisplayFigures(*s).Parameters.lblSensitivity, std::string("> 9999"));
        s->Sensitivity = 1e12;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblSensitivity, std::string("> 9999"));
        s->Sensitivity = 12.5;
        QCOMPARE(ComputeDisplayFigures(*s).Main.lblSensitivity, std::string("12"));
    }

    // The "Selected Points" row is blank on both windows while every point is
    // used (also with no points at all), and filled once one is taken out.
    void SelectedRowEmptyWhileAllUsed() {
        auto s = FreshModel();
        s->RMSErrSel = Arcmin(1.25);
        s->MaxErrSel = Arcmin(3.5);
        s->RMSErrAll = Arcmin(1.5);
        s->MaxErrAll = Arcmin(4);
        s->NumCalPoints = 5;
        s->NumPointsUsed = 5;
        DisplayFigures f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblNum, std::string("5/5"));
        QCOMPARE(f.Main.lblRMSSelected, std::string());
        QCOMPARE(f.Main.lblMaxSelected, std::string());
        QCOMPARE(f.Parameters.lblRMSSelected, std::string());
        QCOMPARE(f.Parameters.lblMaxSelected, std::string());
        QCOMPARE(f.Main.lblRMSAll, std::string("1.5'"));
        QCOMPARE(f.Main.lblMaxAll, std::string("4'"));
        QCOMPARE(f.Parameters.lblMaxAll, std::string("4'"));

        s->NumPointsUsed = 4;
        f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblNum, std::string("4/5"));
        QCOMPARE(f.Main.lblRMSSelected, std::string("1.25'"));
        QCOMPARE(f.Main.lblMaxSelected, std::string("3.5'"));
        QCOMPARE(f.Parameters.lblRMSSelected, std::string("1.25'"));

        s->NumCalPoints = 0;
        s->NumPointsUsed = 0;
        f = ComputeDisplayFigures(*s);
        QCOMPARE(f.Main.lblNum, std::string("0/0"));
        QCOMPARE(f.Main.lblRMSSelected, std::string());
    }

    // The text box gets MaxSensitivity with 1 decimal: 12.25 is exact in
    // binary and its tie goes to the even 12.2; 300 is written "300".
    void MaxSensitivityText() {
        auto s = FreshModel();
        QCOMPARE(ComputeDisplayFigures(*s).Parameters.txtMaxSensitivity, std::string("300"));
        s->MaxSensitivity = 12.25;
        QCOMPARE(ComputeDisplayFigures(*s).Parameters.txtMaxSensitivity, std::string("12.2"));
    }

    void RefractionBox() {
        auto s = FreshModel();
        QVERIFY(ComputeDisplayFigures(*s).Parameters.chkRefraction);
        s->EnableRefraction = false;
        QVERIFY(!ComputeDisplayFigures(*s).Parameters.chkRefraction);
    }
};
AZTRUE_REGISTER_TEST(DisplayFiguresTest);

#include "DisplayFiguresTest.moc"
