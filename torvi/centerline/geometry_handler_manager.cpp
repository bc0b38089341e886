#include "torvi/centerline/geometry_handler_manager.h"

#include "torvi/centerline/colinear_handler.h"
#include "torvi/centerline/geometry_error_handler.h"
#include "torvi/centerline/intersect_handler.h"
#include "torvi/centerline/one_point_and_colinear_handler.h"
#include "torvi/centerline/one_point_handler.h"
#include "torvi/centerline/parallel_handler.h"
#include "torvi/centerline/two_point_handler.h"

namespace {

struct OwnedHandlers {
  // Points come first, since the relations between lines refuse what has no direction; the last one takes
  // whatever is left.
  OwnedHandlers()
      : all{new ZnDbCenterLineOnePointAndColinearHandler,
            new ZnDbCenterLineOnePointHandler,
            new ZnDbCenterLineTwoPointHandler,
            new ZnDbCenterLineIntersectHandler,
            new ZnDbCenterLineParallelHandler,
            new ZnDbCenterLineColinearHandler,
            new ZnDbCenterLineGeometryErrorHandler} {}
  ~OwnedHandlers() {
    for (const ZnDbCenterLineGeometryHandler* handler : all) delete handler;
  }
  OwnedHandlers(const OwnedHandlers&) = delete;
  OwnedHandlers& operator=(const OwnedHandlers&) = delete;

  ZnDbCenterLineNextHandler::Handlers all;
};

} // namespace

const ZnDbCenterLineNextHandler::Handlers& ZnDbCenterLineGeometryHandlerManager::handlers() {
  static const OwnedHandlers handlers;
  return handlers.all;
}

Quorl::ErrorStatus ZnDbCenterLineGeometryHandlerManager::generateCenterLine(
    const ZnDbCenterLineGeometryHandler::Edges& edges, const ZnDbCenterLineGeometryHandler::Endings& endings,
    ZnGeLineSeg3d*& out) {
  int index = -1;
  const ZnDbCenterLineNextHandler next(handlers(), index);
  return next(edges, endings, out);
}
