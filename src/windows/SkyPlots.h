// The two round plots of the main window: the target of pointing errors
// (DrawError) and the sky map of the calibration points (DrawGeo). Both
// clear and redraw a whole picture and remember where each point went, so
// that a click can find the nearest point.
#pragma once

#include <array>
#include <string>

#include "windows/Picture.h"

struct ModelState;

// Full scale, ring step and unit of the error target for a largest error of
// Big arcminutes. Full scale and step are in the unit: arcminutes ("'") up
// to full scale 4, arcseconds (the double-quote character) below.
struct ErrorScale {
    double FullScale;
    double Step;
    std::string Unit;
};
ErrorScale ErrorScaleFor(double BigArcmin);

class cSkyPlots {
  public:
    // Foreground of both plots.
    long GraphColor = RGB(60, 60, 60);

    // Where the last plot put CalPoint i, in unrounded pixels of its
    // picture, for i from 1 to 1000; index 0 is not used.
    std::array<double, 1001> StarX{};
    std::array<double, 1001> StarY{};

    // Target of the pointing errors, scaled by MaxErrAll when ScaleAll is
    // true (option "All Points"), else by MaxErrSel.
    void DrawError(const ModelState& s, cPicture& Pic, bool ScaleAll);

    // Polar map of the points by SkyTheta (centre 0, rim 90 degrees) and
    // SkyPhi (0 at the top, 90 degrees to the left).
    void DrawGeo(const ModelState& s, cPicture& Pic);
};
