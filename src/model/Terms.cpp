#include "model/Terms.h"

#include <algorithm>
#include <cmath>

#include "model/Frames.h"
#include "model/ModelState.h"

namespace {

// Writes f x V into row `row`, component by component.
inline void SetScaled(TermTable& B, int row, double f, const double (&V)[3]) {
    B[row][1] = f * V[0];
    B[row][2] = f * V[1];
    B[row][3] = f * V[2];
}

inline void SetVec(TermTable& B, int row, double x, double y, double z) {
    B[row][1] = x;
    B[row][2] = y;
    B[row][3] = z;
}

}  // namespace

void TermBasis(double Theta, double Phi, TermTable& B) {
    // Every multiple angle goes through sin and cos itself (no recurrence), so
    // each value is the correctly rounded library result of k x angle.
    const double sT = std::sin(Theta), cT = std::cos(Theta);
    const double sP = std::sin(Phi), cP = std::cos(Phi);
    const double s2T = std::sin(2 * Theta), c2T = std::cos(2 * Theta);
    const double s3T = std::sin(3 * Theta), c3T = std::cos(3 * Theta);
    const double s4T = std::sin(4 * Theta), c4T = std::cos(4 * Theta);
    const double s5T = std::sin(5 * Theta), c5T = std::cos(5 * Theta);
    const double s2P = std::sin(2 * Phi), c2P = std::cos(2 * Phi);
    const double s3P = std::sin(3 * Phi), c3P = std::cos(3 * Phi);
    const double s4P = std::sin(4 * Phi), c4P = std::cos(4 * Phi);
    const double s5P = std::sin(5 * Phi), c5P = std::cos(5 * Phi);
    const double s6P = std::sin(6 * Phi), c6P = std::cos(6 * Phi);

    // The partial derivatives of P(Theta, Phi) by Theta and by Phi.
    const double Vt[3] = {cT * cP, cT * sP, -sT};
    const double Vp[3] = {-sT * sP, sT * cP, 0.0};

    SetVec(B, 1, Vp[0], Vp[1], Vp[2]);  // Phi encoder offset
    SetVec(B, 2, Vt[0], Vt[1], Vt[2]);  // Theta encoder offset
    // Derivatives of RotateXZ and RotateYZ at angle 0, taken at P.
    SetVec(B, 3, cT, 0.0, -sT * cP);
    SetVec(B, 4, 0.0, cT, -sT * sP);
    // Cone: a constant displacement along Phi at any Theta; hub: the same
    // scaled by cos Theta.
    SetVec(B, 5, -sP, cP, 0.0);
    SetVec(B, 6, cT * -sP, cT * cP, 0.0);

    SetScaled(B, 7, sT, Vt);
    SetScaled(B, 8, cT, Vt);
    SetScaled(B, 9, sP, Vp);
    SetScaled(B, 10, cP, Vp);
    SetScaled(B, 11, sP, Vt);
    SetScaled(B, 12, cP, Vt);
    SetScaled(B, 13, sT * cP, Vt);
    SetScaled(B, 14, cT * cP, Vt);
    SetScaled(B, 15, sT * cP, Vp);
    SetScaled(B, 16, cT * cP, Vp);
    SetScaled(B, 17, sT * sP, Vt);
    SetScaled(B, 18, cT * sP, Vt);
    SetScaled(B, 19, s2T, Vt);
    SetScaled(B, 20, c2T, Vt);
    SetScaled(B, 21, s2P, Vp);
    SetScaled(B, 22, c2P, Vp);
    SetScaled(B, 23, s2P, Vt);
    SetScaled(B, 24, c2P, Vt);
    SetScaled(B, 25, sT * sP, Vp);
    SetScaled(B, 26, cT * sP, Vp);
    SetScaled(B, 27, s3T, Vt);
    SetScaled(B, 28, c3T, Vt);
    SetScaled(B, 29, s3P, Vp);
    SetScaled(B, 30, c3P, Vp);
    SetScaled(B, 31, s3P, Vt);
    SetScaled(B, 32, c3P, Vt);
    SetScaled(B, 33, s4P, Vt);
    SetScaled(B, 34, c4P, Vt);
    SetScaled(B, 35, s5P, Vt);
    SetScaled(B, 36, c5P, Vt);
    SetScaled(B, 37, s6P, Vt);
    SetScaled(B, 38, c6P, Vt);
    SetScaled(B, 39, s4P, Vp);
    SetScaled(B, 40, c4P, Vp);
    SetScaled(B, 41, s5P, Vp);
    SetScaled(B, 42, c5P, Vp);
    SetScaled(B, 43, s4T, Vt);
    SetScaled(B, 44, c4T, Vt);
    SetScaled(B, 45, s5T, Vt);
    SetScaled(B, 46, c5T, Vt);
}

Vec3 EncoderToPointing(const ModelState& s, double ThetaEnc, double PhiEnc) {
    double Theta = 0;
    double Phi = 0;
    // Unwrapped angles on purpose: a negative Theta is the other axis position
    // and has corrections of its own.
    EncodersToAngles(s, ThetaEnc, PhiEnc, Theta, Phi);
    Vec3 C = AnglesToVec(Theta, Phi);
    TermTable B;
    TermBasis(Theta, Phi, B);
    // NumTerms is 46 once the model is set up; the table has no room beyond.
    const int last = std::min<int>(s.NumTerms, kNumTerms);
    for (int i = 1; i <= last; ++i) {
        if (!s.TermActive[i]) continue;
        const double k = s.TermCoef[i];
        C.x = C.x + k * B[i][1];
        C.y = C.y + k * B[i][2];
        C.z = C.z + k * B[i][3];
    }
    NormalizeVec(C);
    return C;
}
