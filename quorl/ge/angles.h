// Angles in radians: constants, the range [0, 2 pi), and sines that are exact at quarter turns.
#pragma once

namespace ZnGe {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kTwoPi = 2.0 * kPi;
inline constexpr double kHalfPi = 0.5 * kPi;

struct SinCos {
  double sin = 0.0;
  double cos = 1.0;
};

// The same direction in [0, 2 pi). An angle just below zero whose sum rounds to 2 pi gives 0.
double normalizeAngle(double angle);

// Exact 0 and +/-1 when the angle is the nearest double to a multiple of pi/2, so that quarter turns leave
// no rounding dust in coordinates.
SinCos sinCos(double angle);

// Whether the angle, taken modulo 2 pi, lies on the way from start up to end (end >= start), ends included.
bool isAngleBetween(double angle, double start, double end);

// The end angle of a span that begins at start and runs counterclockwise to end: at least start and at most
// one full turn above it. Equal angles give an empty span; a smaller end is raised by full turns.
double endAngleAbove(double start, double end);

} // namespace ZnGe
