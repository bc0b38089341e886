#include "interchange/scene_samples.h"

#include "quorl/ge/bulge.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/line_seg3d.h"
#include "quorl/ge/nurb_curve3d.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace interchange_test {

using namespace interchange;

namespace {

constexpr int kSteps = 150;

struct Sampler {
  std::vector<ZnGePoint2d> points;

  void operator()(const Line& line) { add(ZnGeLineSeg3d(inSpace(line.start), inSpace(line.end))); }
  void operator()(const Circle& circle) {
    add(ZnGeCircArc3d(inSpace(circle.center), ZnGeVector3d::kZAxis, circle.radius));
  }
  void operator()(const Arc& a) {
    add(ZnGeCircArc3d(inSpace(a.center), ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis, a.radius, a.startAngle,
                      a.endAngle));
  }
  void operator()(const Text& text) { points.push_back(text.position); }
  void operator()(const Insert&) {}

  void operator()(const EllipseArc& e) {
    const ZnGeVector2d minor = e.ratio * e.major.perpVector();
    add(ZnGeEllipticalArc3d(inSpace(e.center), {e.major.x, e.major.y, 0}, {minor.x, minor.y, 0}, e.startParam,
                            e.endParam));
  }

  void operator()(const Polyline& polyline) {
    const std::size_t count = polyline.vertices.size();
    for (std::size_t i = 0; i + (polyline.closed ? 0 : 1) < count; ++i) {
      const Vertex& from = polyline.vertices[i];
      const ZnGePoint3d start = inSpace(from.point), end = inSpace(polyline.vertices[(i + 1) % count].point);
      ZnGeCircArc3d arc;
      if (ZnGe::arcFromBulge(start, end, from.bulge, ZnGeVector3d::kZAxis, arc))
        add(arc);
      else
        add(ZnGeLineSeg3d(start, end));
    }
  }

  void operator()(const Spline& spline) {
    std::vector<ZnGePoint3d> control;
    for (const ZnGePoint2d& p : spline.control) control.push_back(inSpace(p));
    ZnGeNurbCurve3d curve;
    EXPECT_EQ(curve.set(Spline::kDegree, spline.knots, control), Quorl::eOk);
    add(curve, static_cast<int>(spline.control.size() - 1) / Spline::kDegree * kSteps);
  }

private:
  static ZnGePoint3d inSpace(const ZnGePoint2d& p) { return {p.x, p.y, 0}; }
  void add(const ZnGeCurve3d& curve, int steps = kSteps) {
    const ZnGeInterval range = curve.interval();
    for (int i = 0; i <= steps; ++i) {
      const ZnGePoint3d p = curve.evalPoint(range.lowerBound() + range.length() * i / steps);
      points.push_back({p.x, p.y});
    }
  }
};

} // namespace

std::vector<ZnGePoint2d> sample(const Shape& shape) {
  Sampler sampler;
  std::visit(sampler, shape);
  return sampler.points;
}

std::vector<ZnGePoint2d> sample(const Contour& contour) {
  std::vector<ZnGePoint2d> points;
  for (const Segment& segment : contour.segments) {
    for (int i = 0; i <= kSteps; ++i) points.push_back(segment.at(static_cast<double>(i) / kSteps));
  }
  return points;
}

double oneSidedDistance(const std::vector<ZnGePoint2d>& from, const std::vector<ZnGePoint2d>& to) {
  double largest = from.empty() || to.empty() ? std::numeric_limits<double>::infinity() : 0;
  for (const ZnGePoint2d& p : from) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const ZnGePoint2d& q : to) nearest = std::min(nearest, p.distanceTo(q));
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
