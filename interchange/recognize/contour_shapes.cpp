#include "interchange/recognize/contour_shapes.h"

#include "interchange/recognize/arc_runs.h"
#include "interchange/recognize/circle_finder.h"
#include "interchange/tolerance.h"

#include "quorl/ge/angles.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace interchange {

namespace {

// Beyond this the chord is too short for a bulge to say where the circle lies; the arc is cut in two.
constexpr double kLargestBulgeSweep = 1.9 * ZnGe::kPi;
// From here on the chord changes faster with the sweep than the numbers of the ends were rounded.
constexpr double kShortChordSweep = 1.4 * ZnGe::kPi;

bool hasExtent(const Segment& segment) {
  const double least = tolerance::kZeroLength;
  if (segment.kind == SegmentKind::Cubic) {
    return segment.start.distanceTo(segment.end) > least ||
           segment.start.distanceTo(segment.control1) > least ||
           segment.start.distanceTo(segment.control2) > least;
  }
  if (segment.kind == SegmentKind::Arc) {
    return std::abs(segment.arc.sweep) > tolerance::kZeroLength &&
           std::max(segment.arc.u.length(), segment.arc.v.length()) > least;
  }
  return segment.start.distanceTo(segment.end) > least;
}

// Cutting programs leave curves of no area at corners; as a shape each would break the outline in two.
bool isCornerLoop(const Segment& segment, double reach) {
  return segment.kind == SegmentKind::Cubic &&
         segment.start.distanceTo(segment.end) <= tolerance::kZeroLength &&
         segment.start.distanceTo(segment.control1) <= reach &&
         segment.start.distanceTo(segment.control2) <= reach;
}

double contourExtent(const std::vector<Segment>& segments) {
  double extent = 0;
  for (const Segment& segment : segments) {
    for (const double t : {0.5, 1.0}) extent = std::max(extent, segments[0].start.distanceTo(segment.at(t)));
  }
  return extent;
}

Arc arcOf(const Piece& piece) {
  Arc arc;
  arc.center = piece.circle.center;
  arc.radius = piece.circle.radius;
  arc.fit = piece.fit;
  const ZnGePoint2d from = piece.sweep > 0 ? piece.start : piece.end;
  arc.startAngle = (from - arc.center).angle();
  arc.endAngle = arc.startAngle + std::abs(piece.sweep);
  return arc;
}

Shape ellipseOf(const Piece& piece) {
  const EllipticArc& drawn = piece.ellipse;
  EllipseArc ellipse;
  ZnGeVector2d minor;
  const double offset = drawn.principalAxes(ellipse.major, minor);
  ellipse.center = drawn.center;
  ellipse.ratio = minor.length() / ellipse.major.length();
  if (!(ellipse.ratio > tolerance::kZeroLength)) return Line{piece.start, piece.end};
  double start = drawn.start - offset;
  double sweep = drawn.sweep;
  // Mirrored axes: the parameter counts the other way.
  if (ellipse.major.crossProduct(minor) < 0) {
    start = -start;
    sweep = -sweep;
  }
  if (sweep < 0) {
    start += sweep;
    sweep = -sweep;
  }
  ellipse.startParam = ZnGe::normalizeAngle(start);
  ellipse.endParam = ellipse.startParam + sweep;
  ellipse.closed = drawn.isWholeTurn();
  return ellipse;
}

// The sweep that keeps the radius as it was found, over a chord whose ends are rounded.
double sweepOver(double chord, const Piece& piece) {
  const double half = chord / (2 * piece.circle.radius);
  if (std::abs(piece.sweep) < kShortChordSweep || !(half < 1)) return piece.sweep;
  return std::copysign(ZnGe::kTwoPi - 2 * std::asin(half), piece.sweep);
}

void appendArc(std::vector<Vertex>& vertices, const Piece& piece) {
  if (std::abs(piece.sweep) <= kLargestBulgeSweep) {
    const double sweep = sweepOver(piece.start.distanceTo(piece.end), piece);
    vertices.push_back({piece.start, std::tan(sweep / 4)});
    return;
  }
  const double bulge = std::tan(piece.sweep / 8);
  const double middle = (piece.start - piece.circle.center).signedAngle() + piece.sweep / 2;
  const ZnGeVector2d arm{std::cos(middle), std::sin(middle)};
  vertices.push_back({piece.start, bulge});
  vertices.push_back({piece.circle.center + piece.circle.radius * arm, bulge});
}

Shape polylineOf(std::span<const Piece> pieces, bool closed) {
  Polyline polyline;
  polyline.closed = closed;
  polyline.vertices.reserve(pieces.size() + 1);
  for (const Piece& piece : pieces) {
    if (piece.kind == PieceKind::Arc) {
      appendArc(polyline.vertices, piece);
    } else {
      polyline.vertices.push_back({piece.start, 0});
    }
  }
  if (!closed) polyline.vertices.push_back({pieces.back().end, 0});
  return polyline;
}

Shape splineOf(std::span<const Piece> pieces, bool closed) {
  Spline spline;
  spline.closed = closed;
  spline.control.push_back(pieces.front().start);
  spline.knots.assign(Spline::kDegree + 1, 0.0);
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const Segment& cubic = pieces[i].cubic;
    spline.control.insert(spline.control.end(), {cubic.control1, cubic.control2, cubic.end});
    spline.knots.insert(spline.knots.end(), Spline::kDegree, static_cast<double>(i + 1));
  }
  spline.knots.push_back(static_cast<double>(pieces.size()));
  return spline;
}

bool isBulgeable(const Piece& piece) { return piece.kind == PieceKind::Line || piece.kind == PieceKind::Arc; }

// Whether two neighbours go into one shape; an ellipse is a shape of its own.
bool belongTogether(const Piece& one, const Piece& next) {
  if (isBulgeable(one)) return isBulgeable(next);
  return one.kind == PieceKind::Cubic && next.kind == PieceKind::Cubic;
}

Shape shapeOfRun(std::span<const Piece> run, bool closed) {
  const Piece& first = run.front();
  if (first.kind == PieceKind::Ellipse) return ellipseOf(first);
  if (first.kind == PieceKind::Cubic) return splineOf(run, closed);
  if (run.size() > 1) return polylineOf(run, closed);
  if (first.kind == PieceKind::Arc) return arcOf(first);
  return Line{first.start, first.end};
}

// There and back on one line is drawn as that line.
bool isDoubledLine(const std::vector<Piece>& pieces) {
  return pieces.size() == 2 && pieces[0].kind == PieceKind::Line && pieces[1].kind == PieceKind::Line;
}

void closeEnds(Contour& contour, const FitOptions& options) {
  std::vector<Segment>& segments = contour.segments;
  std::erase_if(segments, [](const Segment& segment) { return !hasExtent(segment); });
  if (segments.empty()) return;
  const ZnGePoint2d start = segments.front().start;
  if (segments.back().end.distanceTo(start) > options.join()) {
    if (contour.closed) segments.push_back(Segment::line(segments.back().end, start));
    return;
  }
  // A short single line also ends near its start; only what runs round an area closes.
  const bool isTiny = segments.size() < 3 && contourExtent(segments) <= 4 * options.join();
  if (isTiny && !contour.closed) return;
  const bool lone = segments.size() == 1 && segments.front().kind == SegmentKind::Line;
  contour.closed = !lone;
  if (segments.front().kind == SegmentKind::Arc && segments.size() == 1) return;
  if (contour.closed) segments.back().end = start;
  if (!hasExtent(segments.back()) && segments.size() > 1) segments.pop_back();
}

} // namespace

int tidy(Contour& contour, const FitOptions& options) {
  const double reach = tolerance::kCornerLoop / options.millimetresPerUnit;
  const bool outgrown = contourExtent(contour.segments) > 4 * reach;
  const auto loops = !outgrown ? 0 : std::erase_if(contour.segments, [&](const Segment& segment) {
    return isCornerLoop(segment, reach);
  });
  closeEnds(contour, options);
  return static_cast<int>(loops);
}

std::vector<Shape> shapesOf(const Contour& contour, const FitOptions& options) {
  if (contour.segments.empty()) return {};
  if (const std::optional<Circle> circle = findCircle(contour, options)) return {*circle};
  std::vector<Piece> pieces = reduceToPieces(contour, options);
  if (contour.closed && isDoubledLine(pieces)) pieces.pop_back();
  const auto border =
      std::adjacent_find(pieces.begin(), pieces.end(),
                         [](const Piece& one, const Piece& next) { return !belongTogether(one, next); });
  if (border == pieces.end()) return {shapeOfRun(pieces, contour.closed)};
  if (contour.closed && belongTogether(pieces.back(), pieces.front())) {
    std::rotate(pieces.begin(), border + 1, pieces.end());
  }
  std::vector<Shape> shapes;
  for (auto first = pieces.begin(); first != pieces.end();) {
    auto last = first + 1;
    while (last != pieces.end() && belongTogether(*(last - 1), *last)) ++last;
    shapes.push_back(shapeOfRun({first, last}, false));
    first = last;
  }
  return shapes;
}

} // namespace interchange
