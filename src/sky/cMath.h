// cMath: numeric constants, angle factors, the matrix inverter and a few
// scalar operations. Stateless; the one instance lives in ModelState.
#pragma once

#include <array>

inline constexpr int kMaxMatrix = 50;
// Matrices and vectors indexed 1..N (row first), index 0 unused, N <= 50.
using Matrix = std::array<std::array<double, kMaxMatrix + 1>, kMaxMatrix + 1>;
using MatrixVector = std::array<double, kMaxMatrix + 1>;

class cMath {
  public:
    double pi() const { return 3.141592654; }
    double E() const { return 2.718281828; }
    double c() const { return 299792458; }
    double SiderealRate() const { return 1.002737908; }
    double Boltzmann() const { return 1.3806503e-23; }
    double StefanBoltzmann() const { return 5.6704e-8; }
    double Planck() const { return 6.626068e-34; }
    double DegToRad(double x) const;
    double RadToAS(double x) const;
    double RadToDeg(double x) const;
    // Gauss-Jordan with full pivoting, in place: A becomes its inverse and B
    // the solution of A x = B. False when a zero pivot occurred.
    bool MatrixInverse(Matrix& A, MatrixVector& B, int N) const;
    // C = A x B; C must be neither A nor B.
    void MatrixXMatrix(const Matrix& A, const Matrix& B, Matrix& C, int N) const;
    // B = A, elements 1..N.
    void MatrixCopy(const Matrix& A, Matrix& B, int N) const;
    double Atan2(double Y, double X) const;
    double Min(double P, double Q) const;
    double Max(double P, double Q) const;
    double Trunc(double X) const;
};
