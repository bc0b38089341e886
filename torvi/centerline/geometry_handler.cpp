#include "torvi/centerline/geometry_handler.h"

#include "torvi/core/edge_relations.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbCenterLineGeometryHandler::handle(const Edges& edges, const Endings& endings,
                                                  ZnGeLineSeg3d*& out, ZnDbCenterLineNextHandler next) const {
  if (!canHandle(edges, endings, out)) return next(edges, endings, out);
  if (const ErrorStatus status = prepare(edges, endings); status != Quorl::eOk) return status;
  if (const ErrorStatus status = calculate(edges, endings, out); status != Quorl::eOk) return status;
  return validate(out);
}

ErrorStatus ZnDbCenterLineGeometryHandler::prepare(const Edges&, const Endings&) const { return Quorl::eOk; }

ErrorStatus ZnDbCenterLineGeometryHandler::validate(ZnGeLineSeg3d*& out) const {
  if (!out) return Quorl::eInvalidInput;
  if (!isPoint(*out)) return Quorl::eOk;
  delete out;
  out = nullptr;
  return Quorl::eInvalidInput;
}

bool ZnDbCenterLineGeometryHandler::isPoint(const ZnGeLineSeg3d& edge) {
  return edge.startPoint().isEqualTo(edge.endPoint(), ZnGeContext::gTol);
}

int ZnDbCenterLineGeometryHandler::indexOfOnlyPoint(const Edges& edges) {
  const bool first = isPoint(*edges[0]), second = isPoint(*edges[1]);
  if (first == second) return -1;
  return first ? 0 : 1;
}

ZnGeLineSeg3d ZnDbCenterLineGeometryHandler::betweenMiddles(const ZnGeLineSeg3d& from,
                                                            const ZnGeLineSeg3d& to) {
  const ZnGePoint3d middle = from.midPoint();
  return {middle, torvi::haveOneMiddle(from, to) ? middle : to.midPoint()};
}

ErrorStatus ZnDbCenterLineNextHandler::operator()(const ZnDbCenterLineGeometryHandler::Edges& edges,
                                                  const ZnDbCenterLineGeometryHandler::Endings& endings,
                                                  ZnGeLineSeg3d*& out) const {
  if (*index_ + 1 >= handlers_->length()) return out ? Quorl::eOk : Quorl::eInvalidInput;
  ++*index_;
  return (*handlers_)[*index_]->handle(edges, endings, out, *this);
}
