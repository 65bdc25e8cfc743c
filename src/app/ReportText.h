// Text pieces that the fit report and its sections share: arcseconds for
// people, and JSON strings and numbers for scripts.
#pragma once

#include <cstddef>
#include <string>

struct ModelState;

// Radians in arcseconds, by the model's own factor.
double Arcsec(const ModelState& s, double radians);

// Arcseconds rounded for people, with the sign "; "-" when not finite.
std::string As(double arcsec, int decimals = 1);

// A JSON string literal, with every control character escaped.
std::string JsonString(const std::string& text);

// A JSON number; null when the value is not finite.
std::string JsonNumber(double x);

// The text right-aligned in the width.
std::string Padded(const std::string& text, size_t width);
