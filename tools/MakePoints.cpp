// Makes data/Points.txt, the candidate directions of the alignment point
// planner: 500 unit vectors spread evenly over the whole sphere by the
// golden-angle (Fibonacci) lattice. Point i of N lies at the height
// z = 1 - (2i + 1) / N, which gives every point the same share of the
// sphere's area, and turns about the vertical by i times the golden angle
// pi (3 - sqrt 5), about 137.5 degrees, so that no two points line up
// with their neighbours. Three lines a point: X, Y, Z, each to 17
// significant digits (the double exactly).
// usage: make-points > data/Points.txt
#include <cmath>
#include <cstdio>

int main() {
    constexpr int kCount = 500;
    const double pi = std::acos(-1.0);
    const double goldenAngle = pi * (3 - std::sqrt(5.0));
    for (int i = 0; i < kCount; ++i) {
        const double z = 1 - (2.0 * i + 1) / kCount;
        const double r = std::sqrt(1 - z * z);
        const double turn = i * goldenAngle;
        std::printf("%.17g\n%.17g\n%.17g\n", r * std::cos(turn), r * std::sin(turn), z);
    }
    return 0;
}
