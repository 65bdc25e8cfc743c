// Any text typed in as an angle. Each parser gives radians within its
// range, or its mark of a bad text: never an infinity or a NaN.
#include <cmath>
#include <cstdint>
#include <string>

#include "FuzzCheck.h"
#include "model/Constants.h"
#include "sky/cString.h"
#include "sky/mStrings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const cString strings;

    const double hours = strings.StrToRARad(text);
    FuzzCheck(hours == -1 || (hours >= 0 && hours <= kFullTurn),
              "StrToRARad gives 0 to a full turn or -1");

    const double ra = RAStrToRad(text);
    FuzzCheck(ra == kBadAngleText || std::fabs(ra) <= kFullTurn,
              "RAStrToRad gives up to a full turn either way or its bad mark");

    const double dec = DecStrToRad(text);
    FuzzCheck(dec == kBadAngleText || std::isfinite(dec), "DecStrToRad gives a finite angle");
    return 0;
}
