// Private to the library: what circles and ellipses in space share, as center + cos t * u + sin t * v over a
// range of t.
#pragma once

#include <vector>

#include "quorl/ge/angles.h"
#include "quorl/ge/bound_block3d.h"

namespace ZnGe {

struct ConicSpan {
  ZnGePoint3d center;
  ZnGeVector3d u;
  ZnGeVector3d v;
  double start = 0.0;
  double end = kTwoPi;

  ZnGePoint3d pointAt(double param) const;
  ZnGeVector3d derivativeAt(double param) const;
  ZnGeBoundBlock3d box() const;
  // See ZnGeCurve3d::appendSamplePoints.
  void appendSamples(double chordHeight, std::vector<ZnGePoint3d>& points) const;

  // The parameter as it lies in the span; one outside becomes the end that is nearer by angle.
  double clampParam(double param) const;
};

} // namespace ZnGe
