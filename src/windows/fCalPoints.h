// fCalPoints, the Calibration Points window: every calibration point as a
// row of a table drawn on a picture (date, time, place, axis angles and
// error), a "Use?" box per row that takes the point out of the fit or puts
// it back, and rows marked in red by a click, for deletion. Resizable; the
// table scrolls inside it.
#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "windows/CalPointsTable.h"
#include "windows/Picture.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollArea;
class WindowSet;
struct ModelState;

// picInner: the table's picture, as large as the table; reports mouse
// presses of any button in its pixels.
class CalPointsPicture : public QWidget {
  public:
    explicit CalPointsPicture(QWidget* Parent);
    cPicture& Picture() { return picture_; }
    // Takes the picture's present size.
    void FitToPicture();
    std::function<void(double X, double Y)> OnMouseDown;

  protected:
    void paintEvent(QPaintEvent* Event) override;
    void mousePressEvent(QMouseEvent* Event) override;
    // A double-click is one press: its second press would take the first
    // one's mark back.
    void mouseDoubleClickEvent(QMouseEvent* Event) override;

  private:
    cPicture picture_;
};

class fCalPoints : public QWidget {
    Q_OBJECT
  public:
    // Builds the window with its controls, unseen, with an inner area of
    // 586 by 365 pixels.
    explicit fCalPoints(WindowSet& Windows);

    static constexpr int kInnerWidth = 586;
    static constexpr int kInnerHeight = 365;

    // The load: residuals of the last fit, then the table.
    void FormLoad();
    // Redraws the table, the boxes and the state of "Delete".
    void DisplayCalPoints();

    // The reaction to a press on picInner at height Y in its pixels: the row
    // there, if it holds a point, is marked or unmarked.
    void PicInnerMouseDown(double Y);

    // Rows marked for deletion, by row (point index - 1); view state only.
    RowMarks RowSelected{};

    // Controls, named as in the window's design.
    QScrollArea* picOuter = nullptr;
    CalPointsPicture* picInner = nullptr;
    // chkUse_k of row k; made when a row first needs one.
    std::vector<QCheckBox*> chkUse;
    QPushButton* cmdAll = nullptr;
    QPushButton* cmdNone = nullptr;
    QPushButton* cmdDel = nullptr;
    QLabel* Label1 = nullptr;

  protected:
    void resizeEvent(QResizeEvent* Event) override;

  private:
    QCheckBox* UseBox(int Row);
    void UseClicked(int Row, bool Checked);
    void SetAllUsed(bool Used);
    void DeleteSelected();

    WindowSet& windows_;
    ModelState& s_;
    int initialScaleHeight_ = kInnerHeight;
    int initialDelTop_ = 0;
};
