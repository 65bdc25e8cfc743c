// fVirtualScope, the Virtual Telescope of the developers' Test menu: an
// imaginary pair of axis angles that, twice a second, goes through the
// public conversions of TestServer as a telescope control program's would,
// and with Track on follows the rates they return. The lower half holds the
// description of an imaginary badly built mount, whose calibration points
// "Create Cal Points" adds through TestServer.
#pragma once

#include <QWidget>
#include <array>
#include <cstdint>
#include <functional>

#include "simulation/mVirtualScope.h"
#include "sky/mTime.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class WindowSet;

class fVirtualScope : public QWidget {
    Q_OBJECT
  public:
    // Inputs is the stored description, which outlives the window.
    fVirtualScope(WindowSet& Windows, VirtualScopeInputs& Inputs, QWidget* parent = nullptr);

    // Form load: ShowInputs, Latitude 45 on TestServer, Timer1 started.
    void FormLoad();
    // One tick of Timer1.
    void Timer1Tick();
    // The boxes of the lower half to the stored description, and back.
    void GetInputs();
    void ShowInputs();
    // cmdRun: stores the description and adds its points through
    // TestServer, which refits after each; the window stays open.
    void CreateCalPoints();

    // The computer's date and time; a test puts its own clock here.
    std::function<DateTimeRec()> Clock = ComputerDateTime;

    int32_t TickCount = 0;
    double LastTime = 0;  // seconds since local midnight at the last full tick
    double RADesired = 0;
    double DecDesired = 0;
    bool SetPosPending = false;

    // Controls, named as in the window's design.
    QLineEdit* txtPhi = nullptr;
    QLineEdit* txtTheta = nullptr;
    QLabel* lblRA = nullptr;
    QLabel* lblDec = nullptr;
    QLabel* lblAlt = nullptr;
    QLabel* lblAz = nullptr;
    QLabel* lblFieldAngle = nullptr;
    QPushButton* cmdSetPos1 = nullptr;
    QCheckBox* chkTracking = nullptr;
    QLabel* lblPhiRate = nullptr;
    QLabel* lblThetaRate = nullptr;
    QLabel* lblFieldRate = nullptr;
    QLineEdit* txtRADesired = nullptr;
    QLineEdit* txtDecDesired = nullptr;
    QPushButton* cmdSetPos = nullptr;
    QLabel* lblRASet = nullptr;
    QLabel* lblDecSet = nullptr;
    QLabel* lblJD = nullptr;
    QLabel* lblLST = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdRun = nullptr;
    QLineEdit* txtNum = nullptr;
    QLineEdit* txtCone = nullptr;
    QLineEdit* txtHub = nullptr;
    QLineEdit* txtPAW = nullptr;
    QLineEdit* txtPAN = nullptr;
    QLineEdit* txtLat = nullptr;
    QLineEdit* txtThetaOffset = nullptr;
    QLineEdit* txtPhiOffset = nullptr;
    QLineEdit* txtdT = nullptr;
    QLineEdit* txtLST = nullptr;
    QTimer* Timer1 = nullptr;

  private:
    QWidget* BuildUpperHalf();
    QWidget* BuildLowerHalf();
    // The ten boxes with the member and factor of each.
    struct Box {
        QLineEdit* Edit;
        double VirtualScopeInputs::*Member;  // null: VSNum
        double Factor;
    };
    std::array<Box, 10> Boxes() const;

    WindowSet& windows_;
    VirtualScopeInputs& inputs_;
};
