// The table of the Calibration Points window, drawn on a picture: header,
// one row per calibration point with its cells, the grid and the frame.
// The "Use?" boxes are controls of the window, placed by UseBoxTop.
#pragma once

#include <array>
#include <string>

#include "model/Constants.h"
#include "windows/Picture.h"

struct ModelState;

// Marks of the rows, by row (0 is CalPoint 1).
using RowMarks = std::array<bool, 1001>;

// Colours of the table.
inline constexpr long kTableBackColor = RGB(250, 250, 250);
inline constexpr long kTableGridColor = RGB(210, 210, 210);
inline constexpr long kTableTextColor = RGB(0, 0, 0);
inline constexpr long kTableSelectedColor = RGB(255, 0, 0);

// Geometry in pixels of the picture: width, the left edge of a row's box,
// a row's top line, and the row under a press at height Y (may lie outside
// the table).
inline constexpr int kTableWidth = 645;
inline constexpr int kUseBoxLeft = 585;
inline constexpr int kUseBoxHeight = 17;
int RowTop(int Row);
int RowAt(double Y);

// Texts of the cells of CalPoint Index, in the column order number, date,
// time, RA, Dec, Theta, Phi, error.
std::array<std::string, 8> CalPointCells(const ModelState& s, int Index);

// Sizes Pic to the table of the model's points and draws it; rows marked
// in Selected are written in red.
void DrawCalPointsTable(const ModelState& s, const RowMarks& Selected, cPicture& Pic);
