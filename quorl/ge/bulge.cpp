#include "quorl/ge/bulge.h"

#include <cmath>

namespace ZnGe {

// The bulge b is the tangent of a quarter of the span. From the middle of the chord c the center lies to the
// left of the arc's direction by |c| (1 - b^2) / (4 b), and the radius is |c| (1 + b^2) / (4 b).
bool arcFromBulge(const ZnGePoint3d& start, const ZnGePoint3d& end, double bulge, const ZnGeVector3d& normal,
                  ZnGeCircArc3d& arc, const ZnGeTol& tol) {
  const ZnGeVector3d chord = end - start;
  const bool hasShape = std::isfinite(bulge) && bulge != 0.0 && chord.length() > tol.equalPoint();
  if (!hasShape || !chord.isPerpendicularTo(normal, tol)) return false;

  const double b = std::fabs(bulge);
  const ZnGeVector3d arcNormal = (bulge < 0.0 ? -normal : normal) / normal.length();
  const ZnGeVector3d left = arcNormal.crossProduct(chord);
  const ZnGePoint3d center = start + chord * 0.5 + left * ((1.0 - b * b) / (4.0 * b));
  const double radius = chord.length() * (1.0 + b * b) / (4.0 * b);
  arc = ZnGeCircArc3d(center, arcNormal, start - center, radius, 0.0, 4.0 * std::atan(b));
  return true;
}

} // namespace ZnGe
