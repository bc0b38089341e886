// What a set of circles is a pattern of: which of them share a pitch circle or a line, in which order they
// follow each other, where the chain of members breaks, and whether the circle is closed. The answer depends
// on the question alone: no drawing is read or written.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <variant>

#include "torvi/core/tolerance.h"
#include "torvi/drawing/types.h"
#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

// The circles, and the centers of those that take part. A circle's position is its name in keys: one that
// takes no part keeps its place with a radius of 0.
struct ZnPatternCenters {
  ZnArray<ZnGeCircArc3d> circles;
  ZnGePlane patternPlane;         // of the first circle that has a radius
  ZnArray<ZnGePoint2d> centers2d; // in the plane's coordinates
  ZnArray<int> centerIndices;     // their circles
  ZnGeTol tol;                    // within which they are on one curve
};

// The centers on a curve: parameter to position in centers2d.
using ZnPatternMembers = std::map<double, int>;
// Of two centers at one parameter the first counts.
TORVI_EXPORT ZnPatternMembers membersOnCurve(const ZnGeCurve2d& curve, const ZnPatternCenters& centers);
// Another rule of who is on a curve. It may move a center onto the curve, as a preview does with the
// cursor's.
using ZnPatternMemberRule = std::function<ZnPatternMembers(const ZnGeCurve2d&, ZnPatternCenters&)>;

// What a reference edge says.
struct ZnPatternReference {
  int kind = 0;       // 0 nothing, 1 an arc that fixes the pitch center, 2 a line that fixes the direction
  ZnGePoint3d center; // of the arc
  ZnGeVector3d direction; // of the line
};

// Everything is in one coordinate system, which is also that of the answer.
struct ZnPatternQuestion {
  ZnArray<ZnGeCircArc3d> circles;
  CenterMarkPatternType patternType = kCenterPatternNone; // none: to be found out
  // The reference edge's curve, held by the caller; null for an edge that is gone. A pick is an offset from
  // the start of a reference arc, negative for none. A reference that does not fit is dropped where it is
  // optional, and what an earlier analysis made of it stands; else there is no pattern.
  bool hasReferenceEdge = false;
  const ZnGeCurve3d* referenceCurve = nullptr;
  double referencePickParam = -1.0;
  bool isReferenceEdgeOptional = true;
  ZnPatternReference formerReference;
  bool fullPcd = false;     // the pitch circle is closed
  bool autoFullPcd = false; // decided by the largest gap
  int fixedCenterCount = 0; // so many first circles are the user's, the others candidates; 0: no candidates
  bool findsAxisMembers = false;
  // Of the ring as it stood: where most of its holes still lie there is no vote, and of too few holes they
  // tell the circle and on which side of it they follow each other.
  std::optional<ZnGePoint3d> formerPitchCenter;
  ZnArray<int> formerChain;
  ZnPatternMemberRule memberRule; // membersOnCurve without one
  // What a person's drawing may be off, for patterns of a drawing unit and more; less for smaller ones, and
  // rounding comes on top.
  double tolerance = kPatternTolerance;
};

struct TORVI_EXPORT ZnPatternAnalysis {
  // Nothing for circles that make no pattern and for a single one.
  using MajorCurve = std::variant<std::monostate, ZnGeLineSeg3d, ZnGeCircArc3d>;

  bool isPattern = false;
  CenterMarkPatternType patternType = kCenterPatternNone;
  ZnPatternReference reference;
  bool dropsReferenceEdge = false;
  bool fullPcd = false;
  ZnArray<ZnGeCircArc3d> circles; // with a radius of 0 where they take no part
  ZnGePlane patternPlane;
  ZnArray<int> memberChain; // positions of circles, in order along the curve
  MajorCurve majorCurve;    // the pitch circle, or the line from the first member to the last
  // The members left, right, above and below of the pitch center in the plane's own axes, in the order left,
  // right, bottom, top; -1 for none.
  std::array<int, 4> axisMembers = {-1, -1, -1, -1};

  ZnGeVector3d planeDirection() const { return patternPlane.normal().perpVector(); }
  // Arms count left, right, bottom, top by the drawing's x axis, axis members by the plane's own. Gives the
  // position of an arm and the arm at a position.
  int axisOfArm(int arm) const;
  const ZnGeLineSeg3d* line() const { return std::get_if<ZnGeLineSeg3d>(&majorCurve); }
  const ZnGeCircArc3d* pitchCircle() const { return std::get_if<ZnGeCircArc3d>(&majorCurve); }
  bool hasAllCircles() const; // each stands in the chain
  void reverse();             // the line runs the other way, and with it the chain
  void transformBy(const ZnGeMatrix3d& map);
};

// The plane of the first circle that has a radius.
TORVI_EXPORT ZnGePlane planeOfPattern(const ZnArray<ZnGeCircArc3d>& circles);
TORVI_EXPORT ZnPatternAnalysis analysePattern(const ZnPatternQuestion& question);
