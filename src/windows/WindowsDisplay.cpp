#include "windows/WindowsDisplay.h"

#include <QApplication>
#include <QLabel>

#include "model/ModelState.h"
#include "server/RecalcChain.h"
#include "windows/fMain.h"

WindowsDisplay::WindowsDisplay(RecalcChain& Chain, std::function<void()> EndProcess)
    : chain_(Chain), endProcess_(std::move(EndProcess)) {}

WindowsDisplay::~WindowsDisplay() {
    delete main_.data();
}

fMain& WindowsDisplay::Main() {
    if (!main_) {
        main_ = new fMain(chain_);
        // Once closed, by hand or by a client, the window object goes.
        main_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *main_;
}

void WindowsDisplay::UpdateGraph() {
    Main().UpdateGraph();
}

void WindowsDisplay::ProcessPendingEvents() {
    QCoreApplication::processEvents();
}

void WindowsDisplay::ShowMain() {
    fMain& w = Main();
    w.show();
    w.raise();
}

void WindowsDisplay::KillWindows() {
    // Closing runs the window's unload, which closes the others.
    if (main_) main_->close();
}

void WindowsDisplay::DisposeAll() {
    // A main window that is loaded unloads, seen or not; then whatever
    // else is on the screen.
    if (main_) main_->close();
    QApplication::closeAllWindows();
    if (endProcess_) endProcess_();
}

void WindowsDisplay::FileNameChanged(const std::string& FullFileName) {
    fMain& w = Main();
    w.lblFileName->setText(QString::fromStdString(chain_.Model().Str.HasFileName(FullFileName)));
}
