#include "torvi/centerline/geometry_handler_manager.h"

#include "torvi/centerline/handlers.h"

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
