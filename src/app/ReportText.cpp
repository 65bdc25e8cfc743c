#include "app/ReportText.h"

#include <cmath>
#include <iomanip>
#include <sstream>

#include "model/ModelState.h"
#include "sky/NumberText.h"

double Arcsec(const ModelState& s, double radians) {
    return s.Math.RadToAS(radians);
}

std::string As(double arcsec, int decimals) {
    if (!std::isfinite(arcsec)) return "-";
    return RoundedText(arcsec, decimals) + "\"";
}

std::string JsonString(const std::string& text) {
    std::string outText = "\"";
    for (unsigned char c : text) {
        switch (c) {
            case '"':
                outText += "\\\"";
                break;
            case '\\':
                outText += "\\\\";
                break;
            case '\n':
                outText += "\\n";
                break;
            case '\r':
                outText += "\\r";
                break;
            case '\t':
                outText += "\\t";
                break;
            default:
                if (c < 0x20) {
                    std::ostringstream hex;
                    hex << "\\u" << std::hex << std::setw(4) << std::setfill('0')
                        << static_cast<int>(c);
                    outText += hex.str();
                } else {
                    outText += static_cast<char>(c);
                }
        }
    }
    return outText + "\"";
}

std::string JsonNumber(double x) {
    return std::isfinite(x) ? NumberText(x) : "null";
}

std::string Padded(const std::string& text, size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}
