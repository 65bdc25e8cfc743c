#include "windows/LazyWindow.h"

#include <QEvent>

CloseWatch::CloseWatch(QWidget& Window, std::function<bool()> OnClose)
    : QObject(&Window), onClose_(std::move(OnClose)) {
    Window.installEventFilter(this);
}

bool CloseWatch::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched != parent() || Event->type() != QEvent::Close || !onClose_ || onClose_())
        return false;
    Event->ignore();
    return true;
}
