// The program's own angle constants. Results are compared to the last digit,
// so every routine uses these short ten-digit values, never full-precision pi.
#pragma once

inline constexpr double kHalfTurn = 3.141592654;  // the program's "pi"
inline constexpr double kFullTurn = 6.283185308;  // exactly twice kHalfTurn
inline constexpr double kSiderealRate = 1.002737908;

// Table sizes of the model, with 1-based numbering and index 0 unused.
inline constexpr int kMaxCalPoints = 500;
inline constexpr int kNumTerms = 46;
inline constexpr int kNumTermEnable = 22;
inline constexpr int kTermArraySize = 1001;
