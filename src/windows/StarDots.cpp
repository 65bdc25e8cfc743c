#include "windows/StarDots.h"

#include <algorithm>
#include <cmath>

#include "model/ModelState.h"
#include "sky/Rounding.h"

void GetStarColor(const ModelState& s, int Index, int16_t& Red, int16_t& Green, int16_t& Blue) {
    const CalPoint& p = s.CalPoints[static_cast<size_t>(Index)];
    if (!p.Used) {
        Red = 50;
        Green = 50;
        Blue = 255;
    } else if (p.AxisTheta >= 0) {
        Red = 255;
        Green = 255;
        Blue = 80;
    } else {
        Red = 255;
        Green = 60;
        Blue = 150;
    }
}

long BlendDotPixel(int Dx, int Dy, int Red, int Green, int Blue, long Old) {
    // The old colour taken apart with whole divisions that cut toward zero,
    // so that the -1 of a pixel outside the picture gives harmless channels.
    const long OldBlue = Old / 65536;
    const long OldGreen = (Old - OldBlue * 65536) / 256;
    const long OldRed = Old - OldGreen * 256 - OldBlue * 65536;
    const double Gain = std::pow(2.7, -(Dx * Dx + Dy * Dy - 1) * 0.5);
    auto channel = [Gain](int Dot, long OldChannel) {
        const double v = RoundHalfEven(std::max(Dot * Gain, static_cast<double>(OldChannel)));
        return std::min(static_cast<long>(v), 255L);
    };
    return RGB(static_cast<int>(channel(Red, OldRed)), static_cast<int>(channel(Green, OldGreen)),
               static_cast<int>(channel(Blue, OldBlue)));
}

void DrawStarDot(cPicture& Pic, int CX, int CY, int Red, int Green, int Blue) {
    for (int Dx = -3; Dx <= 3; ++Dx) {
        for (int Dy = -3; Dy <= 3; ++Dy) {
            const long Old = Pic.Point(CX + Dx, CY + Dy);
            Pic.PSet(CX + Dx, CY + Dy, BlendDotPixel(Dx, Dy, Red, Green, Blue, Old));
        }
    }
}

int DotUnderMouse(const std::array<double, 1001>& StarX, const std::array<double, 1001>& StarY,
                  int N, double X, double Y) {
    double Best = 1E+20;
    int BestIndex = 0;
    for (int i = 1; i <= std::min(N, 1000); ++i) {
        const double dx = X - StarX[static_cast<size_t>(i)];
        const double dy = Y - StarY[static_cast<size_t>(i)];
        const double D = std::sqrt(dx * dx + dy * dy);
        // Strictly nearer only: of two at the same distance the lower index stays.
        if (D < Best) {
            Best = D;
            BestIndex = i;
        }
    }
    return Best < 5 ? BestIndex : 0;
}
