// Integer parts and rounding the way the whole program rounds:
// Int is floor, Trunc cuts toward zero, RoundHalfEven sends halves to the
// even neighbour.
#pragma once

// Largest integer not above x (floor), as a double.
double VbInt(double x);

// Cuts toward zero: 2.7 gives 2, -2.7 gives -2. A negative argument is
// negated, its integer part taken and negated again, so -0.5 gives 0.
double VbTrunc(double x);

// Nearest integer, exact halves to the even neighbour (10.5 gives 10).
double RoundHalfEven(double x);
