#include "quorl/db/entity/round_dimension.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbRoundDimension, ZnDbDimension)

namespace {
constexpr auto kLeaderLength = ZnDbRule::atLeast(0.0);
}

ErrorStatus ZnDbRoundDimension::setLeaderLength(double length) {
  assertWriteEnabled();
  return ZnDbRule::take(leaderLength_, length, kLeaderLength);
}

// The leader keeps its proportion to the measured length.
ErrorStatus ZnDbRoundDimension::transformBy(const ZnGeMatrix3d& transform) {
  const double before = measurement();
  const ErrorStatus status = ZnDbDimension::transformBy(transform);
  if (status == Quorl::eOk) leaderLength_ *= before > 0.0 ? measurement() / before : transform.scale();
  return status;
}

// The line runs through the chord point and on by the leader, along which the text stands.
void ZnDbRoundDimension::build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const {
  const ZnGeVector3d measured = pointOnCircle_ - from_;
  const ZnGeVector3d outward = measured.isZeroLength() ? normal().perpVector() : measured.normal();
  graphics.lines.emplace_back(from_, pointOnCircle_ + outward * leaderLength_);
  graphics.addArrowHead(pointOnCircle_, outward, normal(), sizes.arrowLength);
  if (hasArrowAtBothEnds()) graphics.addArrowHead(from_, -outward, normal(), sizes.arrowLength);
  graphics.textDirection = zndbReadableDirection(outward, normal());
  const ZnGePoint3d middle =
      leaderLength_ > 0.0 ? pointOnCircle_ + outward * (0.5 * leaderLength_) : from_ + measured * 0.5;
  graphics.textPosition = middle + normal().crossProduct(graphics.textDirection) * sizes.textGap;
}

template<class Walk> void ZnDbRoundDimension::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(40, L"leader length", leaderLength_, kLeaderLength);
}

ZNDB_DEFINE_FIELDS(ZnDbRoundDimension, ZnDbDimension)
