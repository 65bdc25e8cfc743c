// One window of the process that comes into being at its first use, as the
// forms of the classic desktop did: any use (a refresh of the chain, a menu
// entry, a button) builds it unseen, and from then on it is refreshed
// whether it is on the screen or not. Closing it drops the object, so the
// next use builds a fresh one, with fresh view state.
//
// The object is registered in its slot before its load routine runs: a load
// that lets pending events run (a queued D-Bus call, a click) can meet a
// request for the same window, and that request must get this object, never
// a second one. A close that such an event asks for waits for the end of
// the load, and a show asked for after it cancels it: the requests take
// effect in the order they came, on the one object.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

// Tells a slot at the moment its window is asked to close. OnClose gives
// false to hold the close back (the window stays); otherwise the windows of
// the process never refuse a close, so the close event is the end of the
// object.
class CloseWatch : public QObject {
  public:
    CloseWatch(QWidget& Window, std::function<bool()> OnClose);
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    std::function<bool()> onClose_;
};

template <class W>
class LazyWindow {
  public:
    // Make builds the window object with its controls, unseen, and does not
    // load it; W::FormLoad, where W has one, is the load routine.
    explicit LazyWindow(std::function<W*()> Make) : make_(std::move(Make)) {}
    LazyWindow(const LazyWindow&) = delete;
    LazyWindow& operator=(const LazyWindow&) = delete;

    ~LazyWindow() {
        delete watch_.data();
        if (owned_) delete window_.data();
        delete closing_.data();
    }

    // The window, built and loaded unseen if there is none.
    W& Get() {
        while (!window_) {
            QPointer<W> built = make_();
            Hold(*built, true);
            loading_ = true;
            closeAsked_ = false;
            if constexpr (requires { built->FormLoad(); }) built->FormLoad();
            loading_ = false;
            if (!built) continue;
            // Asked to close by an event that its own load let run: it
            // closes now, and the caller still gets the object it asked
            // for, which goes with the next pass of the event loop.
            if (closeAsked_) built->close();
            return *built;
        }
        return *window_;
    }

    // The window if it exists, else null.
    W* IfLoaded() const { return window_.data(); }

    // Shows the window, not modal; one that is open only comes forward.
    // One closed by a request that its load let run stays closed.
    void Show() {
        W& w = Get();
        if (&w != window_) return;
        closeAsked_ = false;
        w.show();
        w.raise();
        w.activateWindow();
    }

    // Closes the window if it exists. One that does not exist stays so:
    // building it only to drop it would change nothing on the screen.
    void Close() {
        if (window_) window_->close();
    }

    // Takes a window built elsewhere, whose owner keeps it (the stand-alone
    // main window over a model of its own): the slot hands it out and drops
    // it when it closes, but never deletes it.
    void Adopt(W& Window) { Hold(Window, false); }

  private:
    void Hold(W& Window, bool Owned) {
        delete watch_.data();
        window_ = &Window;
        owned_ = Owned;
        if (Owned) Window.setAttribute(Qt::WA_DeleteOnClose);
        watch_ = new CloseWatch(Window, [this, &Window] {
            if (window_ != &Window) return true;
            if (loading_) {
                closeAsked_ = true;
                Window.hide();
                return false;
            }
            // A window that the slot owns is deleted by the event loop
            // after its close; until then the slot still answers for it.
            if (owned_) closing_ = window_;
            window_ = nullptr;
            return true;
        });
    }

    std::function<W*()> make_;
    QPointer<W> window_;
    QPointer<W> closing_;
    QPointer<CloseWatch> watch_;
    bool owned_ = false;
    bool loading_ = false;     // the window's load routine is running
    bool closeAsked_ = false;  // a close came during the load
};
