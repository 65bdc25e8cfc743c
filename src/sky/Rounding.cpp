#include "sky/Rounding.h"

#include <cmath>

double VbInt(double x) {
    return std::floor(x);
}

double VbTrunc(double x) {
    if (x < 0) return -std::floor(-x);
    return std::floor(x);
}

double RoundHalfEven(double x) {
    // Done by hand rather than through the floating-point rounding mode, so
    // that nothing outside can change the result.
    double lower = std::floor(x);
    double diff = x - lower;
    if (diff < 0.5) return lower;
    if (diff > 0.5) return lower + 1.0;
    return std::fmod(lower, 2.0) == 0.0 ? lower : lower + 1.0;
}
