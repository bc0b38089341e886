// Every tolerance of the geometry library, named, with its reason. No other file holds a number of this kind.
#pragma once

#include <limits>

namespace ZnGe {

// Two points closer than this are one point: far below what a drawing shows, and still well above the
// rounding of coordinates up to about a hundred thousand units.
inline constexpr double kDefaultEqualPoint = 1e-10;

// Largest length of the difference of two equal vectors, and largest sine between parallel ones.
inline constexpr double kDefaultEqualVector = 1e-10;

// A normal whose x and y are both below this counts as close to the world z axis when an entity plane
// picks its x axis. A binary fraction, so that every machine makes the same choice.
inline constexpr double kArbitraryAxisLimit = 1.0 / 64.0;

// A matrix whose determinant is below this share of the product of its axis lengths has no usable inverse.
inline constexpr double kSingularRatio = 1e-12;

// Finest chord height for sampling, as a share of the curve's size: it bounds the number of points that a
// careless chord tolerance can ask for.
inline constexpr double kFinestChordRatio = 1e-7;

// Relative error at which the quadrature of a curve length stops.
inline constexpr double kLengthRatio = 1e-13;

// Share of a curve's size by which the box of a spline may exceed the curve.
inline constexpr double kBoxSlackRatio = 1e-9;

// A scale this close to 1 is 1: how far a few rotations take an axis from unit length.
inline constexpr double kUnitScaleRounding = 16.0 * std::numeric_limits<double>::epsilon();

// Relative step at which an iteration for a parameter stops: a few units in the last place.
inline constexpr double kParamRatio = 1e-15;

} // namespace ZnGe
