#include "windows/TestMenu.h"

#include <QMenu>
#include <algorithm>
#include <filesystem>

#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "files/TestLogList.h"
#include "model/ModelState.h"
#include "server/RecalcChain.h"
#include "sky/NumberText.h"
#include "windows/WindowSet.h"

TestMenu::TestMenu(WindowSet& Windows, QMenu& Menu) : QObject(&Menu), windows_(Windows) {
    struct Entry {
        const char* Name;
        const char* Caption;
        void (TestMenu::*React)();  // null: the check does not exist yet
    };
    const Entry entries[] = {
        {"menu_TestTime", "Time", nullptr},
        {"menuCalPoints", "CalPoints", &TestMenu::CalPoints},
        {"menuTestRotation", "Rotation", nullptr},
        {"menuVirtualScope", "Virtual Scope", nullptr},
        {"menu_Trace", "Trace", nullptr},
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
