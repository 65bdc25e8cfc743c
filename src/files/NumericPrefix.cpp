#include "files/NumericPrefix.h"

#include <charconv>
#include <limits>

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Whether an out-of-range decimal number is too large rather than too
// small: the power of ten of its first non-zero digit, with the exponent
// added, is positive.
bool IsOverflow(const char* mantissa, const char* mantissaEnd, long exponent) {
    long intDigits = 0;
    long digitIndex = 0;
    long firstNonZero = -1;
    bool inFraction = false;
    for (const char* p = mantissa; p < mantissaEnd; ++p) {
        if (*p == '.') {
            inFraction = true;
            continue;
        }
        if (!inFraction) ++intDigits;
        if (firstNonZero < 0 && *p != '0') firstNonZero = digitIndex;
        ++digitIndex;
    }
    if (firstNonZero < 0) return false;
    return intDigits - 1 - firstNonZero + exponent > 0;
}

}  // namespace

double NumericPrefixValue(const std::string& Text) {
    const char* p = Text.data();
    const char* end = p + Text.size();
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    bool negative = false;
    if (p < end && (*p == '+' || *p == '-')) negative = (*p++ == '-');

    const char* mantissa = p;
    int digits = 0;
    while (p < end && IsDigit(*p)) ++p, ++digits;
    if (p < end && *p == '.') {
        const char* point = p++;
        int fractionDigits = 0;
        while (p < end && IsDigit(*p)) ++p, ++fractionDigits;
        // "5." is the number 5; a lone "." is no number.
        if (digits == 0 && fractionDigits == 0) p = point;
        digits += fractionDigits;
    }
    if (digits == 0) return 0.0;
    const char* mantissaEnd = p;

    // The exponent counts only when at least one digit follows the "e".
    long exponent = 0;
    if (p < end && (*p == 'e' || *p == 'E')) {
        const char* q = p + 1;
        bool negativeExp = false;
        if (q < end && (*q == '+' || *q == '-')) negativeExp = (*q++ == '-');
        if (q < end && IsDigit(*q)) {
            while (q < end && IsDigit(*q)) {
                if (exponent < 100000) exponent = exponent * 10 + (*q - '0');
                ++q;
            }
            if (negativeExp) exponent = -exponent;
            p = q;
        }
    }

    double value = 0.0;
    const auto res = std::from_chars(mantissa, p, value, std::chars_format::general);
    if (res.ec == std::errc::result_out_of_range) {
        value = IsOverflow(mantissa, mantissaEnd, exponent)
                    ? std::numeric_limits<double>::infinity()
                    : 0.0;
    } else if (res.ec != std::errc()) {
        value = 0.0;
    }
    return negative ? -value : value;
}
