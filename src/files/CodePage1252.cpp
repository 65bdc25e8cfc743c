#include "files/CodePage1252.h"

#include <array>
#include <cstdint>

namespace {

// Code points of bytes 0x80 to 0x9F; the other bytes equal their code point.
// Unassigned bytes keep their own number.
constexpr std::array<char32_t, 32> kHighControlRange = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Windows-1252 byte of a code point, or '?' when it has none.
char ToCp1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (size_t i = 0; i < kHighControlRange.size(); ++i)
        if (kHighControlRange[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}

// Decodes one UTF-8 sequence at text[i]. Returns its length, or 0 when the
// bytes there are not a well-formed sequence (overlong forms, surrogates and
// values above U+10FFFF included).
size_t DecodeUtf8(const std::string& text, size_t i, char32_t& c) {
    const auto byte = [&](size_t k) { return static_cast<uint8_t>(text[k]); };
    const uint8_t b0 = byte(i);
    size_t len = 0;
    char32_t min = 0;
    if (b0 < 0x80) {
        c = b0;
        return 1;
    } else if ((b0 & 0xE0) == 0xC0) {
        len = 2, c = b0 & 0x1F, min = 0x80;
    } else if ((b0 & 0xF0) == 0xE0) {
        len = 3, c = b0 & 0x0F, min = 0x800;
    } else if ((b0 & 0xF8) == 0xF0) {
        len = 4, c = b0 & 0x07, min = 0x10000;
    } else {
        return 0;
    }
    if (i + len > text.size()) return 0;
    for (size_t k = 1; k < len; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) return 0;
        c = (c << 6) | (byte(i + k) & 0x3F);
    }
    if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
    return len;
}

}  // namespace

std::string Utf8ToCp1252(const std::string& Text) {
    std::string out;
    out.reserve(Text.size());
    size_t i = 0;
    while (i < Text.size()) {
        char32_t c = 0;
        const size_t len = DecodeUtf8(Text, i, c);
        if (len == 0) {
            out += '?';
            ++i;
        } else {
            out += ToCp1252(c);
            i += len;
        }
    }
    return out;
}

std::string Cp1252ToUtf8(const std::string& Text) {
    std::string out;
    out.reserve(Text.size());
    for (char ch : Text) {
        const auto b = static_cast<uint8_t>(ch);
        const char32_t c = (b >= 0x80 && b <= 0x9F) ? kHighControlRange[b - 0x80] : b;
        AppendUtf8(out, c);
    }
    return out;
}
