#include "windows/fSetup.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>

#include "server/RecalcChain.h"
#include "windows/Controls.h"
#include "windows/SmallWindowFigures.h"
#include "windows/WindowSet.h"

namespace {

// Rows of captions on the left and value labels on the right.
QGridLayout* Rows(QWidget* Parent, std::initializer_list<std::pair<const char*, QLabel*>> Rows) {
    auto* grid = new QGridLayout(Parent);
    grid->setContentsMargins(6, 2, 6, 3);
    grid->setVerticalSpacing(2);
    int r = 0;
    for (auto [caption, value] : Rows) {
        grid->addWidget(MakeLabel(QString::fromLatin1(caption), Parent), r, 0);
        grid->addWidget(value, r++, 1);
    }
    grid->setColumnStretch(1, 1);
    return grid;
}

}  // namespace

fSetup::fSetup(WindowSet& Windows) : QWidget(nullptr), s_(Windows.Chain().Model()) {
    setWindowTitle(QStringLiteral("Parameters"));
    setStyleSheet(FrameStyleSheet());
    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(3, 3, 3, 3);
    top->setSpacing(4);
    auto value = [](QWidget* Parent, const char* Name) {
        return MakeLabel(QString(), Parent, QString::fromLatin1(Name));
    };

    auto* site = new QWidget(this);
    lblLat = value(site, "lblLat");
    lblTemp = value(site, "lblTemp");
    lblPres = value(site, "lblPres");
    lblType = value(site, "lblType");
    Rows(site, {{"Latitude", lblLat},
                {"Temperature", lblTemp},
                {"Pressure", lblPres},
                {"Mount Type", lblType}})
        ->setContentsMargins(4, 0, 4, 0);
    top->addWidget(site);

    auto* phi = MakeFrame(QStringLiteral("Phi Encoder"), this);
    lblPhiCounts = value(phi, "lblPhiCounts");
    lblPhiDir = value(phi, "lblPhiDir");
    lblPhiSF = value(phi, "lblPhiSF");
    Rows(phi,
         {{"Counts per Rev", lblPhiCounts}, {"Increases", lblPhiDir}, {"Scale Factor", lblPhiSF}});
    top->addWidget(phi);

    auto* theta = MakeFrame(QStringLiteral("Theta Encoder"), this);
    lblThetaCounts = value(theta, "lblThetaCounts");
    lblThetaDir = value(theta, "lblThetaDir");
    lblThetaSF = value(theta, "lblThetaSF");
    Rows(theta, {{"Counts per Rev", lblThetaCounts},
                 {"Increases", lblThetaDir},
                 {"Scale Factor", lblThetaSF}});
    top->addWidget(theta);
    top->addStretch(1);
    setFixedSize(kInnerWidth, kInnerHeight);
}

void fSetup::FormLoad() {
    const SetupFigures f = ComputeSetupFigures(s_);
    const std::pair<QLabel*, const std::string&> labels[] = {{lblLat, f.lblLat},
                                                             {lblTemp, f.lblTemp},
                                                             {lblPres, f.lblPres},
                                                             {lblType, f.lblType},
                                                             {lblPhiCounts, f.lblPhiCounts},
                                                             {lblPhiDir, f.lblPhiDir},
                                                             {lblPhiSF, f.lblPhiSF},
                                                             {lblThetaCounts, f.lblThetaCounts},
                                                             {lblThetaDir, f.lblThetaDir},
                                                             {lblThetaSF, f.lblThetaSF}};
    for (const auto& [label, text] : labels) label->setText(QString::fromStdString(text));
}
