#include "torvi/centerline/geometry_error_handler.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineGeometryErrorHandler::canHandle(const Edges&, const Endings&, const ZnGeLineSeg3d*) const {
  return true;
}

ErrorStatus ZnDbCenterLineGeometryErrorHandler::calculate(const Edges&, const Endings&,
                                                          ZnGeLineSeg3d*& out) const {
  return out && !isPoint(*out) ? Quorl::eOk : Quorl::eInvalidInput;
}
