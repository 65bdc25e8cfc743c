#include "windows/TestMenu.h"

#include <QMenu>
#include <algorithm>
#include <chrono>
#include <filesystem>

#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "files/TestLogList.h"
#include "model/ModelState.h"
#include "server/RecalcChain.h"
#include "sky/NumberText.h"
#include "sky/mTime.h"
#include "windows/WindowSet.h"

TestMenu::TestMenu(WindowSet& Windows, QMenu& Menu) : QObject(&Menu), windows_(Windows) {
    struct Entry {
        const char* Name;
        const char* Caption;
        void (TestMenu::*React)();  // null: the check does not exist yet
    };
    const Entry entries[] = {
        {"menu_TestTime", "Time", &TestMenu::Time},
        {"menuCalPoints", "CalPoints", &TestMenu::CalPoints},
        {"menuTestRotation", "Rotation", &TestMenu::Rotation},
        {"menuVirtualScope", "Virtual Scope", &TestMenu::VirtualScope},
        {"menu_Trace", "Trace", &TestMenu::Trace},
    };
    for (const Entry& e : entries) {
        if (!e.React) continue;
        QAction* a = Menu.addAction(QString::fromLatin1(e.Caption));
        a->setObjectName(QString::fromLatin1(e.Name));
        connect(a, &QAction::triggered, this, [this, React = e.React] { (this->*React)(); });
    }
    menuCalPoints = Menu.findChild<QAction*>(QStringLiteral("menuCalPoints"));
}

void TestMenu::CalPoints() {
    ModelState& s = windows_.Chain().Model();
    windows_.Test.Show();
    const std::string file = HorizonFile.empty()
                                 ? (std::filesystem::path(s.ProgramFolder) / "sample.hrz").string()
                                 : HorizonFile;
    // A failed read leaves the old skyline, and the points are made with it.
    ReadHorizon(s, file, s.Horizon);
    AddTestLogLine(s, "Hrz:");
    const int n = std::clamp<int>(s.Horizon.Num, 0, kHorizonTableSize);
    for (int i = 0; i < n; ++i) {
        AddTestLogLine(s, IntText(i) + "  " + NumberText(s.Horizon.Az[i]) + "  " +
                              NumberText(s.Horizon.El[i]));
    }
    MakeAutoAlignPoints(s);
    // The first show draws the map as it sizes it; a window that was open
    // already is drawn again with the new list.
    const bool wasOpen =
        windows_.AutoAlign.IfLoaded() && windows_.AutoAlign.IfLoaded()->isVisible();
    windows_.AutoAlign.Show();
    if (wasOpen) windows_.AutoAlign.Get().DrawAutoAlignGraph();
}

namespace {

constexpr double kPi = 3.141592654;
constexpr double kArcsecPerRadian = 206264.80625;

// Seconds of a steady clock, with fractions, for the time a check took.
double ClockSeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

void TestMenu::CommonStart(double& LST, double& JD) {
    windows_.Test.Show();
    cAztrue& server = windows_.TestServer;
    server.LoadDateFromComputer();
    server.LoadTimeFromComputer();
    server.SetTimeZone(-8.0);
    server.SetDST(true);
    LST = server.GetLSTRad();
    JD = server.GetJulianDay();
}

void TestMenu::Time() {
    double LST = 0;
    double JD = 0;
    CommonStart(LST, JD);
    cAztrue& server = windows_.TestServer;
    const ModelState& s = windows_.Chain().Model();
    const auto add = [&s](const std::string& Line) { AddTestLogLine(s, Line); };
    add("");
    add("LST = " + s.Str.RARadToStr(LST, ":"));
    add("UT = " + s.Str.RARadToStr(server.GetUTRad(), "a"));
    add("JD = " + RoundedText(JD, 5));
    const DateTimeRec R = JDToDate(JD, &s);
    add("JD = " + RoundedText(JD, 8) + "   UTCalc = " + DateTimeStr(R));
    add("ThetaCountsPerRev, ThetaOffset = " + NumberText(server.ThetaCountsPerRev()) + "  " +
        NumberText(server.ThetaEncOffset()));
    add("PhiCountsPerRev, PhiOffset = " + NumberText(server.PhiCountsPerRev()) + "  " +
        NumberText(server.PhiEncOffset()));
    // 30 degrees east of the meridian and 30 degrees north.
    double RA = LST + 94.24777962 / 180;
    double Dec = 94.24777962 / 180;
    add("RARad = " + RoundedText(RA, 6));
    add("DecRad = " + RoundedText(Dec, 6));
    double ThetaEnc = 0;
    double PhiEnc = 0;
    server.CelestialToEncoder(LST, JD, RA, Dec, 1, ThetaEnc, PhiEnc);
    add("ThetaEnc = " + RoundedText(ThetaEnc * 180 / kPi, 6) + " degrees");
    add("PhiEnc = " + RoundedText(PhiEnc * 180 / kPi, 6) + " degrees");
    server.EncoderToCelestial(LST, JD, ThetaEnc, PhiEnc, RA, Dec);
    add("RARad = " + RoundedText(RA, 6));
    add("DecRad = " + RoundedText(Dec, 6));
    double ThetaEncRate = 0;
    double PhiEncRate = 0;
    server.GetTrackingRates(LST, JD, RA, Dec, 1, ThetaEncRate, PhiEncRate);
    add("ThetaEncRate = " + RoundedText(ThetaEncRate * kArcsecPerRadian, 3));
    add("PhiEncRate = " + RoundedText(PhiEncRate * kArcsecPerRadian, 3));
    add("");
    // A fixed moment, both ways to sidereal time.
    DateTimeRec t;
    t.Year = 2000;
    t.Month = 1;
    t.Day = 10;
    t.Hour = 0;
    t.Minute = 30;
    t.Second = 0;
    t.TimeZone = -5.0;
    t.DST = false;
    const double LSTRad0 = LTToLSTRad(s, t);
    const double JD0 = LTToJD(t);
    const double LSTRad1 = JDtoLSTRad(s, JD0);
    add("JD0 = " + RoundedText(JD0, 6) + "  LSTRad0 = " + RoundedText(LSTRad0, 8) +
        "  LSTRad1 = " + RoundedText(LSTRad1, 8));
}

void TestMenu::Rotation() {
    double LST = 0;
    double JD = 0;
    CommonStart(LST, JD);
    cAztrue& server = windows_.TestServer;
    const ModelState& s = windows_.Chain().Model();
    const auto add = [&s](const std::string& Line) { AddTestLogLine(s, Line); };
    add("");
    add("LST = " + s.Str.RARadToStr(LST, "a"));
    add("UT = " + s.Str.RARadToStr(server.GetUTRad(), "a"));
    add("JD = " + RoundedText(JD, 5));
    add("");
    // A star on the meridian and on the celestial equator.
    double RA = LST;
    double Dec = 0;
    add("RARad = " + RoundedText(RA, 6) + "  DecRad = " + RoundedText(Dec, 6));
    double ThetaEnc = 0;
    double PhiEnc = 0;
    server.CelestialToEncoder(LST, JD, RA, Dec, 1, ThetaEnc, PhiEnc);
    add("ThetaEnc = " + RoundedText(ThetaEnc * 180 / kPi, 6) + " degrees" +
        "  PhiEnc = " + RoundedText(PhiEnc * 180 / kPi, 6) + " degrees");
    server.EncoderToCelestial(LST, JD, ThetaEnc, PhiEnc, RA, Dec);
    add("RARad = " + RoundedText(RA, 6) + "  DecRad = " + RoundedText(Dec, 6));
    double ThetaEncRate = 0;
    double PhiEncRate = 0;
    server.GetTrackingRates(LST, JD, RA, Dec, 1, ThetaEncRate, PhiEncRate);
    add("ThetaEncRate = " + RoundedText(ThetaEncRate * kArcsecPerRadian, 3) +
        "  PhiEncRate = " + RoundedText(PhiEncRate * kArcsecPerRadian, 3));
    const double start = ClockSeconds();
    add("");
    const double angle = server.GetFieldAngle(LST, JD, RA, Dec, 1);
    const double rate = server.GetFieldAngleRate(LST, JD, RA, Dec, 1);
    add("FieldAngle = " + RoundedText(angle * 180 / kPi, 4) + " degrees");
    add("FieldAngleRate = " + RoundedText(rate * 180 * 3600 / kPi, 6) + " AS/sec");
    const double end = ClockSeconds();
    add("");
    add("Computation Time = " + RoundedText((end - start) * 1000, 4) + " mS");
}

void TestMenu::VirtualScope() {
    windows_.VirtualScope.Show();
}

void TestMenu::Trace() {
    windows_.Test.Show();
}
