// Windows-1252 text of the files against the program's UTF-8.
#include <gtest/gtest.h>

#include <string>

#include "files/CodePage1252.h"

namespace {

TEST(CodePage1252, PublishedTableEntriesBothWaysAndEveryByteBack) {
    // Byte and UTF-8 pairs from the published Windows-1252 code page table:
    // 0x80 euro sign U+20AC, 0x82 single low-9 quotation mark U+201A, 0x8A S
    // caron U+0160, 0x92 right single quotation mark U+2019, 0x99 trade mark
    // sign U+2122, 0x9F Y diaeresis U+0178, 0xA0 no-break space, 0xB0 degree
    // sign, 0xE9 e acute, 0xFF y diaeresis (U+00A0 to U+00FF).
    // clang-format off
    const char* pairs[][2] = {
        {"A", "A"}, {"\x80", "\xE2\x82\xAC"}, {"\x82", "\xE2\x80\x9A"}, {"\x8A", "\xC5\xA0"},
        {"\x92", "\xE2\x80\x99"}, {"\x99", "\xE2\x84\xA2"}, {"\x9F", "\xC5\xB8"},
        {"\xA0", "\xC2\xA0"},
        {"\xB0", "\xC2\xB0"}, {"\xE9", "\xC3\xA9"}, {"\xFF", "\xC3\xBF"}};
    // clang-format on
    for (const auto& [cp1252, utf8] : pairs) {
        EXPECT_EQ(Cp1252ToUtf8(cp1252), utf8) << "byte " << int(uint8_t(cp1252[0]));
        EXPECT_EQ(Utf8ToCp1252(utf8), cp1252) << "byte " << int(uint8_t(cp1252[0]));
    }
    // Every byte comes back, the five the code page leaves unassigned included.
    std::string all;
    for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
}

TEST(CodePage1252, CharactersWithoutAFormAndMalformedUtf8BecomeQuestionMarks) {
    // Greek alpha, two CJK characters, a 4-byte emoji; U+0081 goes back to
    // its byte. Malformed: a byte that is never UTF-8, a cut sequence, an
    // overlong "/", a surrogate half, a lead byte without continuation.
    // clang-format off
    const char* cases[][2] = {
        {"\xCE\xB1 Cen", "? Cen"}, {"\xE5\x8C\x97\xE6\x96\x97", "??"}, {"\xF0\x9F\x94\xAD!", "?!"},
        {"\xC2\x81", "\x81"}, {"a\xFF" "b", "a?b"}, {"\xC3", "?"}, {"\xC0\xAF", "??"},
        {"\xED\xA0\x80", "???"}, {"\xC3" "A", "?A"}};
    // clang-format on
    for (const auto& [utf8, want] : cases) EXPECT_EQ(Utf8ToCp1252(utf8), want);
}

}  // namespace
