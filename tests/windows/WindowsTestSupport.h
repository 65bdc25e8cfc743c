// Shared fixtures of the window tests: models and the process windows over
// them, pixel and angle helpers, drivers for modal boxes and file choosers.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>
#include <functional>
#include <memory>

#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"
#include "server/RecalcChain.h"
#include "windows/PictureBox.h"
#include "windows/WindowsDisplay.h"

const QString kSample = QStringLiteral(QT_TESTCASE_SOURCEDIR "/../data/sample.AZT");

inline std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// Radians from degrees, arcminutes and arcseconds with the program's pi.
inline const auto Deg = [](double a) { return a * kHalfTurn / 180; };
inline const auto Arcmin = [](double a) { return Deg(a / 60); };
inline const auto Arcsec = [](double a) { return Deg(a / 3600); };

// Fails with wanted, got and the difference when Got is farther than Tol.
#define CHECK_NEAR(Got, Want, Tol)                                                           \
    QVERIFY2(std::fabs((Got) - (Want)) <= (Tol),                                             \
             qPrintable(QString::asprintf(#Got ": wanted %.12g, got %.12g, difference %.3g", \
                                          double(Want), double(Got), (Got) - (Want))))

struct Rgb {
    int r, g, b;
    bool operator==(const Rgb&) const = default;
};
inline char* toString(const Rgb& c) {
    return qstrdup(qPrintable(QStringLiteral("%1,%2,%3").arg(c.r).arg(c.g).arg(c.b)));
}
inline Rgb PixelAt(const cPicture& pic, int x, int y) {
    const long c = pic.Point(x, y);
    return {int(c % 256), int((c / 256) % 256), int(c / 65536)};
}
// The pixels of Pic that differ from those wanted, as "x,y: wanted .., got ..".
inline QString WrongPixels(const cPicture& Pic,
                           std::initializer_list<std::pair<QPoint, Rgb>> Wants) {
    QString wrong;
    for (const auto& [at, w] : Wants) {
        const Rgb g = PixelAt(Pic, at.x(), at.y());
        if (!(g == w))
            wrong += QString::asprintf("%d,%d: wanted %d,%d,%d, got %d,%d,%d; ", at.x(), at.y(),
                                       w.r, w.g, w.b, g.r, g.g, g.b);
    }
    return wrong;
}

// The windows over a model of the test's own as the process has them, with a
// count of the chain's complete runs (the last refresh of each); while Still,
// the chain lets no queued events run.
class CountingWindows : public WindowsDisplay {
  public:
    using WindowsDisplay::WindowsDisplay;
    void DisplayData() override { ++Fits, WindowsDisplay::DisplayData(); }
    void ProcessPendingEvents() override {
        if (!Still) WindowsDisplay::ProcessPendingEvents();
    }
    int Fits = 0;
    bool Still = false;
};
struct ProcessWindows {
    explicit ProcessWindows(ModelState& s) : chain(s, none), display(chain, {}) {
        chain.SetDisplay(display);
        chain.SetDisplayEnabled(true);
    }
    ~ProcessWindows() { chain.SetDisplay(none); }
    WindowSet& Windows() { return display.Windows(); }
    NoDisplay none;
    RecalcChain chain;
    CountingWindows display;
};

// A client's model with Num points of an alt-az mount with a cone error of
// 8e-4 rad and 3" of noise, all terms enabled, dated "d1".."dNum".
inline std::unique_ptr<ModelState> ClientModel(int Num) {
    auto s = FreshModel();
    s->ServerStarted = true;
    s->MaxSensitivity = 1e15;
    EnableAll(*s);
    SyntheticMount m{.Num = Num, .NoiseRMS = Arcsec(3)};
    m.TermCoef[5] = 8e-4;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    for (int i = 1; i <= Num; ++i)
        s->CalPoints[i].DateStr = QStringLiteral("d%1").arg(i).toStdString();
    return s;
}

// Runs Action on the first modal widget of type T that comes up within
// TimeoutMs, from inside that widget's own event loop. Returns at once.
template <class T>
void WhenModal(std::function<void(T*)> Action, int TimeoutMs = 5000) {
    auto* timer = new QTimer;
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    QObject::connect(timer, &QTimer::timeout, [timer, clock, Action, TimeoutMs] {
        T* w = qobject_cast<T*>(QApplication::activeModalWidget());
        if (w == nullptr && clock->elapsed() < TimeoutMs) return;
        timer->deleteLater();
        timer->stop();
        if (w != nullptr) Action(w);
    });
    timer->start(10);
}

// Answers the next file chooser with Name, typed into its name box (which
// selectFile would leave alone) and confirmed.
inline void AcceptFileDialog(const QString& Name) {
    WhenModal<QFileDialog>([Name](QFileDialog* d) {
        d->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(Name);
        static_cast<QDialog*>(d)->accept();  // the chooser's own accept runs
    });
}
