// The all-sky map of the Auto Alignment window: a polar plot of the sky seen
// from above the site, north up, east to the right, the zenith at the centre
// and the true horizon on the outer ring, on dark blue, with rings every 15
// degrees of elevation, spokes, corner labels, the celestial pole, the
// numbered alignment points and the skyline.
#pragma once

#include <string>

#include "windows/Picture.h"

struct ModelState;

class AutoAlignMap {
  public:
    // Centre and radius of the outer ring, pixels, from the last Draw.
    double Cx = 0;
    double Cy = 0;
    double PlotR = 0;

    // Redraws Pic completely from the skyline, the list and the latitude.
    void Draw(const ModelState& s, cPicture& Pic);

    // Zenith distance and azimuth (radians) to whole pixels, and back.
    void AnglesToScreen(double Theta, double Phi, double& X, double& Y) const;
    void ScreenToAngles(double X, double Y, double& Theta, double& Phi) const;

    // A circle of radius 2 round the place in Color, Label below right.
    void PlotPoint(cPicture& Pic, double Theta, double Phi, long Color,
                   const std::string& Label) const;
    // The alignment list in yellow, numbered.
    void DrawAlignPoints(const ModelState& s, cPicture& Pic) const;
    // The skyline in green.
    void DrawHorizon(const ModelState& s, cPicture& Pic) const;
    // A red cross on the celestial pole; its line goes to the Test Log list.
    void DrawCP(const ModelState& s, cPicture& Pic) const;
};
