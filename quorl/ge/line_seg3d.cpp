#include "quorl/ge/line_seg3d.h"

#include <algorithm>

ZnGeLineSeg3d& ZnGeLineSeg3d::set(const ZnGePoint3d& start, const ZnGePoint3d& end) {
  const ZnGePoint3d last = end; // both may be points of this very segment
  start_ = start;
  end_ = last;
  return *this;
}

ZnGeLineSeg3d& ZnGeLineSeg3d::transformBy(const ZnGeMatrix3d& matrix) {
  return set(matrix * start_, matrix * end_);
}

bool ZnGeLineSeg3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& segment = static_cast<const ZnGeLineSeg3d&>(other);
  return start_.isEqualTo(segment.start_, tol) && end_.isEqualTo(segment.end_, tol);
}

// Measured from the nearer end, so that 0 and 1 give the ends to the last bit.
ZnGePoint3d ZnGeLineSeg3d::evalPoint(double param) const {
  return param < 0.5 ? start_ + span() * param : end_ - span() * (1.0 - param);
}

ZnGeVector3d ZnGeLineSeg3d::evaluateDerivative(double) const { return span(); }

ZnGeLineSeg3d& ZnGeLineSeg3d::reverseParam() {
  std::swap(start_, end_);
  return *this;
}

bool ZnGeLineSeg3d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const bool isPoint = start_.isEqualTo(end_, tol);
  kind = isPoint ? ZnGe::kPointEntity3d : ZnGe::kLineSeg3d;
  return isPoint;
}

void ZnGeLineSeg3d::appendSamplePoints(double, std::vector<ZnGePoint3d>& points) const {
  points.push_back(start_);
  points.push_back(end_);
}

double ZnGeLineSeg3d::nearestParam(const ZnGePoint3d& point) const {
  const ZnGeVector3d along = span();
  const double size = along.lengthSquared();
  if (!(size > 0.0)) return 0.0;
  return std::clamp((point - start_).dotProduct(along) / size, 0.0, 1.0);
}
