#include "interchange/recognize/circle_finder.h"

#include "interchange/recognize/circle_fit.h"
#include "interchange/tolerance.h"

#include "quorl/ge/angles.h"

#include <algorithm>
#include <cmath>

namespace interchange {

namespace {

struct Census {
  int lines = 0;
  int arcs = 0;
  int curves = 0;
};

Census countKinds(const Contour& contour, double seam) {
  Census census;
  for (const Segment& segment : contour.segments) {
    switch (segment.kind) {
    case SegmentKind::Line:
      census.lines += segment.start.distanceTo(segment.end) > seam;
      break;
    case SegmentKind::Cubic:
      ++census.curves;
      break;
    case SegmentKind::Arc:
      ++census.arcs;
      break;
    }
  }
  return census;
}

std::optional<CenterRadius> fitWhole(const Contour& contour) {
  CircleFit fit(contour.segments.front().start);
  for (const Segment& segment : contour.segments) fit.add(segment);
  return fit.solve();
}

// Every piece runs the same way round and together they make one turn.
bool turnsOnce(const Contour& contour, const CenterRadius& circle) {
  double total = 0;
  double least = 0;
  double most = 0;
  for (const Segment& segment : contour.segments) {
    const double sweep = sweepAbout(segment, circle.center);
    total += sweep;
    least = std::min(least, sweep);
    most = std::max(most, sweep);
  }
  const bool oneWay = least > -tolerance::kTurn || most < tolerance::kTurn;
  return oneWay && std::abs(std::abs(total) - ZnGe::kTwoPi) < tolerance::kTurn;
}

// A circle has no corners; stubs of a few rounding steps have no direction of their own.
bool isSmooth(const Contour& contour, double radius, double rounding) {
  const double shortest = std::max(tolerance::kSeam * radius, 4 * rounding);
  const Segment* last = nullptr;
  const Segment* first = nullptr;
  for (const Segment& segment : contour.segments) {
    const bool wholeTurn = segment.kind == SegmentKind::Arc && std::abs(segment.arc.sweep) > ZnGe::kPi;
    if (!wholeTurn && segment.start.distanceTo(segment.end) < shortest) continue;
    const double handle = segment.kind == SegmentKind::Cubic ? segment.startTangent().length() : radius;
    const double slack = tolerance::kCorner + 2 * rounding / std::max(handle, rounding);
    if (last && std::abs(last->endTangent().signedAngleTo(segment.startTangent())) > slack) return false;
    if (!first) first = &segment;
    last = &segment;
  }
  return !last ||
         std::abs(last->endTangent().signedAngleTo(first->startTangent())) <= tolerance::kCorner * 1.5;
}

// An ellipse swings twice a turn and does little else; a circle drawn by hand wobbles without order.
bool isEllipse(const Contour& contour, const CenterRadius& circle) {
  double cosine = 0, sine = 0, weights = 0;
  constexpr int kSteps = 8;
  const auto visit = [&](auto&& use) {
    for (const Segment& segment : contour.segments) {
      const double weight = std::abs(sweepAbout(segment, circle.center)) / kSteps;
      for (int i = 0; i < kSteps; ++i) {
        const ZnGeVector2d arm = segment.at((i + 0.5) / kSteps) - circle.center;
        use(arm.signedAngle(), arm.length() / circle.radius - 1, weight);
      }
    }
  };
  visit([&](double angle, double swing, double weight) {
    cosine += weight * swing * std::cos(2 * angle);
    sine += weight * swing * std::sin(2 * angle);
    weights += weight;
  });
  if (!(weights > 0)) return false;
  cosine *= 2 / weights;
  sine *= 2 / weights;
  const double amplitude = std::hypot(cosine, sine);
  if (amplitude < tolerance::kEllipseSwing) return false;
  double rest = 0;
  double mean = 0;
  visit([&](double, double swing, double weight) { mean += weight * swing / weights; });
  visit([&](double angle, double swing, double) {
    const double ellipse = mean + cosine * std::cos(2 * angle) + sine * std::sin(2 * angle);
    rest = std::max(rest, std::abs(swing - ellipse));
  });
  return rest < tolerance::kEllipseRemainder * amplitude;
}

Circle makeCircle(const Contour& contour, const CenterRadius& fitted, RoundSpelling spelling, int pieces) {
  Circle circle;
  circle.center = fitted.center;
  circle.radius = fitted.radius;
  circle.fit.spelling = spelling;
  circle.fit.pieces = pieces;
  circle.fit.deviation = largestDeviation(contour.segments, fitted);
  circle.fit.relative = circle.fit.deviation / fitted.radius;
  return circle;
}

std::optional<Circle> findWhole(const Contour& contour, const FitOptions& options) {
  const EllipticArc& arc = contour.segments.front().arc;
  if (!arc.isCircular(options.rounding())) return std::nullopt;
  ZnGeVector2d major, minor;
  arc.principalAxes(major, minor);
  const CenterRadius fitted{arc.center, (major.length() + minor.length()) / 2};
  return makeCircle(contour, fitted, RoundSpelling::Whole, 1);
}

std::optional<Circle> findPolygon(const Contour& contour, const FitOptions& options) {
  const int sides = static_cast<int>(contour.segments.size());
  if (sides < options.polygonSides) return std::nullopt;
  const std::optional<CenterRadius> fitted = fitWhole(contour);
  if (!fitted) return std::nullopt;
  const double rounding = std::min(options.rounding(), tolerance::kCircleDeviation * fitted->radius);
  const double side = 2 * fitted->radius * std::sin(ZnGe::kPi / sides);
  const double sideSlack = tolerance::kPolygonSide * side + 2 * rounding;
  const double vertexSlack = tolerance::kPolygonVertex * fitted->radius + rounding;
  // The slack must leave sides that can be told from none, or a cloud of rounded points would do.
  if (sideSlack > side / 2) return std::nullopt;
  for (const Segment& segment : contour.segments) {
    if (std::abs(segment.start.distanceTo(segment.end) - side) > sideSlack) return std::nullopt;
    if (std::abs(segment.start.distanceTo(fitted->center) - fitted->radius) > vertexSlack)
      return std::nullopt;
  }
  if (!turnsOnce(contour, *fitted)) return std::nullopt;
  const Circle circle = makeCircle(contour, *fitted, RoundSpelling::Polygon, sides);
  if (circle.fit.relative > options.circleTolerance) return std::nullopt;
  return circle;
}

double limitFor(const Census& census) {
  if (census.curves == 0) return tolerance::kArcsDeviation;
  return census.curves + census.arcs <= 2 ? tolerance::kCircleDeviation : tolerance::kManyCurvesDeviation;
}

std::optional<Circle> findCurved(const Contour& contour, const FitOptions& options) {
  const std::optional<CenterRadius> fitted = fitWhole(contour);
  if (!fitted) return std::nullopt;
  const double rounding = options.rounding();
  const Census census = countKinds(contour, tolerance::kSeam * fitted->radius);
  if (census.lines > 0) return std::nullopt;
  for (const Segment& segment : contour.segments) {
    if (segment.kind == SegmentKind::Arc && !segment.arc.isCircular(rounding)) return std::nullopt;
  }
  const RoundSpelling spelling = census.curves ? RoundSpelling::Curves : RoundSpelling::Arcs;
  const Circle circle = makeCircle(contour, *fitted, spelling, census.curves + census.arcs);
  if (circle.fit.relative > std::min(limitFor(census), options.circleTolerance)) return std::nullopt;
  if (!turnsOnce(contour, *fitted) || !isSmooth(contour, fitted->radius, rounding)) return std::nullopt;
  if (isEllipse(contour, *fitted)) return std::nullopt;
  return circle;
}

} // namespace

std::optional<Circle> findCircle(const Contour& contour, const FitOptions& options) {
  if (!contour.closed || contour.segments.empty()) return std::nullopt;
  const Segment& first = contour.segments.front();
  const bool whole =
      contour.segments.size() == 1 && first.kind == SegmentKind::Arc && first.arc.isWholeTurn();
  if (whole) return findWhole(contour, options);
  const bool polygon = std::all_of(contour.segments.begin(), contour.segments.end(),
                                   [](const Segment& s) { return s.kind == SegmentKind::Line; });
  return polygon ? findPolygon(contour, options) : findCurved(contour, options);
}

} // namespace interchange
