// What the fitted model holds in place of terms 1 to 4: the encoder offsets
// and axis rotations that the fit's second stage moved their coefficients
// into, plus the small coefficients that its last solve left active.
#pragma once

struct ModelState;

struct OffsetTotals {
    // Encoder offsets, counts: the stored offset plus the remaining
    // coefficient turned into counts of the axis.
    double PhiCounts = 0;
    double ThetaCounts = 0;
    // The same offsets as the turn of the axis angle that they make
    // (radians, the sense of terms 1 and 2: positive raises Phi or Theta).
    double Phi = 0;
    double Theta = 0;
    // Axis misalignment, radians: the rotations plus terms 3 and 4.
    double North = 0;
    double West = 0;
};

// Takes the model after a fit; gives its totals. The fit adds a coefficient
// (radians) to an offset (counts) as it stands, which is right only when a
// count is a radian; here the coefficient is scaled by the counts of one
// radian of the axis (counts per turn x scale factor / full turn), with the
// sign of the encoder's direction, so the totals hold for any encoder.
OffsetTotals FittedOffsets(const ModelState& s);
