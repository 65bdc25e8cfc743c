// The developers' Test menu of the main window. Its windows, fTest (whose
// list is the Test Log list), fAutoAlign and fVirtualScope, belong to the
// window set, and its checks call the window set's TestServer. The
// load of the main window switches the menu off; a development start
// switches it on.
//
// A new entry: its reaction as a member below, and its pointer in the table
// of entries in TestMenu.cpp, which keeps the menu's order (Time, CalPoints,
// Rotation, Virtual Scope, Trace) and leaves out an entry without one. A
// routine adds a line to the Test Log list with AddTestLogLine
// (files/TestLogList.h), which the window set sends to fTest.
#pragma once

#include <QObject>
#include <string>

class QAction;
class QMenu;
class WindowSet;

class TestMenu : public QObject {
    Q_OBJECT
  public:
    // Fills Menu with the entries, whose windows are those of Windows; the
    // menu owns this object.
    TestMenu(WindowSet& Windows, QMenu& Menu);

    // The horizon file of CalPoints; empty: sample.hrz in the program's folder.
    std::string HorizonFile;

    // menuCalPoints: shows fTest, reads the horizon file into Horizon and
    // lists it, makes the points and shows them in fAutoAlign.
    void CalPoints();
    // menu_TestTime: the clock fields, the way from sky to encoders and
    // back with the tracking rates, and the two ways to sidereal time.
    void Time();
    // menuTestRotation: a star on the meridian and the equator to encoders
    // and back, its rates, field angle and rate, and the time they took.
    void Rotation();
    // menuVirtualScope: shows fVirtualScope.
    void VirtualScope();
    // menu_Trace: shows fTest.
    void Trace();

    QAction* menuCalPoints = nullptr;

  private:
    // Shows fTest and sets TestServer's clock to the computer's time in
    // zone -8 with daylight saving; gives LST (radians) and JD.
    void CommonStart(double& LST, double& JD);

    WindowSet& windows_;
};
