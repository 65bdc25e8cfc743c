#include "windows/CalPointsTable.h"

#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

namespace {

// Centre of each column and its header, in the order of CalPointCells.
constexpr std::array<int, 8> kCentres = {22, 75, 142, 220, 312, 395, 475, 550};
const std::array<std::string, 8> kHeaders = {"",    "Date",  "Time", "RA",
                                             "Dec", "Theta", "Phi",  "Error"};
constexpr std::array<int, 8> kGridX = {35, 115, 170, 270, 355, 435, 515, 580};
constexpr int kHeaderY = 17;
constexpr int kFrameTop = 12;
constexpr int kFrameLeft = 10;
constexpr int kFrameRight = 644;

// Text centred on a column, the left edge a whole pixel.
void PrintCentred(cPicture& Pic, int Centre, int Y, const std::string& Text) {
    const double x = RoundHalfEven(Centre - Pic.TextWidth(Text) / 2.0);
    Pic.Print(x, Y, Text);
}

}  // namespace

int RowTop(int Row) {
    return 35 + 20 * Row;
}

int RowAt(double Y) {
    return static_cast<int>(RoundHalfEven((Y - 35) / 20 - 0.5));
}

std::array<std::string, 8> CalPointCells(const ModelState& s, int Index) {
    const CalPoint& p = s.CalPoints[static_cast<size_t>(Index)];
    // Theta from -half to +half a turn, Phi from 0 to a full turn.
    double theta = p.AxisTheta;
    if (theta < -kHalfTurn) theta = theta + kFullTurn;
    if (theta > kHalfTurn) theta = theta - kFullTurn;
    double phi = p.AxisPhi;
    if (phi < 0) phi = phi + kFullTurn;
    const double E = p.DistErr * 3600 * 180 / kHalfTurn;  // arcseconds
    // The number with a blank in the place of its sign.
    std::string number = IntText(Index);
    number.insert(number.begin(), ' ');
    return {number,
            p.DateStr,
            p.TimeStr,
            s.Str.RARadToStr(p.RA, "a"),
            s.Str.DecRadToStr(p.Dec, "a"),
            s.Str.DecRadToStr(theta, "a"),
            s.Str.DecRadToStr(phi, "a"),
            RoundedText(E, E < 1000 ? 1 : 0) + "\""};
}

void DrawCalPointsTable(const ModelState& s, const RowMarks& Selected, cPicture& Pic) {
    const int N = s.NumCalPoints;
    const int B = RowTop(N);
    // The picture takes the table's size before anything is drawn, so that
    // no row falls outside it.
    Pic.BackColor = kTableBackColor;
    Pic.SetSize(kTableWidth, B + 10);

    Pic.ForeColor = kTableTextColor;
    for (size_t c = 0; c < kHeaders.size(); ++c)
        PrintCentred(Pic, kCentres[c], kHeaderY, kHeaders[c]);

    for (int row = 0; row < N; ++row) {
        Pic.ForeColor = kTableGridColor;
        Pic.Line(kFrameLeft, RowTop(row), kTableWidth, RowTop(row));
        Pic.ForeColor = Selected[static_cast<size_t>(row)] ? kTableSelectedColor : kTableTextColor;
        const auto cells = CalPointCells(s, row + 1);
        for (size_t c = 0; c < cells.size(); ++c) {
            PrintCentred(Pic, kCentres[c], RowTop(row) + 3, cells[c]);
        }
    }

    Pic.ForeColor = kTableGridColor;
    Pic.Line(kFrameLeft, B, kTableWidth, B);
    for (int x : kGridX) Pic.Line(x, kFrameTop, x, B);

    Pic.ForeColor = kTableTextColor;
    Pic.Line(kFrameLeft, kFrameTop, kTableWidth, kFrameTop);
    Pic.Line(kFrameLeft, B, kTableWidth, B);
    Pic.Line(kFrameLeft, kFrameTop, kFrameLeft, B);
    Pic.Line(kFrameRight, kFrameTop, kFrameRight, B);
}
