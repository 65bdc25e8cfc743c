#include "windows/fCalPoints.h"

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "model/ModelState.h"
#include "model/Residuals.h"
#include "server/RecalcChain.h"
#include "windows/Controls.h"
#include "windows/WindowSet.h"

namespace {

// Buttons stand this far above the bottom of the window at start, and the
// table's frame leaves this much room below it for them.
constexpr int kButtonRoom = 35;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 23;

void SetBackColor(QWidget* w, long Color) {
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, ToQColor(Color));
    pal.setColor(QPalette::Base, ToQColor(Color));
    w->setPalette(pal);
    w->setAutoFillBackground(true);
}

}  // namespace

CalPointsPicture::CalPointsPicture(QWidget* Parent)
    : QWidget(Parent), picture_(kTableWidth, RowTop(0) + 10) {}

void CalPointsPicture::FitToPicture() {
    setFixedSize(picture_.ScaleWidth(), picture_.ScaleHeight());
}

void CalPointsPicture::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(0, 0, picture_.Image());
}

void CalPointsPicture::mousePressEvent(QMouseEvent* Event) {
    if (OnMouseDown) OnMouseDown(Event->position().x(), Event->position().y());
    Event->accept();
}

void CalPointsPicture::mouseDoubleClickEvent(QMouseEvent* Event) {
    Event->accept();
}

fCalPoints::fCalPoints(WindowSet& Windows)
    : QWidget(nullptr), windows_(Windows), s_(Windows.Chain().Model()) {
    setWindowTitle(QStringLiteral("Calibration Points"));
    resize(kInnerWidth, kInnerHeight);
    // Small enough for any screen, large enough for the buttons.
    setMinimumSize(4 * kButtonWidth, 3 * kButtonRoom);

    picOuter = new QScrollArea(this);
    picOuter->setObjectName(QStringLiteral("picOuter"));
    picOuter->horizontalScrollBar()->setObjectName(QStringLiteral("barHS"));
    picOuter->verticalScrollBar()->setObjectName(QStringLiteral("barVS"));
    picInner = new CalPointsPicture(picOuter);
    picInner->setObjectName(QStringLiteral("picInner"));
    picInner->OnMouseDown = [this](double, double Y) { PicInnerMouseDown(Y); };
    picOuter->setWidget(picInner);
    SetBackColor(picOuter->viewport(), kTableBackColor);

    const int top = kInnerHeight - kButtonRoom + 5;
    auto button = [this, top](const char* Caption, const char* Name, int Left) {
        auto* b = new QPushButton(QString::fromLatin1(Caption), this);
        b->setObjectName(QString::fromLatin1(Name));
        b->setGeometry(Left, top, kButtonWidth, kButtonHeight);
        return b;
    };
    cmdAll = button("Check All", "cmdAll", 5);
    cmdNone = button("Uncheck All", "cmdNone", 5 + kButtonWidth + 5);
    cmdDel = button("Delete", "cmdDel", 5 + 2 * (kButtonWidth + 5));
    Label1 = MakeLabel(QStringLiteral("Click on entry to select or deselect"), this,
                       QStringLiteral("Label1"));
    Label1->move(5 + 3 * (kButtonWidth + 5) + 5, top + 5);
    Label1->adjustSize();
    connect(cmdAll, &QPushButton::clicked, this, [this] { SetAllUsed(true); });
    connect(cmdNone, &QPushButton::clicked, this, [this] { SetAllUsed(false); });
    connect(cmdDel, &QPushButton::clicked, this, [this] { DeleteSelected(); });
    initialDelTop_ = top;
}

void fCalPoints::FormLoad() {
    // The resize rule measures from the size and the buttons' place at load.
    initialScaleHeight_ = height();
    initialDelTop_ = cmdDel->y();
    ComputeResiduals(s_);
    DisplayCalPoints();
}

QCheckBox* fCalPoints::UseBox(int Row) {
    while (static_cast<int>(chkUse.size()) <= Row) {
        const int k = static_cast<int>(chkUse.size());
        auto* box = new QCheckBox(QStringLiteral("Use?"), picInner);
        box->setObjectName(IndexedName("chkUse", k));
        // Focus by click only: a box that took the focus from a disabled
        // button would scroll the table to itself.
        box->setFocusPolicy(Qt::ClickFocus);
        box->hide();
        // The operator's click only: the redraw ticks the boxes from the
        // model and must not write the model back.
        connect(box, &QCheckBox::clicked, this,
                [this, k](bool Checked) { UseClicked(k, Checked); });
        chkUse.push_back(box);
    }
    return chkUse[static_cast<size_t>(Row)];
}

void fCalPoints::DisplayCalPoints() {
    const int N = s_.NumCalPoints;
    DrawCalPointsTable(s_, RowSelected, picInner->Picture());
    picInner->FitToPicture();
    picInner->update();

    cmdDel->setEnabled(std::any_of(RowSelected.begin(), RowSelected.begin() + std::max(N, 0),
                                   [](bool b) { return b; }));

    for (size_t k = 0; k < chkUse.size(); ++k) {
        QCheckBox* box = chkUse[k];
        box->setEnabled(false);
        box->hide();
        SetBackColor(box, kTableBackColor);
        SetTextColor(box, RowSelected[k] ? kTableSelectedColor : kTableTextColor);
    }
    for (int row = 0; row < N; ++row) {
        QCheckBox* box = UseBox(row);
        SetBackColor(box, kTableBackColor);
        SetTextColor(box,
                     RowSelected[static_cast<size_t>(row)] ? kTableSelectedColor : kTableTextColor);
        box->setGeometry(kUseBoxLeft, RowTop(row) + 2, box->sizeHint().width(), kUseBoxHeight);
        box->setChecked(s_.CalPoints[static_cast<size_t>(row + 1)].Used);
        box->setEnabled(true);
        box->show();
    }
}

void fCalPoints::PicInnerMouseDown(double Y) {
    const int row = RowAt(Y);
    if (row < 0 || row >= s_.NumCalPoints) return;
    RowSelected[static_cast<size_t>(row)] = !RowSelected[static_cast<size_t>(row)];
    DisplayCalPoints();
}

void fCalPoints::UseClicked(int Row, bool Checked) {
    if (Row >= s_.NumCalPoints) return;
    s_.CalPoints[static_cast<size_t>(Row + 1)].Used = Checked;
    windows_.Chain().CalibrateAndDisplay();
}

void fCalPoints::SetAllUsed(bool Used) {
    RecalcChain& chain = windows_.Chain();
    chain.SetDisplayEnabled(false);
    for (int i = 1; i <= s_.NumCalPoints; ++i) {
        UseBox(i - 1)->setChecked(Used);
        s_.CalPoints[static_cast<size_t>(i)].Used = Used;
    }
    chain.SetDisplayEnabled(true);
    chain.CalibrateAndDisplay();
}

void fCalPoints::DeleteSelected() {
    const int N = static_cast<int>(
        std::count(RowSelected.begin(), RowSelected.begin() + s_.NumCalPoints, true));
    const QString text =
        N == 1 ? QStringLiteral("You have selected 1 star to delete.  Proceed?")
               : QStringLiteral("You have selected %1 stars to delete.  Proceed?").arg(N);
    // The question lets queued calls run: a client may add or remove points
    // meanwhile, or close this window. The rows are taken as they stand
    // when the answer comes, and a window closed meanwhile does nothing.
    QPointer<fCalPoints> self(this);
    QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, QStringLiteral("Confirm Delete"), text,
                        QMessageBox::Yes | QMessageBox::No, this);
    const int answer = box->exec();
    delete box.data();
    if (!self || answer != QMessageBox::Yes) return;

    for (int i = s_.NumCalPoints - 1; i >= 0; --i) {
        if (!RowSelected[static_cast<size_t>(i)]) continue;
        // Rows from the last to the first: the rows still to look at keep
        // their indices. Points and marks move down together.
        for (int j = i; j < s_.NumCalPoints - 1; ++j) {
            s_.CalPoints[static_cast<size_t>(j + 1)] = s_.CalPoints[static_cast<size_t>(j + 2)];
            RowSelected[static_cast<size_t>(j)] = RowSelected[static_cast<size_t>(j + 1)];
        }
        // The row that falls off the end carries no mark to a later point.
        RowSelected[static_cast<size_t>(s_.NumCalPoints - 1)] = false;
        s_.NumCalPoints = static_cast<int16_t>(s_.NumCalPoints - 1);
    }
    cmdDel->setEnabled(false);
    windows_.Chain().CalibrateAndDisplay();
}

void fCalPoints::resizeEvent(QResizeEvent* Event) {
    QWidget::resizeEvent(Event);
    if (isMinimized()) return;
    // The scroll area shows its bars as the table needs them, inside the
    // frame: the room left of and above the buttons.
    picOuter->setGeometry(5, 5, width() - 5, height() - kButtonRoom);
    const int top = initialDelTop_ - (initialScaleHeight_ - height());
    for (QPushButton* b : {cmdAll, cmdNone, cmdDel}) b->move(b->x(), top);
    Label1->move(Label1->x(), top + 5);
}
