// fMain, the operator's home window: the figures of the fit, the round sky
// plot with its options, the File and View menus and the buttons that open
// the other windows. Clicking a dot in the plot takes the point out of the
// fit or puts it back.
#pragma once

#include <QMainWindow>
#include <array>
#include <functional>
#include <memory>
#include <string>

#include "windows/DisplayFigures.h"
#include "windows/SkyPlots.h"

class RecalcChain;

class QAction;
class QLabel;
class QLayout;
class QMenu;
class QPushButton;
class QRadioButton;
class PictureBox;
class WindowSet;
class WindowsDisplay;
class TestMenu;
class fAbout;
struct ModelState;

class fMain : public QMainWindow {
    Q_OBJECT
  public:
    // Builds the window of the set Windows with its controls, unseen; the
    // set runs FormLoad. Changes of the model go through the set's chain,
    // whose refresh is expected to reach this window.
    explicit fMain(WindowSet& Windows);
    // A window over a model of its own, loaded at once: it keeps a chain
    // and a set of windows of its own, the same as the process has.
    explicit fMain(ModelState& s);
    ~fMain() override;

    // Inner size of the window below the menu bar and side of picError,
    // border included.
    static constexpr int kInnerWidth = 325;
    static constexpr int kInnerHeight = 492;
    static constexpr int kPicErrorSize = 313;
    // Height of the buttons of row 5, three of them beside the
    // pointing error.
    static constexpr int kButtonHeight = 18;

    // The flag of the chain: while false, a change of the model neither fits
    // nor redraws.
    bool DisplayEnabled() const;
    void SetDisplayEnabled(bool Enabled);
    RecalcChain& Chain() { return *chain_; }
    // The windows of the process (or of this window's own model).
    WindowSet& Windows() { return windows_; }

    // Both plots with their foreground GraphColor and the point positions
    // StarX and StarY of the last plot.
    cSkyPlots Plots;

    // Run after a click or a File Open changed the model: by default the
    // chain's CalibrateAndDisplay.
    std::function<void()> OnModelChanged;

    // The load: the trace line, the Test menu switched off, InitModel
    // unless a client started the process, the caption, the first plot, the
    // Model Parameters window loaded unseen. The window is not shown.
    void FormLoad();

    // Redraws picError with the chosen graph type, then DisplayErrors.
    void UpdateGraph();
    // Writes every figure of this window and of the Model Parameters window.
    void DisplayErrors();
    // Closes the other windows.
    void UnloadAll();

    // The reaction to a mouse press at (X, Y) in pixels of picError: the
    // nearest point, if nearer than 5 pixels, changes its Used.
    void PicErrorMouseDown(double X, double Y);

    // The File menu and the About entry.
    void OpenCalibration();
    // The part of Open after the chooser: loads Name and refits, or says
    // that the file is not a calibration. True when the file loaded.
    bool OpenCalibrationFile(const std::string& Name);
    void SaveCalibrationAs();
    void ShowAbout();

    // The figures of the Model Parameters window from the last DisplayErrors.
    const ModelParameterFigures& ModelParameters() const { return parameters_; }

    // The default reaction to a change of the model: the chain's
    // CalibrateAndDisplay.
    void RefitAndRedraw();

    // Controls, named as in the window's design.
    QLabel* lblFileName = nullptr;
    std::array<QLabel*, 5> lblErr{};  // elements 3 and 4
    QLabel* lblNorthDir = nullptr;
    QLabel* lblWestDir = nullptr;
    QLabel* lblNum = nullptr;
    QLabel* lblSen1 = nullptr;
    QLabel* lblSensitivity = nullptr;
    QRadioButton* optError = nullptr;
    QRadioButton* Option1 = nullptr;
    QRadioButton* optAll = nullptr;
    QRadioButton* optSelected = nullptr;
    PictureBox* picError = nullptr;
    QLabel* lblRMSAll = nullptr;
    QLabel* lblMaxAll = nullptr;
    QLabel* lblRMSSelected = nullptr;
    QLabel* lblMaxSelected = nullptr;
    QAction* menu_OpenCal = nullptr;
    QAction* menu_SaveCalstarFile = nullptr;
    QAction* menu_exit = nullptr;
    QMenu* menuView = nullptr;
    QAction* menu_calstars = nullptr;
    QAction* menu_mount = nullptr;
    QAction* menu_analysis = nullptr;
    QPushButton* cmdAnalysis = nullptr;
    QPushButton* cmdMountErrors = nullptr;
    QPushButton* cmdCalPoints = nullptr;
    QMenu* menuTest = nullptr;
    // The entries of the Test menu, owned by menuTest.
    TestMenu* Tests = nullptr;
    QAction* menuAbout = nullptr;
    fAbout* About = nullptr;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void Build();
    void BuildControls();
    QLayout* BuildButtons(QWidget* Parent);
    void BuildMenus();
    void BuildViewMenu();
    // A modal box with an OK button and no title of its own.
    void Message(const QString& Text);

    // Only a window over a model of its own owns these.
    std::unique_ptr<RecalcChain> ownChain_;
    std::unique_ptr<WindowsDisplay> ownDisplay_;
    WindowSet& windows_;
    RecalcChain* chain_;
    ModelState& s_;
    ModelParameterFigures parameters_;
};
