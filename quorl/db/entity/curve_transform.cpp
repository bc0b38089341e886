#include "quorl/db/entity/curve_transform.h"

#include "quorl/db/entity/plane_image.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"

std::unique_ptr<ZnGeCurve3d> zndbTransformedCurve(const ZnGeCurve3d& curve, const ZnGeMatrix3d& transform) {
  std::unique_ptr<ZnGeCurve3d> image;
  if (curve.isKindOf(ZnGe::kCircularArc3d)) {
    const auto& arc = static_cast<const ZnGeCircArc3d&>(curve);
    ZnDbPlaneImage plane;
    if (zndbUniformPlaneImage(arc.normal(), transform, plane) != Quorl::eOk)
      image = std::make_unique<ZnGeEllipticalArc3d>(arc);
  }
  if (!image) image.reset(curve.copy());
  image->transformBy(transform);
  return image;
}
