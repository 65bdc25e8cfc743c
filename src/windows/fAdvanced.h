// fAdvanced, the Advanced Features window: the search for the encoder scale
// factors, started and stopped by one button whose caption is the state,
// with the factors, the RMS and the count of kept steps shown as it runs;
// a reset of each factor to 1. The clock rate frame is shown but has no
// behaviour. Fixed size; refreshed by the chain whether on the screen or not.
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class WindowSet;
struct ModelState;

class fAdvanced : public QWidget {
    Q_OBJECT
  public:
    // Builds the window with its controls and initial captions, unseen.
    explicit fAdvanced(WindowSet& Windows);

    static constexpr int kInnerWidth = 292;
    static constexpr int kInnerHeight = 144;

    // The load: DisplayData.
    void FormLoad();
    // The factors, their deviation in per cent and the RMS as they stand.
    void DisplayData();

    // Controls, named as in the window's design.
    QLabel* lblPhiSF = nullptr;
    QLabel* lblPhiP = nullptr;
    QPushButton* cmdPhi = nullptr;
    QLabel* lblThetaSF = nullptr;
    QLabel* lblThetaP = nullptr;
    QPushButton* cmdTheta = nullptr;
    QLabel* lblStats = nullptr;
    QLabel* lblRMS = nullptr;
    QPushButton* cmdOptSF = nullptr;
    QLabel* lblRate = nullptr;
    QLabel* lblStatsRate = nullptr;
    QLabel* lblRMSRate = nullptr;
    QPushButton* cmdOptRate = nullptr;
    QPushButton* cmdResetRate = nullptr;

  protected:
    void closeEvent(QCloseEvent* Event) override;

  private:
    void Build();
    QWidget* BuildScaleFrame();
    QWidget* BuildRateFrame();
    void OptSFClicked();
    void RunSearch();
    // The factors with 7 decimals and an RMS, as a run shows them.
    void ShowSearchFigures(double RMS);

    WindowSet& windows_;
    ModelState& s_;
    int runs_ = 0;         // searches on the stack, nested ones included
    bool closed_ = false;  // closed while a search ran: dropped when the last one ends
};
