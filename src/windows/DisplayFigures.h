// The figures of the main window and of the Model Parameters window, worked
// out from the model as text, colour and visibility, so that the windows only
// copy them into their labels.
#pragma once

#include <array>
#include <string>

#include "model/Constants.h"

struct ModelState;

// An angle in radians as text: degrees with 2 decimals and the degree sign;
// below one degree arcminutes with 2 decimals and "'"; below one arcminute
// arcseconds with 1 decimal and the double-quote character. The tests use
// the unrounded values, so 0.99999 arcminutes reads 60".
std::string ErrStr(double Value);

// The tooltip of a term's value: "Standard error 1.2\", significance 3.4"
// (the value over its standard error), or a note that the points leave no
// freedom for an error when Sigma is not a finite number.
std::string TermTipText(double Sigma, double Significance);

// Text colour of the sensitivity labels: black up to 300, red above.
inline constexpr long kSensitivityOkColor = 0;
inline constexpr long kSensitivityHighColor = 255;

// Labels of the main window.
struct MainFigures {
    std::string lblErr3;      // size of the north misalignment, empty when term 3 is off
    std::string lblErr4;      // size of the west misalignment, empty when term 4 is off
    std::string lblNorthDir;  // "to North" or "to South"
    bool NorthDirVisible = false;
    std::string lblWestDir;  // "to West" or "to East"
    bool WestDirVisible = false;
    std::string lblNum;  // used / all points
    std::string lblSensitivity;
    long SensitivityColor = kSensitivityOkColor;  // of lblSen1 and lblSensitivity
    std::string lblRMSAll;
    std::string lblMaxAll;
    std::string lblRMSSelected;  // empty while all points are used
    std::string lblMaxSelected;  // empty while all points are used
};

// Labels of the Model Parameters window that the same refresh fills.
struct ModelParameterFigures {
    std::string lblPhi0;    // term 1 with the Phi encoder offset
    std::string lblTheta0;  // term 2 with the Theta encoder offset
    // Signed value of term n in element n, n from 3 to 46; empty for a term
    // the fit left out.
    std::array<std::string, kNumTerms + 1> lblErr{};
    // Tooltip of the value label of term n (1 lblPhi0, 2 lblTheta0, 3 to 46
    // lblErr): its standard error and significance; empty for a term the
    // fit left out.
    std::array<std::string, kNumTerms + 1> TermTip{};
    bool chkRefraction = false;
    std::string txtMaxSensitivity;
    std::string lblSensitivity;
    long SensitivityColor = kSensitivityOkColor;
    std::string lblRMSAll;
    std::string lblMaxAll;
    std::string lblRMSSelected;
    std::string lblMaxSelected;
};

struct DisplayFigures {
    MainFigures Main;
    ModelParameterFigures Parameters;
};

// All figures of both windows from the state of the last fit.
DisplayFigures ComputeDisplayFigures(const ModelState& s);
