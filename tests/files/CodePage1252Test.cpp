// Windows-1252 text of the files against the program's UTF-8.
#include <gtest/gtest.h>

#include <string>

#include "files/CodePage1252.h"

namespace {

// Byte and UTF-8 pairs from the published Windows-1252 code page table.
struct Pair {
    const char* cp1252;
    const char* utf8;
};
constexpr Pair kPublished[] = {
    {"A", "A"},
    {"\x80", "\xE2\x82\xAC"},  // 0x80 euro sign U+20AC
    {"\x82", "\xE2\x80\x9A"},  // 0x82 single low-9 quotation mark U+201A
    {"\x8A", "\xC5\xA0"},      // 0x8A S caron U+0160
    {"\x92", "\xE2\x80\x99"},  // 0x92 right single quotation mark U+2019
    {"\x99", "\xE2\x84\xA2"},  // 0x99 trade mark sign U+2122
    {"\x9F", "\xC5\xB8"},      // 0x9F Y diaeresis U+0178
    {"\xA0", "\xC2\xA0"},      // 0xA0 no-break space U+00A0
    {"\xB0", "\xC2\xB0"},      // 0xB0 degree sign U+00B0
    {"\xE9", "\xC3\xA9"},      // 0xE9 e acute U+00E9
    {"\xFF", "\xC3\xBF"},      // 0xFF y diaeresis U+00FF
};

TEST(CodePage1252, PublishedTableEntriesBothWays) {
    for (const Pair& p : kPublished) {
        EXPECT_EQ(Cp1252ToUtf8(p.cp1252), p.utf8) << "byte " << int(uint8_t(p.cp1252[0]));
        EXPECT_EQ(Utf8ToCp1252(p.utf8), p.cp1252) << "byte " << int(uint8_t(p.cp1252[0]));
    }
}

TEST(CodePage1252, EveryByteComesBackUnchanged) {
    // Including the five bytes the code page leaves unassigned.
    std::string all;
    for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
}

TEST(CodePage1252, CharactersWithoutAFormBecomeQuestionMarks) {
    EXPECT_EQ(Utf8ToCp1252("\xCE\xB1 Cen"), "? Cen");           // Greek alpha
    EXPECT_EQ(Utf8ToCp1252("\xE5\x8C\x97\xE6\x96\x97"), "??");  // two CJK characters
    EXPECT_EQ(Utf8ToCp1252("\xF0\x9F\x94\xAD!"), "?!");         // telescope emoji, 4 bytes
    EXPECT_EQ(Utf8ToCp1252("\xC2\x81"), "\x81");                // U+0081 back to its byte
}

TEST(CodePage1252, MalformedUtf8BecomesQuestionMarks) {
    EXPECT_EQ(Utf8ToCp1252("a\xFF"
                           "b"),
              "a?b");                                // not a UTF-8 byte
    EXPECT_EQ(Utf8ToCp1252("\xC3"), "?");            // cut sequence
    EXPECT_EQ(Utf8ToCp1252("\xC0\xAF"), "??");       // overlong "/"
    EXPECT_EQ(Utf8ToCp1252("\xED\xA0\x80"), "???");  // surrogate half
    EXPECT_EQ(Utf8ToCp1252("\xC3"
                           "A"),
              "?A");  // lead byte without continuation
}

}  // namespace
