// fErrors, the Model Parameters window: which terms the fit may use (one
// check box per flag), the fitted value of every term beside its number in
// brackets, the four ready-made sets of terms, the sensitivity limit and
// the refraction switch. Fixed size; its values are written by the main
// window's DisplayErrors.
#pragma once

#include <QWidget>
#include <array>

#include "model/Constants.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class WindowSet;
struct ModelParameterFigures;
struct ModelState;

class fErrors : public QWidget {
    Q_OBJECT
  public:
    // Builds the window with its controls, unseen; all 22 boxes ticked as
    // in the design, until the first activation or EnableToChk.
    explicit fErrors(WindowSet& Windows);

    static constexpr int kInnerWidth = 485;
    static constexpr int kInnerHeight = 422;

    // The presets: set the flags, then EnableToChk. No fit; the caller
    // decides about that.
    void EnableAltAz();
    void EnableGEM();
    void EnableAll();
    void DisableAll();
    // TermEnable into the check boxes, with DisplayEnabled false meanwhile
    // so that the boxes' reactions start no fit; DisplayEnabled is true
    // afterwards, whatever it was before.
    void EnableToChk();
    // The check boxes into TermEnable.
    void ChkToEnable();

    // The labels, the refraction box and the limit from the figures that
    // DisplayErrors worked out.
    void ShowFigures(const ModelParameterFigures& Figures);
    // Empties the value cells of terms 3 to 46 and their tooltips.
    void ClearTermValues();

    // Controls, named as in the window's design; arrays by flag or term.
    std::array<QCheckBox*, kNumTermEnable + 1> chkEnable{};  // 1 to 22
    std::array<QLabel*, kNumTerms + 1> lblErr{};             // 3 to 46
    QLabel* lblPhi0 = nullptr;
    QLabel* lblTheta0 = nullptr;
    QLabel* lblNorthDir = nullptr;
    QLabel* lblWestDir = nullptr;
    QLabel* lblRMSAll = nullptr;
    QLabel* lblMaxAll = nullptr;
    QLabel* lblRMSSelected = nullptr;
    QLabel* lblMaxSelected = nullptr;
    QLabel* lblSen1 = nullptr;
    QLabel* lblSensitivity = nullptr;
    QLineEdit* txtMaxSensitivity = nullptr;
    QCheckBox* chkRefraction = nullptr;
    QPushButton* cmdGEM = nullptr;
    QPushButton* cmdAltAz = nullptr;
    QPushButton* cmdEnable = nullptr;
    QPushButton* cmdDisable = nullptr;

  protected:
    bool event(QEvent* Event) override;

  private:
    void Build();
    QWidget* BuildTopRow();
    QWidget* BuildCorrections(bool Theta);
    QWidget* BuildFigures();
    QWidget* BuildButtons();
    // The reactions of the controls.
    void EnableClicked();
    void MaxSensitivityChanged();
    void Activated();
    // Runs a preset chosen by a button, then the fit.
    void PresetClicked(void (fErrors::*Preset)());

    WindowSet& windows_;
    ModelState& s_;
    bool writingLimit_ = false;  // DisplayErrors is writing txtMaxSensitivity
};
