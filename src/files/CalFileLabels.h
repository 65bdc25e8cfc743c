// The label lines of the calibration file, shared by its writer and reader.
// Plain ASCII, written exactly so; the reader compares the labels of the
// optional sections character for character.
#pragma once

namespace CalFileLabel {

inline constexpr const char* kCount = "Number of Cal Stars:";
inline constexpr const char* kStarPrefix = "Cal Star ";  // then the star number and ":"
inline constexpr const char* kRADec = "RA, Dec:";
inline constexpr const char* kEncoders = "ThetaEnc, PhiEnc:";
inline constexpr const char* kLSTJD = "LST, JD:";
inline constexpr const char* kTimeDate = "Time, Date:";
inline constexpr const char* kSite = "Latitude, Longitude, TimeZone, DST:";
inline constexpr const char* kPhiAxis = "CW Azimuth, MaxAzCounts:";
inline constexpr const char* kThetaAxis = "Altitude Up, MaxAltCounts:";
inline constexpr const char* kMountType = "IsAltAz, IsGEM:";
inline constexpr const char* kAtmosphere = "Temperature, Pressure:";

// The optional sections, in file order. The first and the fifth share a label.
inline constexpr const char* kTermsEnabled = "Terms Enabled:";
inline constexpr const char* kPointsUsed = "Cal Points Used:";
inline constexpr const char* kScaleFactors = "Scale Factors, Theta, Phi:";
inline constexpr const char* kClockRateError = "Clock Rate Error:";
inline constexpr const char* kEnableRefraction = "Enable Refraction:";
inline constexpr const char* kMaxSensitivity = "Max Sensitivity:";

// Section D holds no value of the model; the writer puts this text there.
inline constexpr const char* kClockRateErrorValue = "0.0";

// Term flags in the first "Terms Enabled:" section (1 to 15); the second
// holds the rest (16 to 22).
inline constexpr int kFirstTermFlags = 15;

}  // namespace CalFileLabel
