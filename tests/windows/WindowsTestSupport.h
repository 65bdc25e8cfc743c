// Shared helpers of the window tests: a fresh model, pixel channels, angle
// units, and a driver for modal boxes and choosers.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "model/Constants.h"
#include "model/ModelState.h"
#include "windows/Picture.h"

inline std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// Radians from arcminutes and arcseconds with the program's pi.
inline double Arcmin(double a) {
    return a / 60 * kHalfTurn / 180;
}
inline double Arcsec(double a) {
    return a / 3600 * kHalfTurn / 180;
}

struct Rgb {
    int r, g, b;
    bool operator==(const Rgb&) const = default;
};

inline Rgb PixelAt(const cPicture& pic, int x, int y) {
    const long c = pic.Point(x, y);
    return {static_cast<int>(c % 256), static_cast<int>((c / 256) % 256),
            static_cast<int>(c / 65536)};
}

inline QByteArray RgbText(const Rgb& c) {
    return QByteArray::number(c.r) + "," + QByteArray::number(c.g) + "," + QByteArray::number(c.b);
}

// Runs Action on the first modal widget of type T that comes up within
// TimeoutMs, from inside that widget's own event loop. Returns at once.
template <class T>
void WhenModal(std::function<void(T*)> Action, int TimeoutMs = 5000) {
    auto* timer = new QTimer;
    auto* clock = new QElapsedTimer;
    clock->start();
    QObject::connect(timer, &QTimer::timeout, [timer, clock, Action, TimeoutMs] {
        T* w = qobject_cast<T*>(QApplication::activeModalWidget());
        if (w == nullptr && clock->elapsed() < TimeoutMs) return;
        timer->stop();
        timer->deleteLater();
        delete clock;
        if (w != nullptr) Action(w);
    });
    timer->start(10);
}

// Answers the next file chooser with Name, as if typed and confirmed. The
// answer is repeated at each tick until the chooser has closed, in case it
// was not ready for it. Title, if given, receives the chooser's title.
inline void AcceptFileDialog(const QString& Name, QString* Title = nullptr, int TimeoutMs = 5000) {
    auto* timer = new QTimer;
    auto* clock = new QElapsedTimer;
    auto* handled = new QPointer<QFileDialog>;
    auto* started = new bool(false);
    clock->start();
    QObject::connect(timer, &QTimer::timeout, [=] {
        QFileDialog* d = *handled;
        if (!*started) d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        const bool open = d != nullptr && d->isVisible();
        if (!open && (*started || clock->elapsed() >= TimeoutMs)) {
            timer->stop();
            timer->deleteLater();
            delete clock;
            delete handled;
            delete started;
            return;
        }
        if (!open) return;
        if (!*started && Title) *Title = d->windowTitle();
        *started = true;
        *handled = d;
        // Typed into the name box: selectFile leaves a focused box alone.
        if (auto* edit = d->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            edit->setText(Name);
        } else {
            d->selectFile(Name);
        }
        // Through QDialog, where accept is public; the chooser's own runs.
        static_cast<QDialog*>(d)->accept();
    });
    timer->start(10);
}
