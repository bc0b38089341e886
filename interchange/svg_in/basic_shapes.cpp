#include "interchange/svg_in/basic_shapes.h"

#include "interchange/svg_in/number_scanner.h"

#include "quorl/ge/angles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace interchange {

namespace {

struct Reader {
  const pugi::xml_node& node;
  const LengthContext& lengths;
  DrawnContours& drawn;

  double x(const char* name, double missing = 0) const {
    return lengthAttribute(node, name, lengths, LengthAxis::X, missing, drawn);
  }
  double y(const char* name, double missing = 0) const {
    return lengthAttribute(node, name, lengths, LengthAxis::Y, missing, drawn);
  }
  double radius(const char* name, LengthAxis axis, double missing) const {
    return lengthAttribute(node, name, lengths, axis, missing, drawn);
  }
};

void readLine(const Reader& read) {
  Contour contour;
  contour.segments.push_back(Segment::line({read.x("x1"), read.y("y1")}, {read.x("x2"), read.y("y2")}));
  read.drawn.contours.push_back(std::move(contour));
}

void readPoints(const Reader& read, bool closed) {
  NumberScanner scanner(trimmed(read.node.attribute("points").value()));
  std::vector<ZnGePoint2d> points;
  while (!scanner.atEnd()) {
    const std::optional<double> x = scanner.number();
    scanner.skipSeparator();
    const std::optional<double> y = x ? scanner.number() : std::nullopt;
    if (!y) {
      read.drawn.problem = "points are read up to \"" + std::string(scanner.rest()) + "\"";
      read.drawn.expected = "pairs of numbers";
      break;
    }
    points.push_back({*x, *y});
    scanner.skipSeparator();
  }
  if (points.size() < 2) {
    read.drawn.skipReason = "fewer than two points";
    return;
  }
  Contour contour;
  contour.closed = closed;
  contour.segments.reserve(points.size());
  for (std::size_t i = 1; i < points.size(); ++i) {
    contour.segments.push_back(Segment::line(points[i - 1], points[i]));
  }
  read.drawn.contours.push_back(std::move(contour));
}

void readPolyline(const Reader& read) { readPoints(read, false); }
void readPolygon(const Reader& read) { readPoints(read, true); }

Contour wholeEllipse(ZnGePoint2d center, double rx, double ry) {
  EllipticArc arc;
  arc.center = center;
  arc.u = {rx, 0};
  arc.v = {0, ry};
  arc.sweep = ZnGe::kTwoPi;
  Segment segment = Segment::ellipticArc(arc);
  segment.end = segment.start;
  Contour contour;
  contour.closed = true;
  contour.segments.push_back(segment);
  return contour;
}

void addEllipse(const Reader& read, double rx, double ry) {
  if (rx > 0 && ry > 0) {
    read.drawn.contours.push_back(wholeEllipse({read.x("cx"), read.y("cy")}, rx, ry));
  } else {
    if (read.drawn.skipReason.empty())
      read.drawn.skipReason = rx < 0 || ry < 0 ? "negative radius" : "zero radius";
  }
}

void readCircle(const Reader& read) {
  const double r = read.radius("r", LengthAxis::Diagonal, 0);
  addEllipse(read, r, r);
}

// One radius alone counts for both.
void readEllipse(const Reader& read) {
  const double unset = -1;
  double rx = read.radius("rx", LengthAxis::X, unset);
  double ry = read.radius("ry", LengthAxis::Y, unset);
  if (!read.node.attribute("rx")) rx = std::max(ry, 0.0);
  if (!read.node.attribute("ry")) ry = std::max(rx, 0.0);
  addEllipse(read, rx, ry);
}

// Sides and corners in the order of the rule: from the left end of the top side onwards, y down.
Contour roundedRectangle(ZnGePoint2d corner, double width, double height, double rx, double ry) {
  Contour contour;
  contour.closed = true;
  const double right = corner.x + width, bottom = corner.y + height;
  const auto side = [&](ZnGePoint2d from, ZnGePoint2d to) {
    contour.segments.push_back(Segment::line(from, to));
  };
  const auto round = [&](ZnGePoint2d center, double start) {
    if (rx <= 0 || ry <= 0) return;
    contour.segments.push_back(Segment::ellipticArc({center, {rx, 0}, {0, ry}, start, ZnGe::kHalfPi}));
  };
  side({corner.x + rx, corner.y}, {right - rx, corner.y});
  round({right - rx, corner.y + ry}, -ZnGe::kHalfPi);
  side({right, corner.y + ry}, {right, bottom - ry});
  round({right - rx, bottom - ry}, 0);
  side({right - rx, bottom}, {corner.x + rx, bottom});
  round({corner.x + rx, bottom - ry}, ZnGe::kHalfPi);
  side({corner.x, bottom - ry}, {corner.x, corner.y + ry});
  round({corner.x + rx, corner.y + ry}, ZnGe::kPi);
  return contour;
}

void readRectangle(const Reader& read) {
  const double width = read.x("width");
  const double height = read.y("height");
  if (!(width > 0) || !(height > 0)) {
    if (read.drawn.skipReason.empty())
      read.drawn.skipReason = width < 0 || height < 0 ? "negative size" : "zero size";
    return;
  }
  const double unset = -1;
  double rx = read.radius("rx", LengthAxis::X, unset);
  double ry = read.radius("ry", LengthAxis::Y, unset);
  if (rx < 0) rx = std::max(ry, 0.0);
  if (ry < 0) ry = rx;
  rx = std::min(rx, width / 2);
  ry = std::min(ry, height / 2);
  if (rx == 0 || ry == 0) rx = ry = 0;
  read.drawn.contours.push_back(roundedRectangle({read.x("x"), read.y("y")}, width, height, rx, ry));
}

struct Element {
  std::string_view name;
  void (*read)(const Reader&);
};

constexpr std::array<Element, 6> kElements{{{"line", readLine},
                                            {"polyline", readPolyline},
                                            {"polygon", readPolygon},
                                            {"rect", readRectangle},
                                            {"circle", readCircle},
                                            {"ellipse", readEllipse}}};

} // namespace

double lengthAttribute(const pugi::xml_node& node, const char* name, const LengthContext& lengths,
                       LengthAxis axis, double missing, DrawnContours& drawn) {
  const pugi::xml_attribute attribute = node.attribute(name);
  const std::string_view text = trimmed(attribute.value());
  if (text.empty() || text == "auto") return missing;
  const std::optional<Length> length = parseLength(text);
  if (length) return resolve(*length, lengths, axis);
  drawn.problem = std::string(name) + "=\"" + std::string(text.substr(0, 40)) + "\" is no length";
  drawn.expected = "a number with or without a unit";
  // At a place that the author did not write, a hole is worse than none.
  drawn.skipReason = "a number that cannot be read";
  return missing;
}

bool readBasicShape(const pugi::xml_node& node, std::string_view name, const LengthContext& lengths,
                    DrawnContours& drawn) {
  for (const Element& element : kElements) {
    if (element.name != name) continue;
    element.read({node, lengths, drawn});
    return true;
  }
  return false;
}

} // namespace interchange
