#include "quorl/db/entity/extents_draw.h"

#include "quorl/db/entity/curve_transform.h"
#include "quorl/db/entity/text_metrics.h"

void ZnDbExtentsDraw::curve(const ZnGeCurve3d& curve) {
  if (transforms_.empty())
    extents_.addBox(curve.boundBox());
  else
    extents_.addBox(zndbTransformedCurve(curve, current())->boundBox());
}

void ZnDbExtentsDraw::polyline(const std::vector<ZnGePoint3d>& points, bool /*closed*/) {
  for (const ZnGePoint3d& corner : points) point(corner);
}

void ZnDbExtentsDraw::chain(const std::vector<const ZnGeCurve3d*>& pieces, bool /*closed*/) {
  for (const ZnGeCurve3d* piece : pieces) curve(*piece);
}

void ZnDbExtentsDraw::text(const ZnGePoint3d& position, const ZnGeVector3d& normal,
                           const ZnGeVector3d& direction, double height, double widthFactor,
                           const ZnString& text, int horizontalAlign) {
  for (const ZnGePoint3d& corner :
       zndbTextCorners(position, normal, direction, height, widthFactor, text.view(),
                       static_cast<ZnDb::TextAlign>(horizontalAlign)))
    point(corner);
}

void ZnDbExtentsDraw::point(const ZnGePoint3d& position) { extents_.addPoint(current() * position); }

void ZnDbExtentsDraw::pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits&) {
  transforms_.push_back(current() * transform);
}

void ZnDbExtentsDraw::popReference() { transforms_.pop_back(); }
