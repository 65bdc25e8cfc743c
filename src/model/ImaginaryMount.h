// A badly built mount on purpose, for trying a fit without a telescope: its
// calibration points lie where the alignment planner would send a real
// mount at the site's latitude, and carry the encoder readings that a mount
// with these errors would give there.
//
// Signs are those of the fit, so that a fit with the alt-az preset finds
// each value back as it was given: Cone is the coefficient of term 5 (a
// constant displacement along +Phi), Hub that of term 6 (the same with a
// cos Theta factor), PAWest is ErrorWest (primary axis tipped to the west
// when positive), PANorth is ErrorNorth (tipped to the north when
// positive), ThetaOffset and PhiOffset are ThetaEncOffset and PhiEncOffset
// turned into angles (with ThetaPosUp and PhiPosCW true, the axis angle is
// the reading plus the offset).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/SyntheticCalibration.h"

struct ModelState;

struct ImaginaryMount {
    int Num = 40;               // number of calibration points
    double Cone = 0;            // radians
    double Hub = 0;             // radians
    double PAWest = 0;          // radians
    double PANorth = 0;         // radians
    double Latitude = 0;        // degrees, north positive
    double ThetaOffset = 0;     // radians
    double PhiOffset = 0;       // radians
    double MinutesBetween = 1;  // minutes of sidereal time from point to point
    double FirstLST = 0;        // radians, local sidereal time of the first point
    double NoiseRMS = 0;        // radians on the sky along each axis; 0: none
    uint32_t Seed = 1;          // of the noise
};

// Julian day of the first point: 2023 February 24.0 UT. Later points follow
// by the solar equivalent of the sidereal interval.
inline constexpr double kImaginaryMountFirstJD = 2460000.5;

// Makes the points with the site, mount type, encoder and refraction
// settings of `site` at m.Latitude, the directions from the alignment
// planner (Points.txt in site.ProgramFolder, the site's skyline, the mount
// type's zones), one every m.MinutesBetween sidereal minutes from
// m.FirstLST, walked in the planner's order and round again when m.Num is
// larger than its list; at most kMaxCalPoints. False, with no points and a
// reason in Error, when the planner has no directions.
bool MakeImaginaryMountPoints(const ModelState& site, const ImaginaryMount& m,
                              std::vector<SyntheticPoint>& Points, std::string& Error);
