// fAutoAlign, the Auto Alignment window of the developers' Test menu: the
// number of points, the mount type and the order of an alignment list, a
// horizon file to load, and the all-sky map of the result. The list and the
// skyline live in the model, so they are there again when the window opens
// a second time.
#pragma once

#include <QWidget>
#include <array>
#include <string>

#include "windows/AutoAlignMap.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class PictureBox;
struct ModelState;

class fAutoAlign : public QWidget {
    Q_OBJECT
  public:
    explicit fAutoAlign(ModelState& s, QWidget* parent = nullptr);

    // The window as designed: inner area 441 by 490 pixels, picGraph a
    // square of 437 at (2, 50), the controls above it.
    static constexpr int kInnerWidth = 441;
    static constexpr int kInnerHeight = 490;
    static constexpr int kGraphLeft = 2;
    static constexpr int kGraphTop = 50;
    static constexpr int kGraphSize = 437;

    // The top of picGraph as the load found it.
    int GraphTop = 0;
    // The plot's geometry and drawing.
    AutoAlignMap Map;

    // Redraws picGraph completely.
    void DrawAutoAlignGraph();
    // The chooser of a horizon file; empty when cancelled or failed.
    std::string GetHorizonFile();
    // The reactions of cmdHorizon and cmdMake, and of the mouse over the map.
    void GetHorizon();
    void MakePoints();
    void PicGraphMouseMove(double X, double Y);

    // Controls, named as in the window's design.
    QPushButton* cmdHorizon = nullptr;
    QPushButton* cmdMakeHorizon = nullptr;
    QPushButton* cmdSaveHorizon = nullptr;
    QLineEdit* txtNumAA = nullptr;
    QLineEdit* txtType = nullptr;
    QGroupBox* Frame1 = nullptr;
    std::array<QRadioButton*, 5> optOrder{};
    QPushButton* cmdMake = nullptr;
    PictureBox* picGraph = nullptr;
    QLabel* lblAz = nullptr;
    QLabel* lblEl = nullptr;

  protected:
    // Keeps picGraph square in the space below the controls, and redraws it.
    void resizeEvent(QResizeEvent* event) override;

  private:
    ModelState& s_;
};
