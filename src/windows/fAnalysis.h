// fAnalysis, the Graphical Error Analysis window: the residual of every
// calibration point against an axis of the mount, as a scatter plot with
// the dot colours of the sky plots. A shape in it (a sine in Phi, a slope in
// zenith distance) shows which term the model lacks; a press on a dot takes
// the point out of the fit or puts it back. Resizable: the plot fills the
// window below the option groups.
#pragma once

#include <QWidget>

#include "windows/AnalysisGraph.h"

class PictureBox;
class QRadioButton;
class WindowSet;
struct ModelState;

class fAnalysis : public QWidget {
    Q_OBJECT
  public:
    // Builds the window with its controls, unseen: inner area 525 by 283,
    // picGraph 525 by 241 below the groups, border included.
    explicit fAnalysis(WindowSet& Windows);

    static constexpr int kInnerWidth = 525;
    static constexpr int kInnerHeight = 283;
    static constexpr int kGraphWidth = 525;
    static constexpr int kGraphHeight = 241;

    // The load: keeps the sizes for the resize rule, and draws.
    void FormLoad();
    // Draws the whole plot with the present options; no fit.
    void MakeGraph();
    // The options as the buttons stand.
    AnalysisOptions Options() const;

    // The reaction to a press at (X, Y) in pixels of picGraph: the nearest
    // dot, if nearer than 5 pixels, changes its point's Used and the model
    // is fitted again.
    void PicGraphMouseDown(double X, double Y);

    // The graph record and the dot positions of the last plot.
    cAnalysisGraph Plot;

    // Controls, named as in the window's design.
    QRadioButton* optYTheta = nullptr;
    QRadioButton* optYPhi = nullptr;
    QRadioButton* optTheta = nullptr;
    QRadioButton* optPhi = nullptr;
    QRadioButton* OptZ = nullptr;
    QRadioButton* optAll = nullptr;
    QRadioButton* optSel = nullptr;
    PictureBox* picGraph = nullptr;

  protected:
    void resizeEvent(QResizeEvent* Event) override;

  private:
    // picGraph grows and shrinks with the window by the same pixels, from
    // the sizes at load; then the plot is drawn again.
    void ApplyResizeRule();

    WindowSet& windows_;
    ModelState& s_;
    int loadGraphWidth_ = kGraphWidth;
    int loadGraphHeight_ = kGraphHeight;
    int loadScaleWidth_ = kInnerWidth;
    int loadScaleHeight_ = kInnerHeight;
};
