// Words of the command line shared by the commands.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

// True when any word asks for the command's help; the help wins over every
// other word, right or wrong, so that a user who asks always gets it.
inline bool AsksForHelp(const std::vector<std::string>& args) {
    for (const std::string& a : args)
        if (a == "--help" || a == "-h") return true;
    return false;
}

// A whole number from low to high written in digits alone (a leading '-'
// where T is signed): no sign '+', no spaces, no text after it.
template <class T>
bool ParseWhole(const std::string& word, T& value, T low, T high) {
    const char* end = word.data() + word.size();
    const auto res = std::from_chars(word.data(), end, value);
    return res.ec == std::errc() && res.ptr == end && value >= low && value <= high;
}
