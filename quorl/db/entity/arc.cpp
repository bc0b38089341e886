#include "quorl/db/entity/arc.h"

#include "quorl/db/core/fields.h"
#include "quorl/ge/circ_arc3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbArc, ZnDbCurve, L"ARC")

ZnDbArc::ZnDbArc(const ZnGePoint3d& center, double radius, double startAngle, double endAngle)
    : ZnDbArc(center, ZnGeVector3d::kZAxis, radius, startAngle, endAngle) {}

ZnDbArc::ZnDbArc(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : ZnDbCircularCurve(center, normal, radius) {
  setStartAngle(startAngle);
  setEndAngle(endAngle);
}

double ZnDbArc::totalAngle() const { return ZnGe::endAngleAbove(startAngle_, endAngle_) - startAngle_; }

ZnGePoint3d ZnDbArc::startPoint() const { return geometry().startPoint(); }

ZnGePoint3d ZnDbArc::endPoint() const { return geometry().endPoint(); }

ErrorStatus ZnDbArc::setStartAngle(double angle) {
  assertWriteEnabled();
  return ZnDbRule::take(startAngle_, angle);
}

ErrorStatus ZnDbArc::setEndAngle(double angle) {
  assertWriteEnabled();
  return ZnDbRule::take(endAngle_, angle);
}

ZnGeCircArc3d ZnDbArc::geometry() const {
  return {center(), normal(), normal().perpVector(), radius(), startAngle_, endAngle_};
}

void ZnDbArc::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeCircArc3d>(geometry()));
}

void ZnDbArc::turned(double angle) {
  const double span = totalAngle();
  startAngle_ = ZnGe::normalizeAngle(startAngle_ + angle);
  endAngle_ = startAngle_ + span;
}

template<class Walk> void ZnDbArc::describe(Walk& walk) {
  walk.section(className(), 1);
  describeCircle(walk);
  walk.field(50, L"start angle", startAngle_);
  walk.field(51, L"end angle", endAngle_);
}

ZNDB_DEFINE_FIELDS(ZnDbArc, ZnDbCurve)
