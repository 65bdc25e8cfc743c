#include "windows/fAdvanced.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <tuple>

#include "model/ModelState.h"
#include "model/ScaleSearch.h"
#include "server/RecalcChain.h"
#include "sky/NumberText.h"
#include "windows/Controls.h"
#include "windows/SmallWindowFigures.h"
#include "windows/WindowSet.h"

namespace {

// The caption of cmdOptSF is the state of the search.
const QString kIdle = QStringLiteral("Start Optimization");
const QString kRunning = QStringLiteral("End Optimization");

QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

QGridLayout* FrameGrid(QGroupBox* Frame) {
    auto* grid = new QGridLayout(Frame);
    grid->setContentsMargins(4, 2, 4, 3);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(1);
    return grid;
}

// A button of one line; in the narrow clock rate frame the caption wraps.
QPushButton* Button(const QString& Caption, const QString& Name, QWidget* Parent,
                    bool Wrap = false) {
    QPushButton* b = Wrap ? new WrapButton(Caption, Parent) : new QPushButton(Caption, Parent);
    b->setObjectName(Name);
    if (!Wrap) b->setFixedHeight(20);
    return b;
}

}  // namespace

fAdvanced::fAdvanced(WindowSet& Windows)
    : QWidget(nullptr), windows_(Windows), s_(Windows.Chain().Model()) {
    setWindowTitle(QStringLiteral("Advanced Features"));
    Build();
    connect(cmdOptSF, &QPushButton::clicked, this, [this] { OptSFClicked(); });
    connect(cmdPhi, &QPushButton::clicked, this, [this] {
        s_.PhiSF = 1.0;
        windows_.Chain().CalibrateAndDisplay();
    });
    connect(cmdTheta, &QPushButton::clicked, this, [this] {
        s_.ThetaSF = 1.0;
        windows_.Chain().CalibrateAndDisplay();
    });
    // cmdOptRate and cmdResetRate have no reaction: no clock rate search
    // is built, and the file's clock rate error stays 0.
}

void fAdvanced::Build() {
    // Text smaller than the desktop's, as the window is small: both frame
    // captions and a factor with 7 decimals fit the fixed width.
    setStyleSheet(FrameStyleSheet() +
                  QStringLiteral("QWidget { font-size: %1pt; }").arg(font().pointSizeF() * 0.85));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(3, 1, 3, 3);
    row->setSpacing(3);
    row->addWidget(BuildScaleFrame(), 3);
    row->addWidget(BuildRateFrame(), 2);
    setFixedSize(kInnerWidth, kInnerHeight);
}

QWidget* fAdvanced::BuildScaleFrame() {
    auto* frame = MakeFrame(QStringLiteral("Scale Factor Optimization"), this);
    auto* grid = FrameGrid(frame);
    lblPhiSF = MakeLabel(QStringLiteral("1.0"), frame, QStringLiteral("lblPhiSF"));
    lblPhiP = MakeLabel(QStringLiteral("0%"), frame, QStringLiteral("lblPhiP"));
    cmdPhi = Button(QStringLiteral("Reset"), QStringLiteral("cmdPhi"), frame);
    lblThetaSF = MakeLabel(QStringLiteral("1.0"), frame, QStringLiteral("lblThetaSF"));
    lblThetaP = MakeLabel(QStringLiteral("0%"), frame, QStringLiteral("lblThetaP"));
    cmdTheta = Button(QStringLiteral("Reset"), QStringLiteral("cmdTheta"), frame);
    lblStats = MakeLabel(QStringLiteral("0/0"), frame, QStringLiteral("lblStats"));
    lblRMS = MakeLabel(QStringLiteral("1.0"), frame, QStringLiteral("lblRMS"));
    cmdOptSF = Button(kIdle, QStringLiteral("cmdOptSF"), frame);
    // Each factor over its deviation in per cent, with its Reset beside
    // both: a factor with 7 decimals has the width of the frame to itself.
    int r = 0;
    for (auto [caption, factor, percent, reset] :
         {std::tuple{"Phi", lblPhiSF, lblPhiP, cmdPhi},
          std::tuple{"Theta", lblThetaSF, lblThetaP, cmdTheta}}) {
        grid->addWidget(MakeLabel(QString::fromLatin1(caption), frame), r, 0);
        grid->addWidget(factor, r, 1);
        grid->addWidget(percent, r + 1, 1);
        grid->addWidget(reset, r, 2, 2, 1, Qt::AlignVCenter);
        r += 2;
    }
    grid->addWidget(MakeLabel(QStringLiteral("Stats"), frame), r, 0);
    grid->addWidget(lblStats, r++, 1, 1, 2);
    grid->addWidget(MakeLabel(QStringLiteral("RMS"), frame), r, 0);
    grid->addWidget(lblRMS, r++, 1, 1, 2);
    grid->addWidget(cmdOptSF, r, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return frame;
}

QWidget* fAdvanced::BuildRateFrame() {
    auto* frame = MakeFrame(QStringLiteral("Clock Rate Optimization"), this);
    auto* grid = FrameGrid(frame);
    lblRate = MakeLabel(QStringLiteral("0 ppm"), frame, QStringLiteral("lblRate"));
    lblStatsRate = MakeLabel(QStringLiteral("0/0"), frame, QStringLiteral("lblStatsRate"));
    lblRMSRate = MakeLabel(QStringLiteral("1.0"), frame, QStringLiteral("lblRMSRate"));
    cmdOptRate = Button(kIdle, QStringLiteral("cmdOptRate"), frame, true);
    cmdResetRate = Button(QStringLiteral("Reset"), QStringLiteral("cmdResetRate"), frame, true);
    grid->addWidget(MakeLabel(QStringLiteral("Rate Error"), frame), 0, 0);
    grid->addWidget(lblRate, 0, 1);
    grid->addWidget(MakeLabel(QStringLiteral("Stats"), frame), 1, 0);
    grid->addWidget(lblStatsRate, 1, 1);
    grid->addWidget(MakeLabel(QStringLiteral("RMS"), frame), 2, 0);
    grid->addWidget(lblRMSRate, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(cmdOptRate, 3);
    buttons->addWidget(cmdResetRate, 2);
    grid->addLayout(buttons, 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return frame;
}

void fAdvanced::FormLoad() {
    DisplayData();
}

void fAdvanced::DisplayData() {
    const ScaleFactorFigures f = ComputeScaleFactorFigures(s_);
    lblPhiSF->setText(Q(f.lblPhiSF));
    lblThetaSF->setText(Q(f.lblThetaSF));
    lblPhiP->setText(Q(f.lblPhiP));
    lblThetaP->setText(Q(f.lblThetaP));
    lblRMS->setText(Q(f.lblRMS));
    lblRMSRate->setText(Q(f.lblRMS));
}

void fAdvanced::ShowSearchFigures(double RMS) {
    lblPhiSF->setText(Q(RoundedText(s_.PhiSF, 7)));
    lblThetaSF->setText(Q(RoundedText(s_.ThetaSF, 7)));
    lblRMS->setText(Q(RMSText(RMS)));
}

void fAdvanced::OptSFClicked() {
    if (cmdOptSF->text() == kRunning) {
        // The run further up sees the caption at its next turn and ends.
        cmdOptSF->setText(kIdle);
        windows_.Chain().CalibrateAndDisplay();
        return;
    }
    RunSearch();
}

// The search runs inside the click and lets pending events run once per
// step, so the window repaints and a click, a queued call of a client or a
// close is served in the middle of it, a second run included. Whatever is
// served there, this object lives until the last run on the stack ends
// (closeEvent defers its deletion), and a closed window ends the run.
void fAdvanced::RunSearch() {
    ++runs_;
    cmdOptSF->setText(kRunning);
    ScaleSearchRun run = StartScaleSearch(s_);
    ShowSearchFigures(run.BestRMS);
    while (!closed_ && cmdOptSF->text() == kRunning) {
        if (ScaleSearchStep(s_, run, ProcessSearchRandom())) {
            ShowSearchFigures(run.BestRMS);
            // Every improvement fits once more and redraws every window.
            windows_.Chain().CalibrateAndDisplay();
        } else if (run.Exhausted()) {
            cmdOptSF->setText(kIdle);
        }
        lblStats->setText(Q(NumberText(run.Successes) + "/" + NumberText(run.Trials)));
        QCoreApplication::processEvents();
    }
    // The model and the windows follow the kept factors again; a window
    // closed meanwhile is built afresh, unseen, by this refresh as by any.
    // The run still counts here, as the refresh lets events run too.
    windows_.Chain().CalibrateAndDisplay();
    if (--runs_ == 0 && closed_) deleteLater();
}

void fAdvanced::closeEvent(QCloseEvent* Event) {
    // A close served inside a run: the window goes from the screen and from
    // the set at once, but the object stays until the run has returned.
    if (runs_ > 0) {
        closed_ = true;
        setAttribute(Qt::WA_DeleteOnClose, false);
    }
    Event->accept();
}
