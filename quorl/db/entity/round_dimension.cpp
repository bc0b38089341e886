#include "quorl/db/entity/round_dimension.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbRoundDimension, ZnDbDimension)

namespace {

constexpr std::int16_t kVersion = 1;

struct Leader {
  double length = 0.0;
  bool isUsable() const { return Quorl::isFinite(length) && length >= 0.0; }
};

} // namespace

ErrorStatus ZnDbRoundDimension::setLeaderLength(double length) {
  assertWriteEnabled();
  if (!Quorl::isFinite(length)) return Quorl::eInvalidInput;
  if (length < 0.0) return Quorl::eOutOfRange;
  leaderLength_ = length;
  return Quorl::eOk;
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

ErrorStatus ZnDbRoundDimension::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbDimension::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeDouble(leaderLength_);
  return filer.status();
}

ErrorStatus ZnDbRoundDimension::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbDimension::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Leader leader{leaderLength_};
  zndbTakeOver(filer, leader, Leader{filer.readDouble()});
  leaderLength_ = leader.length;
  return filer.status();
}

ErrorStatus ZnDbRoundDimension::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbDimension::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writeDouble(40, leaderLength_);
  return filer.status();
}

ErrorStatus ZnDbRoundDimension::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbDimension::tdocInFields(filer); status != Quorl::eOk) return status;
  Leader leader{leaderLength_}, read = leader;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 40) read.length = item.real;
  });
  zndbTakeOver(filer, leader, std::move(read));
  leaderLength_ = leader.length;
  return filer.status();
}
