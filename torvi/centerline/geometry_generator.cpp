#include "torvi/centerline/geometry_generator.h"

#include "torvi/centerline/geometry_handler_manager.h"
#include "torvi/core/action_body_utils.h"

using Quorl::ErrorStatus;

ZnDbCenterLineGeometryGenerator::ZnDbCenterLineGeometryGenerator(const ZnArray<int>& edgeRefDirEndings)
    : edgeRefDirEndings_(edgeRefDirEndings) {}

ErrorStatus ZnDbCenterLineGeometryGenerator::generateGeometry(ZnArray<ZnGeCurve3d*>& results,
                                                              const ZnArray<const ZnGeCurve3d*>& inputs) {
  constexpr int kEdges = 2;
  if (inputs.length() != kEdges) return Quorl::eInvalidInput;
  ZnDbCenterLineGeometryHandler::Edges edges(kEdges);
  for (const ZnGeCurve3d* input : inputs) {
    if (!input || input->type() != ZnGe::kLineSeg3d) return Quorl::eInvalidInput;
    edges.append(static_cast<const ZnGeLineSeg3d*>(input));
  }
  ZnDbTorviActionBodyUtils::deleteCurves(results);
  ZnGeLineSeg3d* line = nullptr;
  const ErrorStatus status =
      ZnDbCenterLineGeometryHandlerManager::generateCenterLine(edges, edgeRefDirEndings_, line);
  if (status == Quorl::eOk) results.append(line);
  return status;
}
