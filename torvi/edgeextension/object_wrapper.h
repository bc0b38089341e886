// The handle on an edge extension for everyone outside the core; see ZnDbTorviObjectWrapper for its ways.
#pragma once

#include "torvi/core/object_wrapper.h"

class TORVI_EXPORT ZnDbEdgeExtensionObjectWrapper : public ZnDbTorviObjectWrapper {
public:
  using ZnDbTorviObjectWrapper::ZnDbTorviObjectWrapper;
  static constexpr ZnDbTorviType wrapperCenterType() { return kEdgeExtension; }

  // See ZnDbEdgeExtensionActionBody; the status of the opening for a dead object.
  Quorl::ErrorStatus getCachedRefEdgePoints(int index, ZnArray<ZnGePoint3d>& points) const;
  Quorl::ErrorStatus setCachedRefEdgePoints(int index, const ZnArray<ZnGePoint3d>& points);
};
