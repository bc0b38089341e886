// The handle on a center line for everyone outside the core; see ZnDbTorviObjectWrapper for its ways and
// ZnDbCenterLineActionBody for what the values mean. A dead line reads as 0 and writes with the status of the
// failed opening.
#pragma once

#include "torvi/core/object_wrapper.h"

class TORVI_EXPORT ZnDbCenterLineObjectWrapper : public ZnDbTorviObjectWrapper {
public:
  using ZnDbTorviObjectWrapper::ZnDbTorviObjectWrapper;
  static constexpr ZnDbTorviType wrapperCenterType() { return kCenterLine; }

  // Lengths, in drawing units
  double startExtension() const;
  double endExtension() const;
  double startOvershoot() const;
  double endOvershoot() const;
  Quorl::ErrorStatus setStartExtension(double value);
  Quorl::ErrorStatus setEndExtension(double value);
  Quorl::ErrorStatus setStartOvershoot(double value);
  Quorl::ErrorStatus setEndOvershoot(double value);

  // The choice of the bisector. A dead line gives the status of the opening as if it were an ending.
  int edgeRefDirEnding(int index) const;
  Quorl::ErrorStatus edgeRefDirEndingArray(ZnArray<int>& endings) const;
  Quorl::ErrorStatus setEdgeRefDirEnding(int index, int value);
  Quorl::ErrorStatus setEdgeRefDirEndingArray(const ZnArray<int>& endings);

  // The last evaluation; the x axis as direction of a dead line.
  double cachedCenterLineLength() const;
  ZnGeVector3d cachedCenterLineDirection() const;
  Quorl::ErrorStatus setCachedCenterLineLength(double length);
  Quorl::ErrorStatus setCachedCenterLineDirection(const ZnGeVector3d& direction);

  // In the coordinates of the line's space
  Quorl::ErrorStatus getCenterLineGeometry(ZnGeLineSeg3d& line, bool includeOvershoot) const;
  // The middle of the drawn line, overshoots included. eInvalidInput, with the point untouched, without any
  // curve; in block coordinates when the reference can't be read.
  Quorl::ErrorStatus getCenterPoint(ZnGePoint3d& point) const;
};
