#include "sky/NumberText.h"

#include <array>
#include <charconv>
#include <cstdlib>

std::string NumberText(double x) {
    if (x == 0.0) return "0";  // also negative zero
    std::array<char, 64> buf{};
    auto res = std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::general, 15);
    return std::string(buf.data(), res.ptr);
}

std::string IntText(long x) { return std::to_string(x); }

std::string RoundedText(double x, int decimals) {
    if (decimals < 0) decimals = 0;
    std::array<char, 400> buf{};
    auto res = std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::fixed, decimals);
    std::string s(buf.data(), res.ptr);
    if (s.find('.') != std::string::npos) {
        while (!s.empty() && s.back() == '0') s.pop_back();
        if (!s.empty() && s.back() == '.') s.pop_back();
    }
    if (s == "-0") s = "0";
    return s;
}

std::string BoolText(bool b) { return b ? "True" : "False"; }

bool ParseNumber(const std::string& text, double& value) {
    size_t i = 0;
    size_t n = text.size();
    while (i < n && (text[i] == ' ' || text[i] == '\t')) ++i;
    size_t end = n;
    while (end > i && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
    if (i >= end) return false;
    const char* first = text.data() + i;
    const char* last = text.data() + end;
    bool negative = false;
    if (*first == '+' || *first == '-') {
        negative = (*first == '-');
        ++first;
    }
    if (first == last || *first == '+' || *first == '-') return false;
    // Digits with an optional point and at least one digit, then an optional exponent.
    const char* p = first;
    int digits = 0;
    while (p < last && *p >= '0' && *p <= '9') ++p, ++digits;
    if (p < last && *p == '.') {
        ++p;
        while (p < last && *p >= '0' && *p <= '9') ++p, ++digits;
    }
    if (digits == 0) return false;
    if (p < last && (*p == 'e' || *p == 'E')) {
        ++p;
        if (p < last && (*p == '+' || *p == '-')) ++p;
        int expDigits = 0;
        while (p < last && *p >= '0' && *p <= '9') ++p, ++expDigits;
        if (expDigits == 0) return false;
    }
    if (p != last) return false;
    double v = 0;
    auto res = std::from_chars(first, last, v, std::chars_format::general);
    if (res.ec != std::errc() || res.ptr != last) {
        // A value beyond the range of a double has no number to give.
        return false;
    }
    value = negative ? -v : v;
    return true;
}
