#include "windows/fAutoAlign.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>
#include <limits>

#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "files/NumericPrefix.h"
#include "model/Constants.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"
#include "windows/FileDialog.h"
#include "windows/PictureBox.h"

namespace {

// A text box read as a whole number: its leading number rounded to the
// nearest whole, ties to even; 0 when it does not start with a number, and
// kept within 32 bits.
int32_t TextAsInteger(const QString& Text) {
    const double v = RoundHalfEven(NumericPrefixValue(Text.toStdString()));
    constexpr double lo = std::numeric_limits<int32_t>::min();
    constexpr double hi = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(v, lo, hi));
}

QString DegreesText(double Radians) {
    return QString::fromStdString(RoundedText(Radians * 180 / kHalfTurn, 2)) + QChar(0x00B0);
}

}  // namespace

fAutoAlign::fAutoAlign(ModelState& s, QWidget* parent) : QWidget(parent, Qt::Window), s_(s) {
    setWindowTitle(QStringLiteral("Auto Alignment Points"));
    // A smaller font, so that the two rows of controls fit the width of the
    // design above the map.
    QFont small = font();
    small.setPointSize(8);
    setFont(small);
    auto place = [](QWidget* w, const char* Name, int x, int y, int width, int height) {
        if (Name) w->setObjectName(QString::fromLatin1(Name));
        w->setGeometry(x, y, width, height);
    };
    auto label = [this, &place](const char* Text, int x, int width) {
        place(new QLabel(QString::fromLatin1(Text), this), nullptr, x, 27, width, 20);
    };
    // Row 1: the horizon buttons and the place under the mouse.
    cmdHorizon = new QPushButton(QStringLiteral("Get Horizon"), this);
    place(cmdHorizon, "cmdHorizon", 2, 2, 88, 22);
    cmdMakeHorizon = new QPushButton(QStringLiteral("Make Horizon"), this);
    place(cmdMakeHorizon, "cmdMakeHorizon", 92, 2, 94, 22);
    cmdSaveHorizon = new QPushButton(QStringLiteral("Save Horizon"), this);
    place(cmdSaveHorizon, "cmdSaveHorizon", 188, 2, 94, 22);
    place(new QLabel(QStringLiteral("Az"), this), nullptr, 292, 3, 18, 20);
    lblAz = new QLabel(QStringLiteral("359.99"), this);
    place(lblAz, "lblAz", 310, 3, 56, 20);
    place(new QLabel(QStringLiteral("El"), this), nullptr, 370, 3, 16, 20);
    lblEl = new QLabel(QStringLiteral("87.65"), this);
    place(lblEl, "lblEl", 386, 3, 54, 20);

    // Row 2: what "Make Points" reads, and the button.
    label("Points", 2, 38);
    txtNumAA = new QLineEdit(QStringLiteral("20"), this);
    place(txtNumAA, "txtNumAA", 40, 26, 30, 22);
    label("Mount", 73, 38);
    txtType = new QLineEdit(QStringLiteral("0"), this);
    place(txtType, "txtType", 111, 26, 20, 22);
    Frame1 = new QGroupBox(this);
    auto* orders = new QHBoxLayout(Frame1);
    orders->setContentsMargins(3, 0, 0, 0);
    orders->setSpacing(0);
    const char* const captions[] = {"NE", "NW", "SE", "SW", "Rnd"};
    for (int k = 0; k < 5; ++k) {
        optOrder[k] = new QRadioButton(QString::fromLatin1(captions[k]), Frame1);
        optOrder[k]->setObjectName(QStringLiteral("optOrder_%1").arg(k));
        orders->addWidget(optOrder[k]);
    }
    optOrder[0]->setChecked(true);
    place(Frame1, "Frame1", 134, 25, Frame1->sizeHint().width(), 24);
    cmdMake = new QPushButton(QStringLiteral("Make Points"), this);
    const int makeLeft = Frame1->geometry().right() + 3;
    place(cmdMake, "cmdMake", makeLeft, 26, std::max(81, kInnerWidth - 2 - makeLeft), 22);

    picGraph = new PictureBox(kGraphSize, this);
    place(picGraph, "picGraph", kGraphLeft, kGraphTop, kGraphSize, kGraphSize);
    picGraph->setMouseTracking(true);
    picGraph->OnMouseMove = [this](double X, double Y) { PicGraphMouseMove(X, Y); };

    // "Make Horizon" and "Save Horizon" have no reaction: nothing edits or
    // stores a skyline.
    connect(cmdHorizon, &QPushButton::clicked, this, [this] { GetHorizon(); });
    connect(cmdMake, &QPushButton::clicked, this, [this] { MakePoints(); });

    // The controls stay usable; the map takes whatever is left below them.
    GraphTop = picGraph->y();
    setMinimumSize(200, kGraphTop + 100);
    resize(kInnerWidth, kInnerHeight);
}

void fAutoAlign::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (isMinimized()) return;
    // One twip of the design's rule is 1/15 pixel: 15 twips is 1 pixel.
    const int W = width() - 1;
    const int H = height() - 1 - GraphTop;
    const int S = std::max(std::min(W, H), 2 * PictureBox::kBorder + 1);
    picGraph->move(1, GraphTop);
    picGraph->SetOuterSize(S, S);
    DrawAutoAlignGraph();
}

void fAutoAlign::DrawAutoAlignGraph() {
    Map.Draw(s_, picGraph->Picture());
    picGraph->update();
}

std::string fAutoAlign::GetHorizonFile() {
    try {
        FileDialogArgs args;
        args.Flags = kHideReadOnly;
        args.Filter = MakeFilter("", "Horizon Files (*.hrz)", "*.hrz") +
                      MakeFilter("", "All Files (*.*)", "*.*");
        args.FilterIndex = 1;
        args.DefaultExt = "hrz";
        args.Title = "Load Horizon File";
        args.Owner = this;
        args.OpenDialog = true;
        return ShowFileDialog(args);
    } catch (...) {
        return std::string();
    }
}

void fAutoAlign::GetHorizon() {
    // Whatever each step gives, the next runs: a cancelled chooser fails
    // the read, and the points are made again with the old skyline.
    const std::string name = GetHorizonFile();
    ReadHorizon(s_, name, s_.Horizon);
    MakeAutoAlignPoints(s_);
    DrawAutoAlignGraph();
}

void fAutoAlign::MakePoints() {
    s_.AutoAlignTarget = TextAsInteger(txtNumAA->text());
    // 0 alt-az, 1 fork equatorial, 2 German equatorial; a negative type
    // leaves the mount's axis as it is. No fit follows from this change.
    const int32_t T = TextAsInteger(txtType->text());
    if (T == 0) s_.IsAltAz = true;
    if (T > 0) s_.IsAltAz = false;
    s_.IsGEM = T != 1;
    for (int k = 0; k < 5; ++k) {
        if (optOrder[k]->isChecked()) s_.AutoAlignOrder = static_cast<int16_t>(k);
    }
    MakeAutoAlignPoints(s_);
    DrawAutoAlignGraph();
}

void fAutoAlign::PicGraphMouseMove(double X, double Y) {
    double Theta = 0;
    double Phi = 0;
    Map.ScreenToAngles(X, Y, Theta, Phi);
    lblEl->setText(DegreesText(kHalfTurn / 2 - Theta));
    lblAz->setText(DegreesText(Phi));
}
