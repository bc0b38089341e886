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

// Slack on the least span of an arc, in radians, half a degree: a half circle whose ends were rounded to a
// few decimals comes out a little short, and of several that look alike all should be treated alike.
constexpr double kSpanSlack = 0.0087;

// Least sine between two edges that meet at a corner, 30 degrees: the sides of a slot that a hand drew are
// nearer to parallel, the edges of a part seldom.
constexpr double kLeastCornerSine = 0.5;

// Largest radius of a corner's relief as a share of the shorter edge beside it. What is larger shapes the
// part.
constexpr double kReliefShareOfNeighbour = 0.25;

// How far outside its circle the corner of a relief may lie, as a share of the radius: a tool that just
// reaches into the corner leaves it on the circle itself, give or take the rounding of a file.
constexpr double kReliefReach = 0.02;

// How far, as a share of its radius, a hole may lie off the ring or row that it is taken into: less than the
// eye sees, more than files lose by rounding.
constexpr double kHolePlaceShare = 2e-2;

// How much the radii of holes of one size may differ, as a share.
constexpr double kSameHoleShare = 1e-2;

// Groups of holes: the next one stands no further off than this many times the distance to the nearest, which
// bridges one empty place; neighbours in a strict sense are nearer than that.
constexpr double kGroupReach = 2.1;
constexpr double kNeighbourReach = 1.6;

// A ring spreads over at least 60 degrees; an arc that witnesses its middle without being half a circle has
// at least this share of its radius, or it is the rounding of a corner.
constexpr double kLeastRingSpan = 1.04;
constexpr double kRimShare = 0.5;

// Holes within this many times a ring's radius count as what stands there, and the ring must be this share.
constexpr double kRingSurroundings = 1.1;
constexpr double kRingMajority = 0.6;

// How far the middle of an outline may lie from that of a ring, as a share of the ring's radius.
constexpr double kMiddleShare = 1e-2;

// Three places say where a circle's center is only when they form a real triangle; places fit a circle only
// when they spread both ways. On the way to the fit places count that lie off by several tolerances.
constexpr double kLeastTripleSine = 0.02;
constexpr double kLeastFitShare = 1e-4;
constexpr double kRoughShare = 6.0;

// Ends of lines that meet, and what counts as a closed line's first and last point: a share of the drawing's
// diagonal.
constexpr double kJoinShare = 1e-5;

// How finely outlines are laid out as polygons, as a share of the length of a curve; they only tell inside
// from outside.
constexpr double kOutlineChordShare = 1e-3;

// A rectangle that reaches this near to the edge of everything drawn is the sheet's frame.
constexpr double kFrameShare = 2e-2;

// A disc and its own outline, whose polygon is a little smaller.
constexpr double kSameDiscShare = 5e-2;

// How far the ends of a slot's sides and half circles may lie apart, as a share of the half circle's radius:
// a person would not see the gap, and files round coordinates to less.
constexpr double kSlotJoinShare = 1e-2;

// Largest sine between sides that run side by side, and cosine between those at a right angle.
constexpr double kParallelSideSine = 1e-2;

// A strip is more than this many times as long as wide; its corners meet within this share of its length.
constexpr double kLeastStripRatio = 3.0;
constexpr double kStripJoinShare = 1e-4;

// Holes this near to their exact places, in drawing units, are left where they are: a pattern takes them in.
constexpr double kExactPlace = 2e-5;

// Sine of twice the angle up to which a slot lies along an axis, and its marks need not be turned.
constexpr double kStraightSine = 1e-6;

} // namespace companion
