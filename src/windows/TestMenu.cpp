#include "windows/TestMenu.h"

#include <QMenu>
#include <algorithm>
#include <filesystem>

#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "files/TestLogList.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "windows/fAutoAlign.h"
#include "windows/fTest.h"

namespace {

template <class W>
void ShowWindow(W& Window) {
    Window.show();
    Window.raise();
    Window.activateWindow();
}

}  // namespace

TestMenu::TestMenu(ModelState& s, QMenu& Menu) : QObject(&Menu), s_(s) {
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
    // A line for the list loads fTest, unseen, if it is not there.
    SetTestLogSink([self = QPointer<TestMenu>(this)](const std::string& Line) {
        if (self) self->Test().AddLine(Line);
    });
}

TestMenu::~TestMenu() {
    delete test_.data();
    delete autoAlign_.data();
}

fTest& TestMenu::Test() {
    if (!test_) {
        test_ = new fTest;
        test_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *test_;
}

fAutoAlign& TestMenu::AutoAlign() {
    if (!autoAlign_) {
        autoAlign_ = new fAutoAlign(s_);
        autoAlign_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *autoAlign_;
}

fTest* TestMenu::TestIfLoaded() const {
    return test_.data();
}

fAutoAlign* TestMenu::AutoAlignIfLoaded() const {
    return autoAlign_.data();
}

void TestMenu::CloseTest() {
    if (test_) test_->close();
}

void TestMenu::CalPoints() {
    ShowWindow(Test());
    const std::string file = HorizonFile.empty()
                                 ? (std::filesystem::path(s_.ProgramFolder) / "sample.hrz").string()
                                 : HorizonFile;
    // A failed read leaves the old skyline, and the points are made with it.
    ReadHorizon(s_, file, s_.Horizon);
    AddTestLogLine(s_, "Hrz:");
    const int n = std::clamp<int>(s_.Horizon.Num, 0, kHorizonTableSize);
    for (int i = 0; i < n; ++i) {
        AddTestLogLine(s_, IntText(i) + "  " + NumberText(s_.Horizon.Az[i]) + "  " +
                               NumberText(s_.Horizon.El[i]));
    }
    MakeAutoAlignPoints(s_);
    // The first show draws the map as it sizes it; a window that was open
    // already is drawn again with the new list.
    fAutoAlign& w = AutoAlign();
    const bool wasOpen = w.isVisible();
    ShowWindow(w);
    if (wasOpen) w.DrawAutoAlignGraph();
}
