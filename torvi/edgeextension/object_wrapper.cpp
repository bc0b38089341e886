#include "torvi/edgeextension/object_wrapper.h"

#include "torvi/drawing/ask.h"
#include "torvi/edgeextension/action_body.h"

using Quorl::ErrorStatus;
using Body = ZnDbEdgeExtensionActionBody;

ErrorStatus ZnDbEdgeExtensionObjectWrapper::getCachedRefEdgePoints(int index,
                                                                   ZnArray<ZnGePoint3d>& points) const {
  return torvi::askStatus<Body>(actionBody(), &Body::getCachedRefEdgePoints, index, points);
}

ErrorStatus ZnDbEdgeExtensionObjectWrapper::setCachedRefEdgePoints(int index,
                                                                   const ZnArray<ZnGePoint3d>& points) {
  return torvi::change<Body>(actionBody(), &Body::setCachedRefEdgePoints, index, points);
}
