// The module's tolerances, each with its reason.
#pragma once

#include <limits>

#include "torvi/host/geometry.h"

// The least slack of a comparison that scales with its operands: below it rounding alone can decide.
constexpr double kLeastScaledTolerance = 1e-12;

// What a coordinate may have lost on its way here, as a share of the largest one beside it: four units in the
// last place, for the rounding of what was drawn and that of a transformation or two.
constexpr double kCoordinateRounding = 4.0 * std::numeric_limits<double>::epsilon();

// How far the axes of a reference may be from unit length and from each other's perpendicular for having been
// turned and mirrored alone, thousands of times. Nobody scales by so little.
constexpr double kAxisRounding = 1e-12;

// What an angle loses on its way through a view and back, in radians: the axes of the view, their inverse,
// and the angle between the products.
constexpr double kAngleRounding = 256.0 * std::numeric_limits<double>::epsilon();

// A curve that is worked out again from what was drawn of it is still the same within so many units in the
// last place of its coordinates.
constexpr double kRepeatedRounding = 64.0 * std::numeric_limits<double>::epsilon();

// For relations between two lines: wider than equality of points, since a direction is the difference of two
// points that may stand close together.
inline const ZnGeTol& centerLineTolerance() {
  static const ZnGeTol tol = [] {
    ZnGeTol value;
    value.setEqualPoint(1e-8);
    value.setEqualVector(1e-8);
    return value;
  }();
  return tol;
}

// Members of a pattern: holes are drawn by hand or come rounded out of other programs, so centers a tenth of
// a thousandth apart lie on one circle or line. Also the unit in which ballots lie next to each other. Of a
// pattern that is smaller than a drawing unit it is the same share.
constexpr double kPatternTolerance = 1e-4;

// By how much more than a coordinate a center may be off that was worked out of three places: the flattest
// arc that tells one departs from it by a hundredth of its radius.
constexpr double kVotedPlaceRounding = 128.0;

// Directions nearer than this, in radians, are one, however far apart the points were that gave them.
constexpr double kLeastDirectionReach = 1e-7;
// And no nearer than this, however close together: two holes side by side point nowhere in particular.
constexpr double kMostDirectionReach = 1e-4;

// A member this near to an axis of the pitch center's mark, in radians, sits on its arm.
constexpr double kAxisMemberTolerance = 1e-3;

// How much of a turn a closed pitch circle leaves open, in radians: its ends must not be one point.
constexpr double kClosedPitchGap = 1e-6;

// Within this an end of an old version's center line is the center of its member.
constexpr double kLegacyEndTolerance = 1e-6;

// Two circles of one block are concentric, or of one size, up to what drawing programs lose by rounding.
inline const ZnGeTol& candidateTolerance() {
  static constexpr ZnGeTol tol(1e-6, 1e-6);
  return tol;
}

// A piece of center line and the whole of it are laid out apart from each other, so a piece counts as part of
// the whole with a slack that no user sees.
inline const ZnGeTol& coveringTolerance() {
  static constexpr ZnGeTol tol(1e-4, 1e-4);
  return tol;
}
