// What an edge looks like now, and how an edge is named by a path.
#pragma once

#include <memory>

#include "torvi/host/association.h"

namespace torvi {

// The edge's current curve in the space of the center object: segments, and arcs (whole circles with
// fullCircle); null for an edge of any other shape.
std::unique_ptr<ZnGeCurve3d> evaluatedEdgeCurve(const ZnDbEdgeRef& edge, bool fullCircle);
// An edge reference for the path; an empty one for a line without length. eInvalidInput for an entity of a
// drawing view that can't name its edges.
Quorl::ErrorStatus createEdgeRef(const ZnDbFullSubentPath& path, ZnDbEdgeRef& edge);

} // namespace torvi
