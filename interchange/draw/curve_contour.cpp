#include "interchange/draw/curve_contour.h"

#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/line_seg3d.h"

#include <memory>
#include <vector>

namespace interchange {

namespace {

void appendArc(const ZnGeMatrix3d& map, const ZnGePoint3d& center, const ZnGeVector3d& u,
               const ZnGeVector3d& v, double start, double end, Contour& contour) {
  EllipticArc arc;
  arc.center = seenFromAbove(map * center);
  arc.u = seenFromAbove(map * u);
  arc.v = seenFromAbove(map * v);
  arc.start = start;
  arc.sweep = end - start;
  contour.segments.push_back(Segment::ellipticArc(arc));
}

} // namespace

void appendCurve(const ZnGeCurve3d& curve, const ZnGeMatrix3d& map, double chordHeight, Contour& contour) {
  if (curve.isKindOf(ZnGe::kLineSeg3d)) {
    const auto& line = static_cast<const ZnGeLineSeg3d&>(curve);
    contour.segments.push_back(
        Segment::line(seenFromAbove(map * line.startPoint()), seenFromAbove(map * line.endPoint())));
    return;
  }
  if (curve.isKindOf(ZnGe::kCircularArc3d)) {
    const auto& arc = static_cast<const ZnGeCircArc3d&>(curve);
    const ZnGeVector3d u = arc.referenceVector() * arc.radius();
    return appendArc(map, arc.center(), u, arc.normal().crossProduct(u), arc.startAng(), arc.endAng(),
                     contour);
  }
  if (curve.isKindOf(ZnGe::kEllipticalArc3d)) {
    const auto& arc = static_cast<const ZnGeEllipticalArc3d&>(curve);
    return appendArc(map, arc.center(), arc.majorAxis(), arc.minorAxis(), arc.startParam(), arc.endParam(),
                     contour);
  }
  const std::unique_ptr<ZnGeCurve3d> image(curve.copy());
  image->transformBy(map);
  std::vector<ZnGePoint3d> points;
  image->appendSamplePoints(chordHeight, points);
  for (std::size_t i = 1; i < points.size(); ++i)
    contour.segments.push_back(Segment::line(seenFromAbove(points[i - 1]), seenFromAbove(points[i])));
}

} // namespace interchange
