#include "windows/fErrors.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "model/ModelState.h"
#include "model/Terms.h"
#include "server/RecalcChain.h"
#include "sky/NumberText.h"
#include "windows/Controls.h"
#include "windows/DisplayFigures.h"
#include "windows/WindowSet.h"
#include "windows/fMain.h"

namespace {

QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

}  // namespace

fErrors::fErrors(WindowSet& Windows)
    : QWidget(nullptr), windows_(Windows), s_(Windows.Chain().Model()) {
    setWindowTitle(QStringLiteral("Model Parameters"));
    Build();
    for (int i = 1; i <= kNumTermEnable; ++i) {
        QCheckBox* box = chkEnable[static_cast<size_t>(i)];
        box->setObjectName(IndexedName("chkEnable", i));
        box->setChecked(true);
        // Every change of a box reports, also one made by EnableToChk:
        // DisplayEnabled is what keeps such a copy from fitting.
        connect(box, &QCheckBox::toggled, this, [this] { EnableClicked(); });
    }
    // The operator's click only: the refresh writes the box from the model
    // and must not write the model back.
    connect(chkRefraction, &QCheckBox::clicked, this, [this](bool Checked) {
        s_.EnableRefraction = Checked;
        windows_.Chain().CalibrateAndDisplay();
    });
    connect(txtMaxSensitivity, &QLineEdit::textChanged, this, [this] { MaxSensitivityChanged(); });
    connect(cmdAltAz, &QPushButton::clicked, this,
            [this] { PresetClicked(&fErrors::EnableAltAz); });
    connect(cmdGEM, &QPushButton::clicked, this, [this] { PresetClicked(&fErrors::EnableGEM); });
    connect(cmdEnable, &QPushButton::clicked, this, [this] { PresetClicked(&fErrors::EnableAll); });
    connect(cmdDisable, &QPushButton::clicked, this,
            [this] { PresetClicked(&fErrors::DisableAll); });
}

void fErrors::EnableAltAz() {
    ::EnableAltAz(s_);
    EnableToChk();
}

void fErrors::EnableGEM() {
    ::EnableGEM(s_);
    EnableToChk();
}

void fErrors::EnableAll() {
    ::EnableAll(s_);
    EnableToChk();
}

void fErrors::DisableAll() {
    ::DisableAll(s_);
    EnableToChk();
}

void fErrors::EnableToChk() {
    RecalcChain& chain = windows_.Chain();
    chain.SetDisplayEnabled(false);
    for (int i = 1; i <= s_.NumTermEnable && i <= kNumTermEnable; ++i) {
        chkEnable[static_cast<size_t>(i)]->setChecked(s_.TermEnable[static_cast<size_t>(i)] != 0);
    }
    chain.SetDisplayEnabled(true);
}

void fErrors::ChkToEnable() {
    for (int i = 1; i <= s_.NumTermEnable && i <= kNumTermEnable; ++i) {
        s_.TermEnable[static_cast<size_t>(i)] =
            chkEnable[static_cast<size_t>(i)]->isChecked() ? 1 : 0;
    }
}

void fErrors::EnableClicked() {
    if (!windows_.Chain().DisplayEnabled()) return;
    ChkToEnable();
    windows_.Chain().CalibrateAndDisplay();
}

void fErrors::PresetClicked(void (fErrors::*Preset)()) {
    (this->*Preset)();
    windows_.Chain().CalibrateAndDisplay();
}

void fErrors::MaxSensitivityChanged() {
    // Runs at each keystroke and at each write by DisplayErrors; a text that
    // is not a number leaves the limit as it was. A write by DisplayErrors
    // takes the rounded value back but never fits, also outside the chain
    // (the main window's load, an activation): a fit there would run the
    // whole chain again from inside a refresh.
    double value = 0;
    if (!ParseNumber(txtMaxSensitivity->text().toStdString(), value)) return;
    s_.MaxSensitivity = value;
    if (!writingLimit_) windows_.Chain().CalibrateAndDisplay();
}

void fErrors::ShowFigures(const ModelParameterFigures& f) {
    lblTheta0->setText(Q(f.lblTheta0));
    lblPhi0->setText(Q(f.lblPhi0));
    lblPhi0->setToolTip(Q(f.TermTip[1]));
    lblTheta0->setToolTip(Q(f.TermTip[2]));
    for (int i = 3; i <= kNumTerms; ++i) {
        lblErr[static_cast<size_t>(i)]->setText(Q(f.lblErr[static_cast<size_t>(i)]));
        lblErr[static_cast<size_t>(i)]->setToolTip(Q(f.TermTip[static_cast<size_t>(i)]));
    }
    lblRMSSelected->setText(Q(f.lblRMSSelected));
    lblMaxSelected->setText(Q(f.lblMaxSelected));
    lblMaxAll->setText(Q(f.lblMaxAll));
    lblRMSAll->setText(Q(f.lblRMSAll));
    chkRefraction->setChecked(f.chkRefraction);
    SetTextColor(lblSen1, f.SensitivityColor);
    SetTextColor(lblSensitivity, f.SensitivityColor);
    lblSensitivity->setText(Q(f.lblSensitivity));
    // A text that already reads as the rounded limit stays as the operator
    // typed it ("3." on the way to 3.5): rewriting it to "3" would take the
    // point away under the cursor.
    double shown = 0;
    double rounded = 0;
    const bool same = ParseNumber(txtMaxSensitivity->text().toStdString(), shown) &&
                      ParseNumber(f.txtMaxSensitivity, rounded) && shown == rounded;
    if (same) return;
    writingLimit_ = true;
    txtMaxSensitivity->setText(Q(f.txtMaxSensitivity));
    writingLimit_ = false;
}

void fErrors::ClearTermValues() {
    for (int i = 3; i <= kNumTerms; ++i) {
        lblErr[static_cast<size_t>(i)]->clear();
        lblErr[static_cast<size_t>(i)]->setToolTip(QString());
    }
}

bool fErrors::event(QEvent* Event) {
    if (Event->type() == QEvent::WindowActivate) Activated();
    return QWidget::event(Event);
}

void fErrors::Activated() {
    // A change of mount type or of the flags made by a client shows when
    // the window comes forward.
    EnableToChk();
    windows_.Main.Get().DisplayErrors();
    cmdAltAz->setEnabled(s_.IsAltAz);
    cmdGEM->setEnabled(!s_.IsAltAz);
}
