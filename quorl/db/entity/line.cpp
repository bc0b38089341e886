#include "quorl/db/entity/line.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLine, ZnDbCurve, L"LINE")

ErrorStatus ZnDbLine::setStartPoint(const ZnGePoint3d& point) {
  assertWriteEnabled();
  return ZnDbRule::take(start_, point);
}

ErrorStatus ZnDbLine::setEndPoint(const ZnGePoint3d& point) {
  assertWriteEnabled();
  return ZnDbRule::take(end_, point);
}

void ZnDbLine::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeLineSeg3d>(start_, end_));
}

ErrorStatus ZnDbLine::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  start_ = transform * start_;
  end_ = transform * end_;
  return Quorl::eOk;
}

ErrorStatus ZnDbLine::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d(start_, end_);
  return Quorl::eOk;
}

template<class Walk> void ZnDbLine::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(10, L"start point", start_);
  walk.field(11, L"end point", end_);
}

ZNDB_DEFINE_FIELDS(ZnDbLine, ZnDbCurve)
