// fSetup, the Parameters window: the site and mount settings as a client
// set them, read only. A snapshot: its labels are filled when it loads and
// stay as they are while it is open. Fixed size.
#pragma once

#include <QWidget>

class QLabel;
class WindowSet;
struct ModelState;

class fSetup : public QWidget {
    Q_OBJECT
  public:
    // Builds the window with its controls, unseen.
    explicit fSetup(WindowSet& Windows);

    static constexpr int kInnerWidth = 211;
    static constexpr int kInnerHeight = 238;

    // The load: fills every label from the model.
    void FormLoad();

    // Controls, named as in the window's design.
    QLabel* lblLat = nullptr;
    QLabel* lblTemp = nullptr;
    QLabel* lblPres = nullptr;
    QLabel* lblType = nullptr;
    QLabel* lblPhiCounts = nullptr;
    QLabel* lblPhiDir = nullptr;
    QLabel* lblPhiSF = nullptr;
    QLabel* lblThetaCounts = nullptr;
    QLabel* lblThetaDir = nullptr;
    QLabel* lblThetaSF = nullptr;

  private:
    const ModelState& s_;
};
