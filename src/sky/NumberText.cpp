#include "sky/NumberText.h"

#include <array>
#include <charconv>
#include <cstdlib>

std::string NumberText(double x) {
    if (x == 0.0) return "0";  // also negative zero
    std::array<char, 64> buf{};
    auto res =
        std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::general, 15);
    return std::string(buf.data(), res.ptr);
}

std::string IntText(long x) {
    return std::to_string(x);
}

std::string RoundedText(double x, int decimals) {
    // A double has no nonzero digit beyond the 1074th decimal, so more places
    // change nothing but trailing zeros, which are cut below anyway. The
    // buffer holds the longest fixed text: sign, 309 whole digits, point and
    // 1074 decimals.
    constexpr int kMaxDecimals = 1074;
    if (decimals < 0) decimals = 0;
    if (decimals > kMaxDecimals) decimals = kMaxDecimals;
    std::array<char, 1400> buf{};
    auto res =
        std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::fixed, decimals);
    std::string s(buf.data(), res.ptr);
    if (s.find('.') != std::string::npos) {
        while (!s.empty() && s.back() == '0') s.pop_back();
        if (!s.empty() && s.back() == '.') s.pop_back();
    }
    if (s == "-0") s = "0";
    return s;
}

std::string BoolText(bool b) {
    return b ? "True" : "False";
}

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
    // Digits with an optional point and at least one digit, then an optional
    // exponent. Alongside, the decimal order of the number: the value lies
    // below 10^order and at or above 10^(order - 1).
    const char* p = first;
    int digits = 0;
    long order = 0;
    bool nonzeroSeen = false;
    while (p < last && *p >= '0' && *p <= '9') {
        if (nonzeroSeen || *p != '0') {
            nonzeroSeen = true;
            ++order;
        }
        ++p;
        ++digits;
    }
    if (p < last && *p == '.') {
        ++p;
        while (p < last && *p >= '0' && *p <= '9') {
            if (!nonzeroSeen && *p == '0') --order;
            if (*p != '0') nonzeroSeen = true;
            ++p;
            ++digits;
        }
    }
    if (digits == 0) return false;
    if (p < last && (*p == 'e' || *p == 'E')) {
        ++p;
        long expSign = 1;
        if (p < last && (*p == '+' || *p == '-')) {
            expSign = (*p == '-') ? -1 : 1;
            ++p;
        }
        int expDigits = 0;
        long exponent = 0;
        while (p < last && *p >= '0' && *p <= '9') {
            if (exponent < 100000) exponent = exponent * 10 + (*p - '0');  // enough to decide
            ++p;
            ++expDigits;
        }
        if (expDigits == 0) return false;
        order += expSign * exponent;
    }
    if (p != last) return false;
    double v = 0;
    auto res = std::from_chars(first, last, v, std::chars_format::general);
    if (res.ec == std::errc::result_out_of_range && order < 0) {
        // Too small for a double: the number is zero.
        v = 0.0;
    } else if (res.ec != std::errc() || res.ptr != last) {
        // A value beyond the range of a double has no number to give.
        return false;
    }
    value = negative ? -v : v;
    return true;
}
