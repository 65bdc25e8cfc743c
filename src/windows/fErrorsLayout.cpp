// The controls of the Model Parameters window and where they stand. The
// tables below say which flag and which two terms each row of the two
// correction frames holds; the numbers agree with the term captions of the
// model (a term's frame, row and column).
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <vector>

#include "windows/Controls.h"
#include "windows/fErrors.h"

namespace {

// One row of a correction frame: the check box of Flag with its caption,
// and the two terms it enables, under the left and the right header.
struct CorrectionRow {
    int Flag;
    const char* Caption;
    int Left;
    int Right;
};

struct CorrectionBlock {
    const char* LeftHeader;
    const char* RightHeader;
    std::vector<CorrectionRow> Rows;
};

const std::vector<CorrectionBlock> kThetaBlocks = {
    {"Sin(N*Theta)",
     "Cos(N*Theta)",
     {{3, " N=1", 7, 8},
      {9, " N=2", 19, 20},
      {13, " N=3", 27, 28},
      {21, " N=4", 43, 44},
      {22, " N=5", 45, 46}}},
    {"Sin(N*Phi)",
     "Cos(N*Phi)",
     {{5, " N=1", 11, 12},
      {11, " N=2", 23, 24},
      {15, " N=3", 31, 32},
      {16, " N=4", 33, 34},
      {17, " N=5", 35, 36},
      {18, " N=6", 37, 38}}},
    {"Sin(Theta)", "Cos(Theta)", {{6, "Cos(Phi)", 13, 14}, {8, "Sin(Phi)", 17, 18}}},
};

const std::vector<CorrectionBlock> kPhiBlocks = {
    {"Sin(N*Phi)",
     "Cos(N*Phi)",
     {{4, " N=1", 9, 10},
      {10, " N=2", 21, 22},
      {14, " N=3", 29, 30},
      {19, " N=4", 39, 40},
      {20, " N=5", 41, 42}}},
    {"Sin(Theta)", "Cos(Theta)", {{7, "Cos(Phi)", 15, 16}, {12, "Sin(Phi)", 25, 26}}},
};

// Height of a table row and widths of its cells, in pixels. A value cell
// holds the longest text of ErrStr that a sane fit gives ("-99.99" with
// the degree sign); a longer one is cut rather than pushing the fixed window
// apart.
constexpr int kRowHeight = 16;
constexpr int kBracketWidth = 25;
constexpr int kValueWidth = 46;

QGridLayout* TableGrid(QWidget* Frame) {
    auto* grid = new QGridLayout(Frame);
    grid->setContentsMargins(3, 1, 2, 3);
    grid->setHorizontalSpacing(2);
    grid->setVerticalSpacing(0);
    return grid;
}

QLabel* Bracket(int Term, QWidget* Parent) {
    auto* l = MakeLabel(QStringLiteral("(%1)").arg(Term), Parent);
    l->setFixedWidth(kBracketWidth);
    return l;
}

QLabel* Value(QWidget* Parent, const QString& Name) {
    auto* l = MakeLabel(QString(), Parent, Name);
    l->setFixedSize(kValueWidth, kRowHeight);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return l;
}

}  // namespace

void fErrors::Build() {
    setStyleSheet(FrameStyleSheet());
    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(2, 1, 2, 3);
    top->setSpacing(3);
    top->addWidget(BuildTopRow());
    auto* middle = new QHBoxLayout;
    middle->setSpacing(3);
    middle->addWidget(BuildCorrections(true), 0, Qt::AlignTop);
    auto* right = new QVBoxLayout;
    right->setSpacing(3);
    right->addWidget(BuildCorrections(false));
    right->addWidget(BuildFigures());
    right->addStretch(1);
    middle->addLayout(right, 1);
    top->addLayout(middle, 1);
    top->addWidget(BuildButtons());
    setFixedSize(kInnerWidth, kInnerHeight);
}

// Encoder offsets, axis misalignment and the two non-orthogonality terms.
QWidget* fErrors::BuildTopRow() {
    auto* row = new QWidget(this);
    auto* box = new QHBoxLayout(row);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(3);

    auto* offsets = MakeFrame(QStringLiteral("Encoder Offsets"), row);
    auto* g1 = TableGrid(offsets);
    lblPhi0 = Value(offsets, QStringLiteral("lblPhi0"));
    lblTheta0 = Value(offsets, QStringLiteral("lblTheta0"));
    g1->addWidget(Bracket(1, offsets), 0, 0);
    g1->addWidget(MakeLabel(QStringLiteral("Phi"), offsets), 0, 1);
    g1->addWidget(lblPhi0, 0, 2);
    g1->addWidget(Bracket(2, offsets), 1, 0);
    g1->addWidget(MakeLabel(QStringLiteral("Theta"), offsets), 1, 1);
    g1->addWidget(lblTheta0, 1, 2);
    box->addWidget(offsets);

    auto* axis = MakeFrame(QStringLiteral("Axis Misalignment"), row);
    auto* g2 = TableGrid(axis);
    lblNorthDir = MakeLabel(QStringLiteral("North"), axis, QStringLiteral("lblNorthDir"));
    lblWestDir = MakeLabel(QStringLiteral("West"), axis, QStringLiteral("lblWestDir"));
    lblErr[3] = Value(axis, IndexedName("lblErr", 3));
    lblErr[4] = Value(axis, IndexedName("lblErr", 4));
    g2->addWidget(Bracket(3, axis), 0, 0);
    g2->addWidget(lblNorthDir, 0, 1);
    g2->addWidget(lblErr[3], 0, 2);
    g2->addWidget(Bracket(4, axis), 1, 0);
    g2->addWidget(lblWestDir, 1, 1);
    g2->addWidget(lblErr[4], 1, 2);
    box->addWidget(axis);

    auto* ortho = MakeFrame(QStringLiteral("Axis Non-Orthogonality"), row);
    auto* g3 = TableGrid(ortho);
    const char* captions[] = {"Cone", "Hub"};
    for (int flag = 1; flag <= 2; ++flag) {
        const int term = flag + 4;
        chkEnable[flag] = new QCheckBox(QString::fromLatin1(captions[flag - 1]), ortho);
        lblErr[term] = Value(ortho, IndexedName("lblErr", term));
        g3->addWidget(chkEnable[flag], flag - 1, 0);
        g3->addWidget(Bracket(term, ortho), flag - 1, 1);
        g3->addWidget(lblErr[term], flag - 1, 2);
    }
    box->addWidget(ortho);
    return row;
}

// A frame of blocks: each block a header row, then one row per flag with
// its check box and the bracket and value of its two terms.
QWidget* fErrors::BuildCorrections(bool Theta) {
    auto* frame = MakeFrame(
        Theta ? QStringLiteral("Theta Corrections") : QStringLiteral("Phi Corrections"), this);
    auto* grid = TableGrid(frame);
    int r = 0;
    for (const CorrectionBlock& block : Theta ? kThetaBlocks : kPhiBlocks) {
        grid->addWidget(MakeLabel(QString::fromLatin1(block.LeftHeader), frame), r, 1, 1, 2,
                        Qt::AlignRight);
        grid->addWidget(MakeLabel(QString::fromLatin1(block.RightHeader), frame), r, 3, 1, 2,
                        Qt::AlignRight);
        ++r;
        for (const CorrectionRow& row : block.Rows) {
            chkEnable[row.Flag] = new QCheckBox(QString::fromLatin1(row.Caption), frame);
            grid->addWidget(chkEnable[row.Flag], r, 0);
            int column = 1;
            for (int term : {row.Left, row.Right}) {
                lblErr[term] = Value(frame, IndexedName("lblErr", term));
                grid->addWidget(Bracket(term, frame), r, column);
                grid->addWidget(lblErr[term], r, column + 1);
                column += 2;
            }
            ++r;
        }
    }
    return frame;
}

// Pointing error, sensitivity, its limit and the refraction switch.
QWidget* fErrors::BuildFigures() {
    auto* panel = new QWidget(this);
    auto* box = new QVBoxLayout(panel);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(3);

    auto* err = MakeFrame(QStringLiteral("Pointing Error"), panel);
    auto* g = TableGrid(err);
    g->addWidget(MakeLabel(QStringLiteral("RMS"), err), 0, 1);
    g->addWidget(MakeLabel(QStringLiteral("Max"), err), 0, 2);
    g->addWidget(MakeLabel(QStringLiteral("All Points"), err), 1, 0);
    g->addWidget(MakeLabel(QStringLiteral("Selected Points"), err), 2, 0);
    lblRMSAll = Value(err, QStringLiteral("lblRMSAll"));
    lblMaxAll = Value(err, QStringLiteral("lblMaxAll"));
    lblRMSSelected = Value(err, QStringLiteral("lblRMSSelected"));
    lblMaxSelected = Value(err, QStringLiteral("lblMaxSelected"));
    g->addWidget(lblRMSAll, 1, 1);
    g->addWidget(lblMaxAll, 1, 2);
    g->addWidget(lblRMSSelected, 2, 1);
    g->addWidget(lblMaxSelected, 2, 2);
    box->addWidget(err);

    auto* sensitivity = new QHBoxLayout;
    sensitivity->setSpacing(6);
    auto* sen = MakeFrame(QString(), panel);
    auto* senBox = new QVBoxLayout(sen);
    senBox->setContentsMargins(4, 0, 4, 2);
    senBox->setSpacing(0);
    lblSen1 = MakeLabel(QStringLiteral("Model Sensitivity"), sen, QStringLiteral("lblSen1"));
    lblSensitivity = MakeLabel(QString(), sen, QStringLiteral("lblSensitivity"));
    senBox->addWidget(lblSen1, 0, Qt::AlignHCenter);
    senBox->addWidget(lblSensitivity, 0, Qt::AlignHCenter);
    sensitivity->addWidget(sen);
    auto* limit = new QVBoxLayout;
    limit->setSpacing(1);
    auto* limitCaption = MakeLabel(QStringLiteral("Maximum Sensitivity"), panel);
    limitCaption->setWordWrap(true);
    limit->addWidget(limitCaption);
    txtMaxSensitivity = new QLineEdit(QStringLiteral("N/A"), panel);
    txtMaxSensitivity->setObjectName(QStringLiteral("txtMaxSensitivity"));
    txtMaxSensitivity->setFixedWidth(64);
    limit->addWidget(txtMaxSensitivity);
    sensitivity->addLayout(limit, 1);
    box->addLayout(sensitivity);

    chkRefraction = new QCheckBox(QStringLiteral("Enable Refraction"), panel);
    chkRefraction->setObjectName(QStringLiteral("chkRefraction"));
    box->addWidget(chkRefraction);
    return panel;
}

// The four presets, left to right.
QWidget* fErrors::BuildButtons() {
    auto* row = new QWidget(this);
    auto* box = new QHBoxLayout(row);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(3);
    auto make = [row, box](const QString& Caption, const QString& Name) {
        auto* b = new WrapButton(Caption, row);
        b->setObjectName(Name);
        box->addWidget(b, 1);
        return b;
    };
    cmdGEM = make(QStringLiteral("Recommended for Equatorial"), QStringLiteral("cmdGEM"));
    cmdAltAz = make(QStringLiteral("Recommended for Alt-Az"), QStringLiteral("cmdAltAz"));
    cmdEnable = make(QStringLiteral("Enable All"), QStringLiteral("cmdEnable"));
    cmdDisable = make(QStringLiteral("Disable All"), QStringLiteral("cmdDisable"));
    return row;
}
