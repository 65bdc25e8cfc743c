// Any text as a number line of a file. The numeric-prefix reading gives a
// number or an infinity, never a NaN; where the strict reading of typed-in
// numbers takes the whole text, both give the same bits; and the exact text
// of any finite value it gives reads back to the same bits.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "FuzzCheck.h"
#include "files/NumericPrefix.h"
#include "sky/NumberText.h"

namespace {

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const double value = NumericPrefixValue(text);
    FuzzCheck(!std::isnan(value), "the numeric prefix of a text is never NaN");

    double strict = 0;
    if (ParseNumber(text, strict))
        FuzzCheck(SameBits(value, strict), "the strict and the prefix reading agree");

    if (std::isfinite(value)) {
        char exact[40];
        std::snprintf(exact, sizeof exact, "%.17g", value);
        FuzzCheck(SameBits(NumericPrefixValue(exact), value), "17 digits read back exactly");
    }
    return 0;
}
