#include "simulation/fVirtualScope.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>
#include <string>
#include <vector>

#include "model/ImaginaryMount.h"
#include "model/ModelState.h"
#include "server/RecalcChain.h"
#include "sky/NumberText.h"
#include "sky/mStrings.h"
#include "windows/Controls.h"
#include "windows/WindowSet.h"

namespace {

constexpr double kPi = 3.141592654;
constexpr double kBadText = -1e20;  // RAStrToRad and DecStrToRad refuse at or below

QString Q(const std::string& Text) {
    return QString::fromStdString(Text);
}

QLineEdit* MakeBox(const char* Name, const char* Text, QWidget* Parent) {
    auto* box = new QLineEdit(QString::fromLatin1(Text), Parent);
    box->setObjectName(QString::fromLatin1(Name));
    return box;
}

QLabel* MakeValue(const char* Name, QWidget* Parent) {
    QLabel* label = MakeLabel(QString(), Parent, QString::fromLatin1(Name));
    label->setMinimumWidth(110);
    label->setFrameShape(QFrame::Panel);
    label->setFrameShadow(QFrame::Sunken);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return label;
}

QPushButton* MakeButton(const char* Name, const char* Caption, QWidget* Parent) {
    auto* button = new QPushButton(QString::fromLatin1(Caption), Parent);
    button->setObjectName(QString::fromLatin1(Name));
    return button;
}

// Caption and control in a row of a frame's grid.
void AddRow(QGridLayout& Grid, const char* Caption, QWidget* Control) {
    const int row = Grid.rowCount();
    Grid.addWidget(new QLabel(QString::fromLatin1(Caption)), row, 0);
    Grid.addWidget(Control, row, 1);
}

}  // namespace

fVirtualScope::fVirtualScope(WindowSet& Windows, VirtualScopeInputs& Inputs, QWidget* parent)
    : QWidget(parent, Qt::Window), windows_(Windows), inputs_(Inputs) {
    setWindowTitle(QStringLiteral("Virtual Telescope"));
    setStyleSheet(FrameStyleSheet());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(BuildUpperHalf());
    layout->addWidget(BuildLowerHalf());
    auto* buttons = new QHBoxLayout;
    cmdOK = MakeButton("cmdOK", "OK", this);
    cmdCancel = MakeButton("cmdCancel", "Cancel", this);
    cmdRun = MakeButton("cmdRun", "Create Cal Points", this);
    buttons->addWidget(cmdRun);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        GetInputs();
        close();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdRun, &QPushButton::clicked, this, [this] { CreateCalPoints(); });

    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(500);
    connect(Timer1, &QTimer::timeout, this, [this] { Timer1Tick(); });
}

QWidget* fVirtualScope::BuildUpperHalf() {
    auto* half = new QWidget(this);
    auto* grid = new QGridLayout(half);
    grid->setContentsMargins(0, 0, 0, 0);

    QGroupBox* position = MakeFrame(QStringLiteral("Position"), half);
    auto* p = new QGridLayout(position);
    txtPhi = MakeBox("txtPhi", "180", position);
    txtTheta = MakeBox("txtTheta", "45", position);
    lblRA = MakeValue("lblRA", position);
    lblDec = MakeValue("lblDec", position);
    lblAlt = MakeValue("lblAlt", position);
    lblAz = MakeValue("lblAz", position);
    lblFieldAngle = MakeValue("lblFieldAngle", position);
    cmdSetPos1 = MakeButton("cmdSetPos1", "Set Position", position);
    AddRow(*p, "Phi", txtPhi);
    AddRow(*p, "Theta", txtTheta);
    AddRow(*p, "RA", lblRA);
    AddRow(*p, "Dec", lblDec);
    AddRow(*p, "Alt", lblAlt);
    AddRow(*p, "Az", lblAz);
    AddRow(*p, "Field Angle", lblFieldAngle);
    p->addWidget(cmdSetPos1, p->rowCount(), 1);

    QGroupBox* rates = MakeFrame(QStringLiteral("Tracking Rates (AS/sec)"), half);
    auto* r = new QGridLayout(rates);
    chkTracking = new QCheckBox(QStringLiteral("Track"), rates);
    chkTracking->setObjectName(QStringLiteral("chkTracking"));
    lblPhiRate = MakeValue("lblPhiRate", rates);
    lblThetaRate = MakeValue("lblThetaRate", rates);
    lblFieldRate = MakeValue("lblFieldRate", rates);
    r->addWidget(chkTracking, 0, 1);
    AddRow(*r, "Phi", lblPhiRate);
    AddRow(*r, "Theta", lblThetaRate);
    AddRow(*r, "Field Angle", lblFieldRate);

    QGroupBox* desired = MakeFrame(QStringLiteral("Desired Position"), half);
    auto* d = new QGridLayout(desired);
    txtRADesired = MakeBox("txtRADesired", "00 00 00", desired);
    txtDecDesired = MakeBox("txtDecDesired", "00 00 00", desired);
    cmdSetPos = MakeButton("cmdSetPos", "Set Position", desired);
    AddRow(*d, "RA", txtRADesired);
    AddRow(*d, "Dec", txtDecDesired);
    d->addWidget(cmdSetPos, d->rowCount(), 1);

    QGroupBox* set = MakeFrame(QStringLiteral("Set Position"), half);
    auto* sg = new QGridLayout(set);
    lblRASet = MakeValue("lblRASet", set);
    lblDecSet = MakeValue("lblDecSet", set);
    AddRow(*sg, "RA", lblRASet);
    AddRow(*sg, "Dec", lblDecSet);

    auto* clock = new QGridLayout;
    lblJD = MakeValue("lblJD", half);
    lblLST = MakeValue("lblLST", half);
    AddRow(*clock, "JD", lblJD);
    AddRow(*clock, "LST", lblLST);

    grid->addWidget(position, 0, 0, 2, 1);
    grid->addWidget(rates, 0, 1);
    grid->addLayout(clock, 1, 1, Qt::AlignTop);
    grid->addWidget(desired, 2, 0);
    grid->addWidget(set, 2, 1);

    // Either button makes a place the set position; ticks then stop at
    // the set position, JD and LST.
    connect(cmdSetPos, &QPushButton::clicked, this, [this] {
        RADesired = RAStrToRad(txtRADesired->text().toStdString());
        DecDesired = DecStrToRad(txtDecDesired->text().toStdString());
        SetPosPending = true;
    });
    connect(cmdSetPos1, &QPushButton::clicked, this, [this] {
        RADesired = RAStrToRad(lblRA->text().toStdString());
        DecDesired = DecStrToRad(lblDec->text().toStdString());
        SetPosPending = true;
    });
    return half;
}

QWidget* fVirtualScope::BuildLowerHalf() {
    QGroupBox* frame = MakeFrame(QString(), this);
    auto* grid = new QGridLayout(frame);
    const struct {
        QLineEdit** Edit;
        const char* Name;
        const char* Caption;
        const char* Unit;
    } rows[] = {
        {&txtNum, "txtNum", "Number of Calibration Points", ""},
        {&txtCone, "txtCone", "Cone Error", "arcminutes"},
        {&txtHub, "txtHub", "Hub Error", "arcminutes"},
        {&txtPAW, "txtPAW", "PA Misalignment West", "arcminutes"},
        {&txtPAN, "txtPAN", "PA Misalignment North", "arcminutes"},
        {&txtLat, "txtLat", "North Latitude", "degrees"},
        {&txtThetaOffset, "txtThetaOffset", "Theta Encoder Offset", "arcminutes"},
        {&txtPhiOffset, "txtPhiOffset", "Phi Encoder Offset", "arcminutes"},
        {&txtdT, "txtdT", "Time Between Cal Points", "minutes"},
        {&txtLST, "txtLST", "LST of First Cal Point", "hours"},
    };
    int row = 0;
    for (const auto& r : rows) {
        *r.Edit = MakeBox(r.Name, "", frame);
        (*r.Edit)->setMaximumWidth(90);
        grid->addWidget(new QLabel(QString::fromLatin1(r.Caption)), row, 0);
        grid->addWidget(*r.Edit, row, 1);
        grid->addWidget(new QLabel(QString::fromLatin1(r.Unit)), row, 2);
        ++row;
    }
    return frame;
}

std::array<fVirtualScope::Box, 10> fVirtualScope::Boxes() const {
    using V = VirtualScopeInputs;
    return {{{txtNum, nullptr, 1},
             {txtCone, &V::VSCone, V::kArcminute},
             {txtHub, &V::VSHub, V::kArcminute},
             {txtPAW, &V::VSPAW, V::kArcminute},
             {txtPAN, &V::VSPAN, V::kArcminute},
             {txtLat, &V::VSLat, V::kDegree},
             {txtThetaOffset, &V::VSThetaOffset, V::kArcminute},
             {txtPhiOffset, &V::VSPhiOffset, V::kArcminute},
             {txtdT, &V::VSdT, 1},
             {txtLST, &V::VSLST, V::kHour}}};
}

// A box whose text is no number keeps the stored value.
void fVirtualScope::GetInputs() {
    for (const Box& b : Boxes()) {
        double x = 0;
        if (!ParseNumber(b.Edit->text().toStdString(), x)) continue;
        if (b.Member)
            inputs_.*b.Member = x * b.Factor;
        else
            inputs_.VSNum = static_cast<int32_t>(std::lround(std::fmin(std::fmax(x, 0), 500)));
    }
}

void fVirtualScope::ShowInputs() {
    for (const Box& b : Boxes()) {
        b.Edit->setText(b.Member ? Q(RoundedText(inputs_.*b.Member / b.Factor, 4))
                                 : Q(IntText(inputs_.VSNum)));
    }
}

void fVirtualScope::FormLoad() {
    ShowInputs();
    // The one model's latitude: the whole program's, with its fit.
    windows_.TestServer.SetLatitude(45.0);
    Timer1->start();
}

void fVirtualScope::Timer1Tick() {
    const ModelState& s = windows_.Chain().Model();
    cAztrue& server = windows_.TestServer;
    lblRASet->setText(Q(RAToHMSStr(RADesired, false, 4)));
    lblDecSet->setText(Q(AngleToDMSStr(DecDesired, false, 3)));
    ++TickCount;
    // The clock in zone -8 with daylight saving, whatever the model says.
    DateTimeRec local = Clock();
    local.TimeZone = -8.0;
    local.DST = true;
    const DateTimeRec sidereal = LTToLST(s, local);
    const double JD = LTToJD(local);
    const double S = local.Hour * 3600 + local.Minute * 60 + local.Second;
    if (TickCount == 1) return;
    double dT = S - LastTime;
    if (dT < 0) dT += 86400;  // past local midnight
    LastTime = S;
    lblJD->setText(Q(RoundedText(JD, 6)));
    lblLST->setText(Q(TimeRecToStr(sidereal)));
    const double LSTRad =
        (sidereal.Hour + sidereal.Minute / 60.0 + sidereal.Second / 3600.0) * 6.283185308 / 24;
    double Phi = RAStrToRad(txtPhi->text().toStdString());
    double Theta = DecStrToRad(txtTheta->text().toStdString());
    if (Phi <= kBadText || Theta <= kBadText || SetPosPending) return;

    double RA = 0;
    double Dec = 0;
    server.EncoderToApparent(LSTRad, JD, Theta, Phi, RA, Dec);
    lblRA->setText(Q(RAToHMSStr(RA, false, 4)));
    lblDec->setText(Q(AngleToDMSStr(Dec, false, 3)));
    double ThetaRate = 0;
    double PhiRate = 0;
    server.GetTrackingRates(LSTRad, JD, RA, Dec, 1, ThetaRate, PhiRate);
    const double field = server.GetFieldAngle(LSTRad, JD, RA, Dec, 1);
    const double fieldRate = server.GetFieldAngleRate(LSTRad, JD, RA, Dec, 1);
    double Alt = 0;
    double Az = 0;
    server.EncoderToAltAz(Theta, Phi, Alt, Az);
    lblAlt->setText(Q(RoundedText(Alt * 180 / kPi, 4)));
    lblAz->setText(Q(RoundedText(Az * 180 / kPi, 4)));
    lblPhiRate->setText(Q(RoundedText(PhiRate * 180 * 3600 / kPi, 3)));
    lblThetaRate->setText(Q(RoundedText(ThetaRate * 180 * 3600 / kPi, 3)));
    lblFieldAngle->setText(Q(RoundedText(field * 180 / kPi, 3)));
    lblFieldRate->setText(Q(RoundedText(fieldRate * 180 / kPi, 3)));
    if (chkTracking->isChecked()) {
        Phi = Phi + dT * PhiRate;
        Theta = Theta + dT * ThetaRate;
        txtPhi->setText(Q(RoundedText(Phi * 180 / kPi, 7)));
        txtTheta->setText(Q(RoundedText(Theta * 180 / kPi, 7)));
    }
}

void fVirtualScope::CreateCalPoints() {
    GetInputs();
    const VirtualScopeInputs& in = inputs_;
    ImaginaryMount m;
    m.Num = in.VSNum;
    m.Cone = in.VSCone;
    m.Hub = in.VSHub;
    m.PAWest = in.VSPAW;
    m.PANorth = in.VSPAN;
    // Degrees to 9 places, so that a latitude typed as 33 stays 33.
    m.Latitude = std::round(in.VSLat / VirtualScopeInputs::kDegree * 1e9) / 1e9;
    m.ThetaOffset = in.VSThetaOffset;
    m.PhiOffset = in.VSPhiOffset;
    m.MinutesBetween = in.VSdT;
    m.FirstLST = in.VSLST;
    std::vector<SyntheticPoint> points;
    std::string error;
    if (!MakeImaginaryMountPoints(windows_.Chain().Model(), m, points, error)) {
        QMessageBox::warning(this, QStringLiteral("Virtual Telescope"), Q(error));
        return;
    }
    // Each call refits and refreshes the windows, and lets events run: the
    // window may close meanwhile, and a second click must not start again.
    QPointer<fVirtualScope> self(this);
    cmdRun->setEnabled(false);
    cAztrue& server = windows_.TestServer;
    server.SetLatitude(m.Latitude);
    server.EnableTermsForAltAz();
    for (const SyntheticPoint& p : points) {
        server.AddCalPoint(p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr, p.DateStr);
    }
    // Like OK, the button closes the window once its work is done. Opening it
    // again writes 45 to the latitude and refits, so a run meant for Track
    // afterwards is best described at latitude 45.
    if (self) {
        cmdRun->setEnabled(true);
        close();
    }
}
