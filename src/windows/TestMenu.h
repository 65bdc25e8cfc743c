// The developers' Test menu of the main window, with its two windows: fTest,
// whose list is the Test Log list, and fAutoAlign. The load of the main
// window switches the menu off; a development start switches it on.
//
// A new entry: its reaction as a member below, and its pointer in the table
// of entries in TestMenu.cpp, which keeps the menu's order (Time, CalPoints,
// Rotation, Virtual Scope, Trace) and leaves out an entry without one. A
// routine adds a line to the Test Log list with AddTestLogLine
// (files/TestLogList.h), which reaches fTest through this object.
#pragma once

#include <QObject>
#include <QPointer>
#include <string>

class QAction;
class QMenu;
class fAutoAlign;
class fTest;
struct ModelState;

class TestMenu : public QObject {
    Q_OBJECT
  public:
    // Fills Menu with the entries and plugs fTest's list in as the Test Log
    // list; the menu owns this object. A later Test menu takes the list over,
    // and the lines of one that has gone go nowhere.
    TestMenu(ModelState& s, QMenu& Menu);
    ~TestMenu() override;

    // The horizon file of CalPoints; empty: sample.hrz in the program's folder.
    std::string HorizonFile;

    // The windows, each built unseen at its first use. A closed one is
    // dropped, so the next use builds it afresh (fTest with an empty list).
    fTest& Test();
    fTest* TestIfLoaded() const;
    fAutoAlign& AutoAlign();
    fAutoAlign* AutoAlignIfLoaded() const;

    // The main window's unload closes fTest (never fAutoAlign).
    void CloseTest();

    // menuCalPoints: shows fTest, reads the horizon file into Horizon and
    // lists it, makes the points and shows them in fAutoAlign.
    void CalPoints();

    QAction* menuCalPoints = nullptr;

  private:
    ModelState& s_;
    QPointer<fTest> test_;
    QPointer<fAutoAlign> autoAlign_;
};
