#include "sky/cMath.h"

#include <cmath>
#include <utility>

#include "model/Frames.h"
#include "sky/Rounding.h"

double cMath::DegToRad(double x) const {
    return x * 0.0174532925;
}

double cMath::RadToAS(double x) const {
    return x * 206264.80625;
}

double cMath::RadToDeg(double x) const {
    return x / 0.0174532925;
}

// Gauss-Jordan elimination with full pivoting and one right-hand side, in
// place (after Numerical Recipes, gaussj). Takes A (N x N) and B (N), both
// 1-based; gives the inverse in A and the solution of A x = B in B. A zero
// pivot does not stop the work: 1e12 stands in for its reciprocal and the
// result becomes false.
// Built twice, for plain x86-64 and for AVX2, the copy chosen at load time:
// the wider vectors do the same operations on the same elements, with no
// contraction into fused multiply-add, so the inverse is the same bits.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(AZTRUE_NO_VECTOR_CLONES)
__attribute__((target_clones("avx2", "default")))
#endif
bool cMath::MatrixInverse(Matrix& A, MatrixVector& B, int N) const {
    // Beyond the bookkeeping tables: leave everything as it is.
    if (N > kMaxMatrix) return false;

    std::array<int, kMaxMatrix + 1> pivotRow{};
    std::array<int, kMaxMatrix + 1> pivotCol{};
    std::array<int, kMaxMatrix + 1> colMark{};
    bool regular = true;

    for (int i = 1; i <= N; ++i) {
        // Largest remaining element; ">=" lets the last among equals win.
        double big = 0;
        int irow = 0;
        int icol = 0;
        for (int j = 1; j <= N; ++j) {
            if (colMark[j] == 1) continue;
            const auto& row = A[j];
            for (int k = 1; k <= N; ++k) {
                if (colMark[k] != 0) continue;
                const double a = std::fabs(row[k]);
                if (a >= big) {
                    big = a;
                    irow = j;
                    icol = k;
                }
            }
        }
        if (irow == 0) {
            // Only NaN was left, which wins no comparison: take the last
            // candidate all the same, so the NaN spreads into the result
            // instead of the work leaving the 1..N tables.
            for (int j = 1; j <= N; ++j) {
                if (colMark[j] == 1) continue;
                for (int k = 1; k <= N; ++k) {
                    if (colMark[k] != 0) continue;
                    irow = j;
                    icol = k;
                }
            }
        }
        colMark[icol] = colMark[icol] + 1;

        if (irow != icol) {
            for (int l = 1; l <= N; ++l) std::swap(A[irow][l], A[icol][l]);
            std::swap(B[irow], B[icol]);
        }
        pivotRow[i] = irow;
        pivotCol[i] = icol;

        const int p = icol;
        double pivinv;
        if (A[p][p] == 0) {
            regular = false;
            pivinv = 1e12;
        } else {
            pivinv = 1 / A[p][p];
        }
        auto& prow = A[p];
        prow[p] = 1;
        for (int l = 1; l <= N; ++l) prow[l] = prow[l] * pivinv;
        B[p] = B[p] * pivinv;

        const double bp = B[p];
        for (int r = 1; r <= N; ++r) {
            if (r == p) continue;
            auto& rrow = A[r];
            const double d = rrow[p];
            rrow[p] = 0;
            for (int l = 1; l <= N; ++l) rrow[l] = rrow[l] - d * prow[l];
            B[r] = B[r] - d * bp;
        }
    }

    // Undo the row exchanges as column exchanges, last step first.
    for (int l = N; l >= 1; --l) {
        if (pivotRow[l] == pivotCol[l]) continue;
        const int a = pivotRow[l];
        const int b = pivotCol[l];
        for (int k = 1; k <= N; ++k) std::swap(A[k][a], A[k][b]);
    }
    return regular;
}

void cMath::MatrixXMatrix(const Matrix& A, const Matrix& B, Matrix& C, int N) const {
    if (N > kMaxMatrix) return;
    for (int i = 1; i <= N; ++i) {
        for (int j = 1; j <= N; ++j) {
            double sum = 0;
            for (int k = 1; k <= N; ++k) sum = sum + A[i][k] * B[k][j];
            C[i][j] = sum;
        }
    }
}

void cMath::MatrixCopy(const Matrix& A, Matrix& B, int N) const {
    if (N > kMaxMatrix) return;
    for (int i = 1; i <= N; ++i) {
        for (int j = 1; j <= N; ++j) B[i][j] = A[i][j];
    }
}

double cMath::Atan2(double Y, double X) const {
    return ::Atan2(Y, X);
}

double cMath::Min(double P, double Q) const {
    return Q < P ? Q : P;
}

double cMath::Max(double P, double Q) const {
    return Q > P ? Q : P;
}

double cMath::Trunc(double X) const {
    return VbTrunc(X);
}
