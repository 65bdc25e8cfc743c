// The glowing dot of a calibration point, the same in every plot: its colour
// says whether the point is in use and on which side of the primary axis the
// mount saw it, and its soft edge adds to what is already drawn.
#pragma once

#include <array>
#include <cstdint>

#include "windows/Picture.h"

struct ModelState;

// Dot colour of CalPoint Index, each channel 0 to 255:
// used with AxisTheta >= 0: (255, 255, 80); used with AxisTheta < 0:
// (255, 60, 150); not used: (50, 50, 255).
void GetStarColor(const ModelState& s, int Index, int16_t& Red, int16_t& Green, int16_t& Blue);

// New colour of the dot pixel at offset (Dx, Dy) from the dot's centre, over
// the pixel's present colour Old. The dot's colour is scaled by the gain
// 2.7 ^ (-(Dx^2 + Dy^2 - 1) * 0.5) and each channel keeps the brighter of
// the scaled dot and the old pixel, rounded (halves to even), at most 255.
long BlendDotPixel(int Dx, int Dy, int Red, int Green, int Blue, long Old);

// The 7 by 7 dot round pixel (CX, CY), blended pixel by pixel over what the
// picture holds.
void DrawStarDot(cPicture& Pic, int CX, int CY, int Red, int Green, int Blue);

// The point under a mouse press at (X, Y): of points 1 to N, the one whose
// place (StarX(i), StarY(i)) in the last plot is nearest, if nearer than 5
// pixels; else 0. Of two at the same distance the lower index wins.
int DotUnderMouse(const std::array<double, 1001>& StarX, const std::array<double, 1001>& StarY,
                  int N, double X, double Y);
