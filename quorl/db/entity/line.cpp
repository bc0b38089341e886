#include "quorl/db/entity/line.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLine, ZnDbCurve, L"LINE")

namespace {

constexpr std::int16_t kVersion = 1;

struct Ends {
  ZnGePoint3d start, end;
  bool isUsable() const { return Quorl::isFinite(start) && Quorl::isFinite(end); }
};

} // namespace

ErrorStatus ZnDbLine::setStartPoint(const ZnGePoint3d& point) {
  assertWriteEnabled();
  if (!Quorl::isFinite(point)) return Quorl::eInvalidInput;
  start_ = point;
  return Quorl::eOk;
}

ErrorStatus ZnDbLine::setEndPoint(const ZnGePoint3d& point) {
  assertWriteEnabled();
  if (!Quorl::isFinite(point)) return Quorl::eInvalidInput;
  end_ = point;
  return Quorl::eOk;
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

ErrorStatus ZnDbLine::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(start_);
  filer.writePoint3d(end_);
  return filer.status();
}

ErrorStatus ZnDbLine::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Ends read, ends{start_, end_};
  read.start = filer.readPoint3d();
  read.end = filer.readPoint3d();
  zndbTakeOver(filer, ends, std::move(read));
  start_ = ends.start;
  end_ = ends.end;
  return filer.status();
}

ErrorStatus ZnDbLine::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, start_);
  filer.writePoint3d(11, end_);
  return filer.status();
}

ErrorStatus ZnDbLine::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::tdocInFields(filer); status != Quorl::eOk) return status;
  Ends ends{start_, end_};
  Ends read = ends;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.start = item.point;
    if (item.code == 11) read.end = item.point;
  });
  zndbTakeOver(filer, ends, std::move(read));
  start_ = ends.start;
  end_ = ends.end;
  return filer.status();
}
