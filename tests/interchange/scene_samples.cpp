#include "interchange/scene_samples.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace interchange_test {

using namespace interchange;

namespace {

constexpr int kSteps = 150;

struct Sampler {
  std::vector<Point2> points;

  void operator()(const Line& line) { span(line.start, line.end); }
  void operator()(const Circle& circle) { arc(circle.center, circle.radius, 0, 2 * M_PI); }
  void operator()(const Arc& a) { arc(a.center, a.radius, a.startAngle, a.endAngle); }
  void operator()(const Text& text) { points.push_back(text.position); }
  void operator()(const Insert&) {}

  void operator()(const EllipseArc& e) {
    const Point2 minor = e.ratio * Point2{-e.major.y, e.major.x};
    for (int i = 0; i <= kSteps; ++i) {
      const double t = e.startParam + (e.endParam - e.startParam) * i / kSteps;
      points.push_back(e.center + std::cos(t) * e.major + std::sin(t) * minor);
    }
  }

  void operator()(const Polyline& polyline) {
    const std::size_t count = polyline.vertices.size();
    for (std::size_t i = 0; i + (polyline.closed ? 0 : 1) < count; ++i) {
      const Vertex& vertex = polyline.vertices[i];
      bulged(vertex.point, polyline.vertices[(i + 1) % count].point, vertex.bulge);
    }
  }

  // De Boor's recursion on the knots, which knows nothing of Bezier pieces.
  void operator()(const Spline& spline) {
    const std::size_t spans = (spline.control.size() - 1) / 3;
    for (std::size_t i = 0; i <= spans * kSteps; ++i) {
      points.push_back(deBoor(spline, static_cast<double>(i) / kSteps));
    }
  }

private:
  void span(Point2 a, Point2 b) {
    for (int i = 0; i <= kSteps; ++i) points.push_back(a + (static_cast<double>(i) / kSteps) * (b - a));
  }
  void arc(Point2 center, double radius, double from, double to) {
    for (int i = 0; i <= kSteps; ++i) {
      const double t = from + (to - from) * i / kSteps;
      points.push_back(center + radius * Point2{std::cos(t), std::sin(t)});
    }
  }
  // The rational quadratic form of a circular arc over its chord.
  void bulged(Point2 a, Point2 b, double bulge) {
    const double sweep = 4 * std::atan(bulge);
    const Point2 chord = b - a;
    for (int i = 0; i <= kSteps; ++i) {
      const double part = static_cast<double>(i) / kSteps;
      if (bulge == 0) {
        points.push_back(a + part * chord);
        continue;
      }
      // Chord from a to the point at angle part * sweep: turned by half the rest of the sweep.
      const double size = std::sin(part * sweep / 2) / std::sin(sweep / 2);
      const double turn = -(1 - part) * sweep / 2;
      const Point2 turned{chord.x * std::cos(turn) - chord.y * std::sin(turn),
                          chord.x * std::sin(turn) + chord.y * std::cos(turn)};
      points.push_back(a + size * turned);
    }
  }
  static Point2 deBoor(const Spline& spline, double u) {
    const int degree = Spline::kDegree;
    const auto& knots = spline.knots;
    std::size_t k = degree;
    while (k + 1 < spline.control.size() && knots[k + 1] <= u) ++k;
    std::vector<Point2> d(spline.control.begin() + static_cast<std::ptrdiff_t>(k - degree),
                          spline.control.begin() + static_cast<std::ptrdiff_t>(k + 1));
    for (int r = 1; r <= degree; ++r) {
      for (int j = degree; j >= r; --j) {
        const std::size_t i = static_cast<std::size_t>(j) + k - degree;
        const double width = knots[i + static_cast<std::size_t>(degree - r) + 1] - knots[i];
        const double alpha = width > 0 ? (u - knots[i]) / width : 0;
        d[static_cast<std::size_t>(j)] =
            (1 - alpha) * d[static_cast<std::size_t>(j - 1)] + alpha * d[static_cast<std::size_t>(j)];
      }
    }
    return d[degree];
  }
};

} // namespace

std::vector<Point2> sample(const Shape& shape) {
  Sampler sampler;
  std::visit(sampler, shape);
  return sampler.points;
}

std::vector<Point2> sample(const Contour& contour) {
  std::vector<Point2> points;
  for (const Segment& segment : contour.segments) {
    for (int i = 0; i <= kSteps; ++i) points.push_back(segment.at(static_cast<double>(i) / kSteps));
  }
  return points;
}

double oneSidedDistance(const std::vector<Point2>& from, const std::vector<Point2>& to) {
  double largest = from.empty() || to.empty() ? std::numeric_limits<double>::infinity() : 0;
  for (const Point2 p : from) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const Point2 q : to) nearest = std::min(nearest, distance(p, q));
    largest = std::max(largest, nearest);
  }
  return largest;
}

std::string page(const std::string& content) {
  return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
         "xmlns:ed='urn:editor' width='100mm' height='100mm' viewBox='0 0 100 100'>" +
         content + "</svg>";
}

Scene read(const std::string& text, const ReadOptions& options) {
  SvgReadResult result = readSvg(text, "snippet.svg", options);
  EXPECT_FALSE(result.error) << result.error->text();
  return std::move(result.scene);
}

} // namespace interchange_test
