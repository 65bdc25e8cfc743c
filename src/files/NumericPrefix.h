// The lenient number reading of the program's text files: the leading number
// of a line, whatever stands behind it.
#pragma once

#include <string>

// Passes over leading blanks and tabs, then takes the longest leading decimal
// number: optional sign, digits with an optional "." and more digits, and an
// optional exponent ("e" or "E", optional sign, digits). Gives 0 when the
// text does not start with such a number. "." is the decimal point whatever
// the locale. A magnitude beyond the range of a double gives an infinity of
// its sign; one too small gives zero of its sign. Never fails.
double NumericPrefixValue(const std::string& Text);
