// The tolerances of the drawing readers and of the circle finder, each with its reason.
// Relative values are fractions of a radius, absolute ones millimetres on the page.
#pragma once

namespace interchange::tolerance {

// Half a unit in the third decimal in both directions, the usual precision of a millimetre file, with room
// for one relative command that adds its own rounding.
inline constexpr double kRounding = 1.5e-3;
// Ends nearer than this are one point: relative commands add up their rounding along a subpath.
inline constexpr double kJoin = 2e-3;
// Shorter pieces carry no direction and no length.
inline constexpr double kZeroLength = 1e-9;

// Two half circles of one cubic each leave the circle by 1.84 %; nothing drawn as a circle is worse.
inline constexpr double kCircleDeviation = 0.02;
// Three and more curves to a turn approximate a circle far better than two, so that what is off by more was
// meant to be something else; circles drawn or dragged by hand come to about 1.6 %.
inline constexpr double kManyCurvesDeviation = 0.01;
// The axes of an arc are written, not approximated: only the rounding of the numbers may part them.
inline constexpr double kAxesDiffer = 0.003;
// Circular arcs of one circle agree about it; ovals made of arcs of two radii do not.
inline constexpr double kArcsDeviation = 0.0125;
// A radius that swings twice a turn by more than this is an ellipse when little else is left over.
inline constexpr double kEllipseSwing = 0.0025;
inline constexpr double kEllipseRemainder = 0.35;
// A straight piece longer than this part of the radius is a flat or a key, not a seam.
inline constexpr double kSeam = 0.03;
// A corner between two curves of a circle: more is a petal or a lens (radians).
inline constexpr double kCorner = 0.25;
// Whole turn of a circle's pieces about its centre (radians off 2 pi).
inline constexpr double kTurn = 0.06;

// Vertices and sides of a polygon that stands for a circle.
inline constexpr double kPolygonVertex = 0.005;
inline constexpr double kPolygonSide = 0.05;

// A part of a circle has less evidence than a whole one: the curve keeps to the circle this closely ...
inline constexpr double kPartialArcDeviation = 0.004;
// ... unless it is about half a turn in one cubic ...
inline constexpr double kHalfTurnDeviation = 0.02;
inline constexpr double kHalfTurnSweep = 2.4;
// ... and within this part of its own height above the chord, or a wobble in a flat curve would pass.
inline constexpr double kPartOfSagitta = 0.05;
// Rounds that an editor cut into several smooth curves: as a whole they say more than each of them.
inline constexpr double kRoundDeviation = 0.01;
inline constexpr double kRoundSweep = 0.7;
inline constexpr double kRoundTangent = 0.15;
// Flatter pieces stay curves: their centre is a guess (radians).
inline constexpr double kLeastSweep = 0.12;
// End tangents of a curve against the tangents of its arc (radians).
inline constexpr double kTangent = 0.05;

// A curve that runs back to where it starts within this reach is a mark of the cutting program at a corner.
inline constexpr double kCornerLoop = 0.15;
// A dot is the touch of a round pen that goes this far: enough to be read as a line, too little to be seen.
inline constexpr double kDotLength = 2e-3;
// A cubic whose control points leave the chord by less than this part of it is a line.
inline constexpr double kStraightCubic = 1e-5;
// On a chord of this many rounding steps one step off it is straight as well.
inline constexpr double kLongChord = 100;
// Scale factors nearer than this make a transform a similarity, which a block reference can carry.
inline constexpr double kSimilarity = 1e-6;
// A linear map below this determinant flattens what it draws.
inline constexpr double kFlatMap = 1e-18;
// A thousand kilometres: what lies beyond is a damaged number, and squares of it still are finite.
inline constexpr double kLargestCoordinate = 1e9;

} // namespace interchange::tolerance
