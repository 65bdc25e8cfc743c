// The text forms of numbers, in one place for the windows, the trace log,
// the calibration file and the reports. Always "." as decimal point,
// whatever the locale of the process.
#pragma once

#include <cstdint>
#include <string>

// Default text of a double: up to 15 significant digits, no trailing zeros,
// no decimal point for a whole value, no leading blank (like "%.15g").
// Negative zero is written "0".
std::string NumberText(double x);

// Default text of a 16- or 32-bit integer.
std::string IntText(long x);

// The value rounded to `decimals` places (ties to even on the exact binary
// value, like "%.*f"), then written in its plainest form: no trailing zeros,
// no trailing point, "-" only when the rounded value is still negative.
std::string RoundedText(double x, int decimals);

// "True" or "False", the text of a Boolean in trace lines and messages.
std::string BoolText(bool b);

// Reads a numeric text: optional blanks, optional sign, digits with an
// optional decimal point, optional exponent, optional blanks. Returns false
// and leaves `value` alone when the text is anything else.
bool ParseNumber(const std::string& text, double& value);
