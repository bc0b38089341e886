// The companion's tolerances, each with its reason.
#pragma once

namespace companion {

// How far two circles' centers may lie apart and still be one center: a share of the larger radius, more than
// files lose by rounding coordinates, and a share of the smaller one, in which a person would see the shift.
constexpr double kConcentricShareOfLarger = 2e-3;
constexpr double kConcentricShareOfSmaller = 1e-2;

// The least such distance, in drawing units, for circles whose share would be below the rounding of sums.
constexpr double kLeastConcentricDistance = 1e-9;

// Largest sine between the normals of circles in one plane.
constexpr double kSamePlaneSine = 1e-6;

// Slack on the least span of an arc, in radians, half a degree: a half circle whose ends were rounded to a few
// decimals comes out a little short, and of several that look alike all should be treated alike.
constexpr double kSpanSlack = 0.0087;

} // namespace companion
