#include "windows/fMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "files/CalFile.h"
#include "files/TraceLog.h"
#include "files/WindowHooks.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "windows/Controls.h"
#include "windows/FileDialog.h"
#include "windows/PictureBox.h"
#include "windows/StarDots.h"
#include "windows/WindowSet.h"
#include "windows/WindowsDisplay.h"
#include "windows/TestMenu.h"
#include "windows/fAbout.h"

namespace {

QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

// A frame with a caption, or a plain frame for an empty caption.
QGroupBox* Group(const QString& Caption, QWidget* parent) {
    return MakeFrame(Caption, parent);
}

QLabel* Label(const QString& Text, QWidget* parent, const char* Name = nullptr) {
    return MakeLabel(Text, parent, Name ? QString::fromLatin1(Name) : QString());
}

// The display of a window over a model of its own, before its windows
// install theirs.
DisplayRefresh& NoWindows() {
    static NoDisplay none;
    return none;
}

// The filter list of the calibration file choosers.
std::string CalFileFilter() {
    return MakeFilter("", "Aztrue Files (*.AZT)", "*.AZT") +
           MakeFilter("", "All Files (*.*)", "*.*");
}

}  // namespace

fMain::fMain(WindowSet& Windows)
    : QMainWindow(nullptr), windows_(Windows), chain_(&Windows.Chain()), s_(chain_->Model()) {
    Build();
}

fMain::fMain(ModelState& s)
    : QMainWindow(nullptr),
      ownChain_(std::make_unique<RecalcChain>(s, NoWindows())),
      ownDisplay_(std::make_unique<WindowsDisplay>(*ownChain_, std::function<void()>())),
      windows_(ownDisplay_->Windows()),
      chain_(ownChain_.get()),
      s_(s) {
    ownChain_->SetDisplay(*ownDisplay_);
    windows_.Main.Adopt(*this);
    Build();
    FormLoad();
}

fMain::~fMain() = default;

void fMain::Build() {
    OnModelChanged = [this] { RefitAndRedraw(); };
    // Long file routines let queued window events run through this hook.
    SetPendingEventsHook([] { QCoreApplication::processEvents(); });
    BuildControls();
    BuildMenus();
}

bool fMain::DisplayEnabled() const {
    return chain_->DisplayEnabled();
}

void fMain::SetDisplayEnabled(bool Enabled) {
    chain_->SetDisplayEnabled(Enabled);
}

void fMain::BuildControls() {
    auto* central = new QWidget(this);
    central->setFixedSize(kInnerWidth, kInnerHeight);
    // Captions sit on the frame line, as on the classic desktop, so that the
    // five rows fit the fixed height round the 313-pixel plot.
    central->setStyleSheet(FrameStyleSheet());
    auto* top = new QVBoxLayout(central);
    top->setContentsMargins(4, 2, 4, 2);
    top->setSpacing(2);

    // Row 1: the name of the calibration file.
    lblFileName = Label(QString(), central, "lblFileName");
    top->addWidget(lblFileName);

    // Row 2: axis alignment error, number of points, sensitivity.
    auto* row2 = new QHBoxLayout;
    row2->setSpacing(3);
    auto* axis = Group(QStringLiteral("Axis Alignment Error"), central);
    auto* axisGrid = new QGridLayout(axis);
    axisGrid->setContentsMargins(4, 0, 4, 2);
    axisGrid->setVerticalSpacing(0);
    lblErr[3] = Label(QString(), axis, "lblErr_3");
    lblErr[4] = Label(QString(), axis, "lblErr_4");
    lblNorthDir = Label(QStringLiteral("to North"), axis, "lblNorthDir");
    lblWestDir = Label(QStringLiteral("to West"), axis, "lblWestDir");
    for (QLabel* l : {lblErr[3], lblErr[4]}) l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    axisGrid->addWidget(lblErr[3], 0, 0);
    axisGrid->addWidget(lblNorthDir, 0, 1);
    axisGrid->addWidget(lblErr[4], 1, 0);
    axisGrid->addWidget(lblWestDir, 1, 1);
    axisGrid->setColumnMinimumWidth(0, 52);
    axisGrid->setColumnMinimumWidth(1, 52);
    row2->addWidget(axis, 1);

    auto* num = Group(QString(), central);
    auto* numBox = new QVBoxLayout(num);
    numBox->setContentsMargins(4, 2, 4, 2);
    numBox->setSpacing(0);
    numBox->addWidget(Label(QStringLiteral("Cal Points"), num), 0, Qt::AlignHCenter);
    lblNum = Label(QString(), num, "lblNum");
    numBox->addWidget(lblNum, 0, Qt::AlignHCenter);
    row2->addWidget(num, 0);

    auto* sen = Group(QString(), central);
    auto* senBox = new QVBoxLayout(sen);
    senBox->setContentsMargins(4, 2, 4, 2);
    senBox->setSpacing(0);
    lblSen1 = Label(QStringLiteral("Sensitivity"), sen, "lblSen1");
    senBox->addWidget(lblSen1, 0, Qt::AlignHCenter);
    lblSensitivity = Label(QString(), sen, "lblSensitivity");
    senBox->addWidget(lblSensitivity, 0, Qt::AlignHCenter);
    row2->addWidget(sen, 0);
    top->addLayout(row2);

    // Row 3: graph type and scale, the options of each group one above the other.
    auto* row3 = new QHBoxLayout;
    row3->setSpacing(3);
    auto* type = Group(QStringLiteral("Graph type"), central);
    auto* typeBox = new QVBoxLayout(type);
    typeBox->setContentsMargins(6, 0, 4, 1);
    typeBox->setSpacing(0);
    optError = new QRadioButton(QStringLiteral("Errors"), type);
    optError->setObjectName(QStringLiteral("optError"));
    Option1 = new QRadioButton(QStringLiteral("Positions"), type);
    Option1->setObjectName(QStringLiteral("Option1"));
    optError->setChecked(true);
    typeBox->addWidget(optError);
    typeBox->addWidget(Option1);
    row3->addWidget(type);
    auto* scale = Group(QStringLiteral("Scale graph using"), central);
    auto* scaleBox = new QVBoxLayout(scale);
    scaleBox->setContentsMargins(6, 0, 4, 1);
    scaleBox->setSpacing(0);
    optAll = new QRadioButton(QStringLiteral("All Points"), scale);
    optAll->setObjectName(QStringLiteral("optAll"));
    optSelected = new QRadioButton(QStringLiteral("Selected Points"), scale);
    optSelected->setObjectName(QStringLiteral("optSelected"));
    optAll->setChecked(true);
    scaleBox->addWidget(optAll);
    scaleBox->addWidget(optSelected);
    row3->addWidget(scale);
    top->addLayout(row3);
    for (QRadioButton* b : {optError, Option1, optAll, optSelected}) {
        connect(b, &QRadioButton::clicked, this, [this] { UpdateGraph(); });
    }

    // Row 4: the plot.
    picError = new PictureBox(kPicErrorSize, central);
    picError->setObjectName(QStringLiteral("picError"));
    picError->OnMouseDown = [this](double X, double Y) { PicErrorMouseDown(X, Y); };
    top->addWidget(picError, 0, Qt::AlignHCenter);

    // Row 5: pointing error of all and of the selected points.
    auto* err = Group(QStringLiteral("Pointing Error"), central);
    auto* errGrid = new QGridLayout(err);
    errGrid->setContentsMargins(6, 0, 6, 2);
    errGrid->setVerticalSpacing(0);
    errGrid->addWidget(Label(QStringLiteral("RMS"), err), 0, 1, Qt::AlignRight);
    errGrid->addWidget(Label(QStringLiteral("Max"), err), 0, 2, Qt::AlignRight);
    errGrid->addWidget(Label(QStringLiteral("All Points"), err), 1, 0);
    errGrid->addWidget(Label(QStringLiteral("Selected Points"), err), 2, 0);
    lblRMSAll = Label(QString(), err, "lblRMSAll");
    lblMaxAll = Label(QString(), err, "lblMaxAll");
    lblRMSSelected = Label(QString(), err, "lblRMSSelected");
    lblMaxSelected = Label(QString(), err, "lblMaxSelected");
    errGrid->addWidget(lblRMSAll, 1, 1, Qt::AlignRight);
    errGrid->addWidget(lblMaxAll, 1, 2, Qt::AlignRight);
    errGrid->addWidget(lblRMSSelected, 2, 1, Qt::AlignRight);
    errGrid->addWidget(lblMaxSelected, 2, 2, Qt::AlignRight);
    errGrid->setColumnStretch(1, 1);
    errGrid->setColumnStretch(2, 1);
    auto* row5 = new QHBoxLayout;
    row5->setSpacing(3);
    row5->addWidget(err, 1);
    row5->addLayout(BuildButtons(central));
    top->addLayout(row5);
    top->addStretch(1);

    setCentralWidget(central);
}

// The three buttons beside the pointing error, one above the other, each
// showing the window that the View entry of the same meaning shows.
QLayout* fMain::BuildButtons(QWidget* Parent) {
    auto* column = new QVBoxLayout;
    column->setSpacing(1);
    column->addStretch(1);
    auto make = [this, Parent, column](const QString& Caption, const QString& Name,
                                       std::function<void()> Show) {
        auto* b = new QPushButton(Caption, Parent);
        b->setObjectName(Name);
        b->setFixedHeight(kButtonHeight);
        connect(b, &QPushButton::clicked, this, std::move(Show));
        column->addWidget(b);
        return b;
    };
    cmdAnalysis = make(QStringLiteral("Error Graph"), QStringLiteral("cmdAnalysis"),
                       [this] { windows_.Analysis.Show(); });
    cmdMountErrors = make(QStringLiteral("Mount Model"), QStringLiteral("cmdMountErrors"),
                          [this] { windows_.Errors.Show(); });
    cmdCalPoints = make(QStringLiteral("Cal Points"), QStringLiteral("cmdCalPoints"),
                        [this] { windows_.CalPoints.Show(); });
    return column;
}

void fMain::BuildMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    menu_OpenCal = file->addAction(QStringLiteral("&Open Calibration..."));
    menu_SaveCalstarFile = file->addAction(QStringLiteral("&Save Calibration As..."));
    file->addSeparator();
    menu_exit = file->addAction(QStringLiteral("E&xit"));
    connect(menu_OpenCal, &QAction::triggered, this, [this] { OpenCalibration(); });
    connect(menu_SaveCalstarFile, &QAction::triggered, this, [this] { SaveCalibrationAs(); });
    connect(menu_exit, &QAction::triggered, this, [this] {
        UnloadAll();
        close();
    });

    BuildViewMenu();

    // The development menu; the load switches it off for the operator.
    menuTest = menuBar()->addMenu(QStringLiteral("&Test"));
    Tests = new TestMenu(windows_, *menuTest);

    menuAbout = menuBar()->addAction(QStringLiteral("&About"));
    connect(menuAbout, &QAction::triggered, this, [this] { ShowAbout(); });
}

// The View menu in its order; an entry whose window does not exist yet is
// left out rather than shown doing nothing, and takes its place in the list
// when the window comes.
void fMain::BuildViewMenu() {
    struct Entry {
        const char* Name;
        const char* Caption;
        std::function<void()> Show;  // empty: no such window yet
    };
    const Entry entries[] = {
        {"menu_setup", "&Parameters", [this] { windows_.Setup.Show(); }},
        {"menu_calstars", "&Calibration Points", [this] { windows_.CalPoints.Show(); }},
        {"menu_mount", "&Mount Model", [this] { windows_.Errors.Show(); }},
        {"menu_analysis", "&Graphical Error Analysis", [this] { windows_.Analysis.Show(); }},
        {"menu_Advanced", "&Advanced Features...", [this] { windows_.Advanced.Show(); }},
    };
    menuView = menuBar()->addMenu(QStringLiteral("&View"));
    for (const Entry& e : entries) {
        if (!e.Show) continue;
        QAction* a = menuView->addAction(QString::fromLatin1(e.Caption));
        a->setObjectName(QString::fromLatin1(e.Name));
        connect(a, &QAction::triggered, this, e.Show);
    }
    menu_calstars = menuView->findChild<QAction*>(QStringLiteral("menu_calstars"));
    menu_mount = menuView->findChild<QAction*>(QStringLiteral("menu_mount"));
    menu_analysis = menuView->findChild<QAction*>(QStringLiteral("menu_analysis"));
}

void fMain::FormLoad() {
    LogLine("Form_Load()");
    menuTest->menuAction()->setVisible(false);
    s_.TestLog = false;
    Plots.GraphColor = RGB(60, 60, 60);
    if (!s_.ServerStarted) InitModel(s_);
    setWindowTitle(Q(s_.Version));
    SetDisplayEnabled(true);
    UpdateGraph();
    // This touch loads the Model Parameters window, unseen, if the graph
    // did not already.
    for (int i = 3; i <= s_.NumTerms && i <= kNumTerms; ++i) {
        parameters_.lblErr[static_cast<size_t>(i)].clear();
    }
    windows_.Errors.Get().ClearTermValues();
    lblFileName->clear();
    lblNorthDir->setVisible(false);
    lblWestDir->setVisible(false);
    // The window has a fixed size: the inner area and the menu bar above it.
    setFixedSize(kInnerWidth, kInnerHeight + menuBar()->sizeHint().height());
    QCoreApplication::processEvents();
}

void fMain::UpdateGraph() {
    if (optError->isChecked()) {
        Plots.DrawError(s_, picError->Picture(), optAll->isChecked());
    } else {
        Plots.DrawGeo(s_, picError->Picture());
    }
    picError->update();
    DisplayErrors();
}

void fMain::DisplayErrors() {
    const DisplayFigures f = ComputeDisplayFigures(s_);
    const MainFigures& m = f.Main;
    parameters_ = f.Parameters;

    lblNorthDir->setText(Q(m.lblNorthDir));
    lblWestDir->setText(Q(m.lblWestDir));
    lblErr[3]->setText(Q(m.lblErr3));
    lblNorthDir->setVisible(m.NorthDirVisible);
    lblErr[4]->setText(Q(m.lblErr4));
    lblWestDir->setVisible(m.WestDirVisible);
    lblRMSSelected->setText(Q(m.lblRMSSelected));
    lblMaxSelected->setText(Q(m.lblMaxSelected));
    lblMaxAll->setText(Q(m.lblMaxAll));
    lblRMSAll->setText(Q(m.lblRMSAll));
    SetTextColor(lblSen1, m.SensitivityColor);
    SetTextColor(lblSensitivity, m.SensitivityColor);
    lblSensitivity->setText(Q(m.lblSensitivity));
    lblNum->setText(Q(m.lblNum));
    windows_.Errors.Get().ShowFigures(parameters_);
}

void fMain::UnloadAll() {
    LogLine("UnloadAll()");
    windows_.UnloadAll();
    if (About) About->close();
    LogLine("UnloadAll finished");
}

void fMain::PicErrorMouseDown(double X, double Y) {
    const int BestIndex = DotUnderMouse(Plots.StarX, Plots.StarY, s_.NumCalPoints, X, Y);
    if (BestIndex > 0) {
        CalPoint& p = s_.CalPoints[static_cast<size_t>(BestIndex)];
        p.Used = !p.Used;
        if (OnModelChanged) OnModelChanged();
    }
}

void fMain::RefitAndRedraw() {
    chain_->CalibrateAndDisplay();
}

void fMain::Message(const QString& Text) {
    QMessageBox box(QMessageBox::NoIcon, QApplication::applicationDisplayName(), Text,
                    QMessageBox::Ok, this);
    box.exec();
}

void fMain::OpenCalibration() {
    if (s_.NumCalPoints > 0) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Warning"),
                        QStringLiteral("This will clear current calibration data.  Proceed?"),
                        QMessageBox::Yes | QMessageBox::No, this);
        box.setDefaultButton(QMessageBox::Yes);
        if (box.exec() != QMessageBox::Yes) return;
    }

    FileDialogArgs args;
    args.Flags = kHideReadOnly;
    // Only a server without a file yet starts in Path; otherwise the chooser
    // starts at the file in use or in the current folder.
    args.InitialDir = (s_.ServerStarted && s_.FullFileName.empty()) ? s_.Path : std::string();
    args.Filter = CalFileFilter();
    args.FilterIndex = 1;
    args.DefaultExt = "AZT";
    args.FileName = s_.FullFileName;
    args.Title = "Load Aztrue File";
    args.Owner = this;
    args.OpenDialog = true;
    const std::string name = ShowFileDialog(args);
    if (name.empty()) return;
    OpenCalibrationFile(name);
}

bool fMain::OpenCalibrationFile(const std::string& Name) {
    SetDisplayEnabled(false);
    UnloadAll();
    if (LoadCalFile(s_, Name)) {
        SetDisplayEnabled(true);
        s_.FullFileName = Name;
        lblFileName->setText(Q(s_.Str.HasFileName(Name)));
        if (OnModelChanged) OnModelChanged();
        return true;
    }
    SetDisplayEnabled(true);
    Message(QStringLiteral("The file you are trying to open is not a valid calibration file."));
    return false;
}

void fMain::SaveCalibrationAs() {
    if (s_.NumCalPoints == 0) {
        Message(QStringLiteral("There are no calibration points to save."));
        return;
    }
    FileDialogArgs args;
    args.Flags = kHideReadOnly;
    args.Filter = CalFileFilter();
    args.FilterIndex = 1;
    args.DefaultExt = "AZT";
    args.FileName = s_.FullFileName;
    args.Title = "Save Aztrue File";
    args.Owner = this;
    args.OpenDialog = false;
    const std::string name = ShowFileDialog(args);
    if (name.empty()) return;

    if (SaveCalFile(s_, name)) {
        s_.FullFileName = name;
        lblFileName->setText(Q(s_.Str.HasFileName(name)));
    } else {
        Message(QStringLiteral("Unable to save the current calibration."));
    }
}

void fMain::ShowAbout() {
    if (!About) About = new fAbout(s_.Version, this);
    About->show();
    About->raise();
    About->activateWindow();
}

void fMain::closeEvent(QCloseEvent* event) {
    LogLine("Form_Unload(0)");
    UnloadAll();
    LogLine("Form_Unload finished");
    event->accept();
}
