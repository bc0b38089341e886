// Where an edge is seen: through a viewport, in a drawing view of the host, and how model space maps to
// paper.
#pragma once

#include "torvi/host/association.h"

namespace torvi {

ZnDbObjectId activeViewportId();
// The viewport through which the edge is seen; null for none.
ZnDbObjectId viewportOfEdge(const ZnDbEdgeRef& edge);
// Whether the path begins with a viewport and goes on into what that shows.
bool beginsWithViewport(const ZnDbFullSubentPath& path);

ZnGeMatrix3d modelToPaper(ZnDbObjectId viewportId); // identity for anything but a viewport
double viewScale(ZnDbObjectId viewportId);          // 1.0 for anything but a viewport

// Drawing views of the host show projected edges of a source.
bool isInDrawingView(ZnDbObjectId id);
bool isInDrawingView(const ZnDbFullSubentPath& path);
bool isInDrawingView(const ZnDbEdgeRef& edge);
// For an edge seen through a viewport also that viewport, and where wanted the view's ids.
bool findDrawingView(const ZnDbEdgeRef& edge, ZnDbObjectId& viewportId, ZnDbObjectId* viewRepId,
                     ZnDbObjectId* viewId);
ZnGeCurve3d* projectedCurve(const ZnDbEdgeRef& edge); // new and the caller's, or null

} // namespace torvi
