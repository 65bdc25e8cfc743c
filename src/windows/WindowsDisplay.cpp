#include "windows/WindowsDisplay.h"

#include <QApplication>
#include <QLabel>

#include "model/ModelState.h"
#include "server/RecalcChain.h"

WindowsDisplay::WindowsDisplay(RecalcChain& Chain, std::function<void()> EndProcess)
    : chain_(Chain), endProcess_(std::move(EndProcess)), windows_(Chain) {}

WindowsDisplay::~WindowsDisplay() = default;

void WindowsDisplay::DisplayCalPoints() {
    windows_.CalPoints.Get().DisplayCalPoints();
}

void WindowsDisplay::UpdateGraph() {
    Main().UpdateGraph();
}

void WindowsDisplay::DisplayData() {
    windows_.Advanced.Get().DisplayData();
}

void WindowsDisplay::MakeGraph() {
    windows_.Analysis.Get().MakeGraph();
}

void WindowsDisplay::ProcessPendingEvents() {
    QCoreApplication::processEvents();
}

void WindowsDisplay::ShowMain() {
    windows_.Main.Show();
}

void WindowsDisplay::KillWindows() {
    windows_.KillWindows();
}

void WindowsDisplay::DisposeAll() {
    // The windows of the set, seen or not, in their order; then whatever
    // else is on the screen.
    windows_.CloseAll();
    QApplication::closeAllWindows();
    if (endProcess_) endProcess_();
}

void WindowsDisplay::FileNameChanged(const std::string& FullFileName) {
    fMain& w = Main();
    w.lblFileName->setText(QString::fromStdString(chain_.Model().Str.HasFileName(FullFileName)));
}

void WindowsDisplay::EnableToChk() {
    windows_.Errors.Get().EnableToChk();
}
