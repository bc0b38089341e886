#include "interchange/recognize/arc_runs.h"

#include "interchange/recognize/limits.h"
#include "interchange/tolerance.h"

#include "quorl/ge/angles.h"
#include "quorl/ge/circ_arc2d.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace interchange {

namespace {

// A run that nearly closes is left open: whether the whole is a circle has been decided before.
constexpr double kLongestRun = 1.95 * ZnGe::kPi;

// Off the chord by less than the numbers can tell, on a chord long enough for that to mean something.
bool isStraight(const Segment& cubic, double rounding) {
  const ZnGeVector2d chord = cubic.end - cubic.start;
  const double size = chord.length();
  if (!(size > tolerance::kZeroLength)) return false;
  const double rounded = size > tolerance::kLongChord * rounding ? rounding : 0;
  const double slack = std::max(tolerance::kStraightCubic * size, rounded);
  for (const ZnGePoint2d& control : {cubic.control1, cubic.control2}) {
    const ZnGeVector2d arm = control - cubic.start;
    if (std::abs(chord.crossProduct(arm)) > slack * size) return false;
    const double along = chord.dotProduct(arm) / (size * size);
    if (along < -tolerance::kStraightCubic || along > 1 + tolerance::kStraightCubic) return false;
  }
  return true;
}

// How far a curve may leave the arc that stands for it. The height over the chord bounds it too: any flat
// curve is near some arc.
double partialLimit(double radius, double sweep, double rounding) {
  const double angle = std::abs(sweep);
  const double part =
      angle > tolerance::kHalfTurnSweep ? tolerance::kHalfTurnDeviation : tolerance::kPartialArcDeviation;
  const double sagitta = radius * (1 - std::cos(std::min(angle, ZnGe::kPi) / 2));
  const double shapeLimit = std::min(part * radius, tolerance::kPartOfSagitta * sagitta);
  return std::max(shapeLimit, std::min(rounding, sagitta / 8));
}

bool leavesAlong(const Segment& cubic, const CenterRadius& circle, double sweep, double rounding,
                 double angleSlack) {
  const auto fits = [&](const ZnGePoint2d& at, const ZnGeVector2d& tangent) {
    const ZnGeVector2d arm = at - circle.center;
    const ZnGeVector2d expected = sweep > 0 ? arm.perpVector() : -arm.perpVector();
    const double slack = angleSlack + rounding / std::max(tangent.length(), rounding);
    return std::abs(expected.signedAngleTo(tangent)) <= slack;
  };
  return fits(cubic.start, cubic.startTangent()) && fits(cubic.end, cubic.endTangent());
}

struct ArcRun {
  std::size_t count = 0;
  CenterRadius circle;
  double sweep = 0;
  double deviation = 0;
};

double totalSweep(std::span<const Segment> segments, ZnGePoint2d center) {
  double sweep = 0;
  for (const Segment& segment : segments) sweep += sweepAbout(segment, center);
  return sweep;
}

std::optional<ArcRun> fitRun(std::span<const Segment> segments) {
  std::optional<CenterRadius> circle;
  if (segments.size() == 1) {
    const ZnGeCircArc2d through(segments[0].start, segments[0].at(0.5), segments[0].end);
    if (through.radius() > 0) circle = CenterRadius{through.center(), through.radius()};
  } else {
    CircleFit fit(segments[0].start);
    for (const Segment& segment : segments) fit.add(segment);
    circle = fit.solve();
  }
  if (!circle || !isUsable(circle->center)) return std::nullopt;
  return ArcRun{segments.size(), *circle, totalSweep(segments, circle->center),
                largestDeviation(segments, *circle)};
}

// One circle for all of the segments, or nothing when they leave it.
std::optional<ArcRun> verifyRun(std::span<const Segment> segments, double rounding) {
  const std::optional<ArcRun> run = fitRun(segments);
  if (!run) return std::nullopt;
  const double angle = std::abs(run->sweep);
  const double limitSweep = segments.size() == 1 ? angle : std::min(angle, tolerance::kHalfTurnSweep);
  if (run->deviation > partialLimit(run->circle.radius, limitSweep, rounding)) return std::nullopt;
  for (const Segment& segment : segments) {
    if (!leavesAlong(segment, run->circle, run->sweep, rounding, tolerance::kTangent)) return std::nullopt;
  }
  return run;
}

bool joinsSmoothly(const Segment& one, const Segment& next) {
  return next.kind == SegmentKind::Cubic &&
         std::abs(one.endTangent().signedAngleTo(next.startTangent())) <= tolerance::kRoundTangent;
}

// A round between a straight piece or a corner on either side, whose curves do not fit one by one.
std::optional<ArcRun> wholeRound(std::span<const Segment> segments, double rounding) {
  constexpr std::size_t kLongestRound = 12; // keeps the cost of a failure in bounds
  std::size_t count = 1;
  while (count < segments.size() && count <= kLongestRound && !isStraight(segments[count], rounding) &&
         joinsSmoothly(segments[count - 1], segments[count])) {
    ++count;
  }
  if (count < 2 || count > kLongestRound) return std::nullopt;
  const std::optional<ArcRun> run = fitRun(segments.first(count));
  if (!run || std::abs(run->sweep) < tolerance::kRoundSweep || std::abs(run->sweep) > kLongestRun) return {};
  const double limit = std::max(tolerance::kRoundDeviation * run->circle.radius,
                                std::min(rounding, tolerance::kCircleDeviation * run->circle.radius));
  if (run->deviation > limit) return std::nullopt;
  for (const Segment& segment : segments.first(count)) {
    const bool along = leavesAlong(segment, run->circle, run->sweep, rounding, tolerance::kRoundTangent);
    if (!along || sweepAbout(segment, run->circle.center) * run->sweep < 0) return std::nullopt;
  }
  return run;
}

// Whether a cubic goes on along the circle of the run before it, by its middle and its end.
bool continues(const Segment& next, const ArcRun& run, double rounding) {
  if (next.kind != SegmentKind::Cubic) return false;
  const double limit = std::max(tolerance::kPartialArcDeviation * run.circle.radius, rounding);
  for (const double t : {0.5, 1.0}) {
    if (std::abs(next.at(t).distanceTo(run.circle.center) - run.circle.radius) > limit) return false;
  }
  const double sweep = sweepAbout(next, run.circle.center);
  return sweep * run.sweep > 0 && std::abs(sweep + run.sweep) < kLongestRun;
}

// The longest run of cubics from the first one that lie on one circle; count 0 when the first does not.
ArcRun cubicRun(std::span<const Segment> segments, double rounding) {
  if (const std::optional<ArcRun> round = wholeRound(segments, rounding)) return *round;
  const std::optional<ArcRun> best = verifyRun(segments.first(1), rounding);
  if (!best) return {};
  CircleFit fit(segments[0].start);
  fit.add(segments[0]);
  ArcRun growing = *best;
  while (growing.count < segments.size() && continues(segments[growing.count], growing, rounding)) {
    fit.add(segments[growing.count++]);
    const std::optional<CenterRadius> circle = fit.solve();
    if (!circle) break;
    growing.circle = *circle;
    growing.sweep += sweepAbout(segments[growing.count - 1], circle->center);
  }
  // What grew piece by piece may drift; halve until the whole run holds.
  for (std::size_t count = growing.count; count > 1; count /= 2) {
    if (const std::optional<ArcRun> run = verifyRun(segments.first(count), rounding)) return *run;
  }
  return *best;
}

Piece linePiece(const Segment& segment) {
  Piece piece;
  piece.start = segment.start;
  piece.end = segment.end;
  return piece;
}

Piece arcPiece(std::span<const Segment> segments, const ArcRun& run, RoundSpelling spelling) {
  Piece piece;
  piece.kind = PieceKind::Arc;
  piece.start = segments.front().start;
  piece.end = segments[run.count - 1].end;
  piece.circle = run.circle;
  piece.sweep = run.sweep;
  piece.fit = {spelling, static_cast<int>(run.count), run.deviation, run.deviation / run.circle.radius};
  return piece;
}

// Arcs say themselves on which ellipse they lie; neighbours that say the same are one.
bool sameEllipse(const EllipticArc& one, const EllipticArc& other, double rounding) {
  ZnGeVector2d major, minor, otherMajor, otherMinor;
  one.principalAxes(major, minor);
  other.principalAxes(otherMajor, otherMinor);
  const double slack = std::max(rounding, tolerance::kAxesDiffer * minor.length());
  const bool sameSize = std::abs(major.length() - otherMajor.length()) <= slack &&
                        std::abs(minor.length() - otherMinor.length()) <= slack;
  if (!sameSize || one.center.distanceTo(other.center) > slack || one.sweep * other.sweep < 0) return false;
  // The cross product over the other's length is how far the ends of the two axes lie apart.
  return one.isCircular(rounding) || std::abs(major.crossProduct(otherMajor)) <= slack * otherMajor.length();
}

Piece declaredArcs(std::span<const Segment> segments, double rounding, std::size_t& count) {
  EllipticArc arc = segments[0].arc;
  count = 1;
  const auto follows = [&](const Segment& next) {
    return next.kind == SegmentKind::Arc && sameEllipse(arc, next.arc, rounding) &&
           std::abs(arc.sweep + next.arc.sweep) <= ZnGe::kTwoPi + tolerance::kTurn;
  };
  while (count < segments.size() && follows(segments[count])) arc.sweep += segments[count++].arc.sweep;
  arc.sweep = std::clamp(arc.sweep, -ZnGe::kTwoPi, ZnGe::kTwoPi);
  if (arc.isCircular(rounding)) {
    ZnGeVector2d major, minor;
    arc.principalAxes(major, minor);
    const CenterRadius circle{arc.center, (major.length() + minor.length()) / 2};
    // A frame that an affine map has mirrored turns the other way in the plane.
    const double sweep = arc.u.crossProduct(arc.v) < 0 ? -arc.sweep : arc.sweep;
    const ArcRun run{count, circle, sweep, largestDeviation(segments.first(count), circle)};
    return arcPiece(segments, run, RoundSpelling::Arcs);
  }
  Piece piece = linePiece(segments[0]);
  piece.kind = PieceKind::Ellipse;
  piece.end = segments[count - 1].end;
  piece.ellipse = arc;
  return piece;
}

Piece cubicPiece(std::span<const Segment> segments, double rounding, std::size_t& count) {
  count = 1;
  if (isStraight(segments[0], rounding)) return linePiece(segments[0]);
  const ArcRun run = cubicRun(segments, rounding);
  if (run.count > 0 && std::abs(run.sweep) >= tolerance::kLeastSweep) {
    count = run.count;
    return arcPiece(segments, run, RoundSpelling::Curves);
  }
  Piece piece = linePiece(segments[0]);
  piece.kind = PieceKind::Cubic;
  piece.cubic = segments[0];
  return piece;
}

// A closed contour may start in the middle of an arc; then its last and first piece are one.
void joinAcrossStart(std::vector<Piece>& pieces, double rounding) {
  if (pieces.size() < 3) return;
  const Piece& first = pieces.front();
  Piece& last = pieces.back();
  if (first.kind != PieceKind::Arc || last.kind != PieceKind::Arc || first.sweep * last.sweep < 0) return;
  const double slack = std::max(rounding, tolerance::kPartialArcDeviation * last.circle.radius);
  const bool same = first.circle.center.distanceTo(last.circle.center) <= slack &&
                    std::abs(first.circle.radius - last.circle.radius) <= slack;
  if (!same || std::abs(first.sweep + last.sweep) > kLongestRun) return;
  if (std::abs(first.sweep) > std::abs(last.sweep)) last.circle = first.circle;
  last.sweep += first.sweep;
  last.end = first.end;
  last.fit.pieces += first.fit.pieces;
  last.fit.deviation = std::max(last.fit.deviation, first.fit.deviation);
  last.fit.relative = last.fit.deviation / last.circle.radius;
  pieces.erase(pieces.begin());
}

} // namespace

std::vector<Piece> reduceToPieces(const Contour& contour, const FitOptions& options) {
  const double rounding = options.rounding();
  const std::span<const Segment> all(contour.segments);
  std::vector<Piece> pieces;
  pieces.reserve(all.size());
  for (std::size_t i = 0, count = 1; i < all.size(); i += count) {
    const std::span<const Segment> rest = all.subspan(i);
    count = 1;
    switch (rest[0].kind) {
    case SegmentKind::Line:
      pieces.push_back(linePiece(rest[0]));
      break;
    case SegmentKind::Cubic:
      pieces.push_back(cubicPiece(rest, rounding, count));
      break;
    case SegmentKind::Arc:
      pieces.push_back(declaredArcs(rest, rounding, count));
      break;
    }
  }
  if (contour.closed) joinAcrossStart(pieces, rounding);
  return pieces;
}

} // namespace interchange
