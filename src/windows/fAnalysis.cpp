#include "windows/fAnalysis.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QResizeEvent>
#include <initializer_list>

#include "model/ModelState.h"
#include "server/RecalcChain.h"
#include "windows/Controls.h"
#include "windows/PictureBox.h"
#include "windows/StarDots.h"
#include "windows/WindowSet.h"

namespace {

// The strip of option groups above the plot: the window's height less the
// plot's at start.
constexpr int kGroupsHeight = fAnalysis::kInnerHeight - fAnalysis::kGraphHeight;

// The smallest window: room for the plot's margins and a little plot.
constexpr int kMinWidth = 160;
constexpr int kMinHeight = kGroupsHeight + 100;

QRadioButton* Option(const char* Caption, const char* Name, QGroupBox* Group) {
    auto* b = new QRadioButton(QString::fromLatin1(Caption), Group);
    b->setObjectName(QString::fromLatin1(Name));
    Group->layout()->addWidget(b);
    return b;
}

QGroupBox* OptionGroup(const char* Caption, QWidget* Parent, QHBoxLayout* Row) {
    QGroupBox* g = MakeFrame(QString::fromLatin1(Caption), Parent);
    auto* box = new QHBoxLayout(g);
    box->setContentsMargins(4, 1, 2, 2);
    box->setSpacing(2);
    Row->addWidget(g);
    return g;
}

}  // namespace

fAnalysis::fAnalysis(WindowSet& Windows)
    : QWidget(nullptr), windows_(Windows), s_(Windows.Chain().Model()) {
    setWindowTitle(QStringLiteral("Graphical Error Analysis"));
    // Tight option buttons: the three groups share the 525 pixels at start.
    setStyleSheet(FrameStyleSheet() + QStringLiteral("QRadioButton { spacing: 3px; }"));
    resize(kInnerWidth, kInnerHeight);
    setMinimumSize(kMinWidth, kMinHeight);

    // The groups keep their place whatever the size of the window.
    auto* strip = new QWidget(this);
    strip->setGeometry(0, 0, kInnerWidth, kGroupsHeight);
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(2, 0, 2, 2);
    row->setSpacing(3);
    QGroupBox* y = OptionGroup("Y-Axis", strip, row);
    optYTheta = Option("Theta", "optYTheta", y);
    optYPhi = Option("Phi", "optYPhi", y);
    QGroupBox* x = OptionGroup("X-Axis", strip, row);
    optTheta = Option("Theta", "optTheta", x);
    optPhi = Option("Phi", "optPhi", x);
    OptZ = Option("Zenith Distance", "OptZ", x);
    QGroupBox* scale = OptionGroup("Scale Using", strip, row);
    optAll = Option("All Points", "optAll", scale);
    optSel = Option("Selected Points", "optSel", scale);
    row->addStretch(1);
    for (QRadioButton* b : {optYTheta, optTheta, optAll}) b->setChecked(true);
    for (QRadioButton* b : {optYTheta, optYPhi, optTheta, optPhi, OptZ, optAll, optSel}) {
        connect(b, &QRadioButton::clicked, this, [this] { MakeGraph(); });
    }

    picGraph = new PictureBox(kGraphWidth, kGraphHeight, this);
    picGraph->setObjectName(QStringLiteral("picGraph"));
    picGraph->move(0, kGroupsHeight);
    picGraph->OnMouseDown = [this](double X, double Y) { PicGraphMouseDown(X, Y); };
}

void fAnalysis::FormLoad() {
    loadGraphWidth_ = picGraph->width();
    loadGraphHeight_ = picGraph->height();
    loadScaleWidth_ = width();
    loadScaleHeight_ = height();
    // The first resize draws; a window loaded unseen gets none until it is
    // shown, so the rule runs here once.
    ApplyResizeRule();
}

AnalysisOptions fAnalysis::Options() const {
    AnalysisOptions o;
    o.Y = optYPhi->isChecked() ? AnalysisY::PhiError : AnalysisY::ThetaError;
    o.X = optPhi->isChecked() ? AnalysisX::Phi
          : OptZ->isChecked() ? AnalysisX::ZenithDistance
                              : AnalysisX::Theta;
    o.ScaleAll = optAll->isChecked();
    return o;
}

void fAnalysis::MakeGraph() {
    Plot.MakeGraph(s_, picGraph->Picture(), Options());
    picGraph->update();
}

void fAnalysis::PicGraphMouseDown(double X, double Y) {
    const int i = DotUnderMouse(Plot.StarX, Plot.StarY, s_.NumCalPoints, X, Y);
    if (i == 0) return;
    CalPoint& p = s_.CalPoints[static_cast<size_t>(i)];
    p.Used = !p.Used;
    windows_.Chain().CalibrateAndDisplay();
}

void fAnalysis::resizeEvent(QResizeEvent* Event) {
    QWidget::resizeEvent(Event);
    // Minimised, the window has no size to follow (the rule could give a
    // negative one); the plot keeps the last.
    if (isMinimized()) return;
    ApplyResizeRule();
}

void fAnalysis::ApplyResizeRule() {
    const int w = width() - loadScaleWidth_ + loadGraphWidth_;
    const int h = height() - loadScaleHeight_ + loadGraphHeight_;
    // The minimum size keeps these positive; a platform that ignores it
    // leaves the plot as it was.
    if (w <= 2 * PictureBox::kBorder || h <= 2 * PictureBox::kBorder) return;
    picGraph->SetOuterSize(w, h);
    MakeGraph();
}
