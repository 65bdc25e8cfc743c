// Small text scans for the angle parsers.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

// The text without blanks (spaces) at either end.
std::string TrimBlanks(const std::string& text);

// A place in a text and the length of the mark found there.
struct TextMark {
    bool Found = false;
    std::size_t Pos = 0;
    std::size_t Length = 0;
};

// Tries the kinds of mark in the order given; the first kind that occurs in
// the text decides, and its first place counts.
TextMark FindFirstKind(const std::string& text, std::initializer_list<std::string_view> kinds);

// The text before the mark, and the text behind it.
std::string TextBefore(const std::string& text, const TextMark& mark);
std::string TextBehind(const std::string& text, const TextMark& mark);
