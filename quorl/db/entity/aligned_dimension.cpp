#include "quorl/db/entity/aligned_dimension.h"

#include "quorl/db/core/fields.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAlignedDimension, ZnDbDimension, L"DIMALIGNED")

ZnDbAlignedDimension::ZnDbAlignedDimension(const ZnGePoint3d& first, const ZnGePoint3d& second,
                                           const ZnGePoint3d& dimensionLinePoint) {
  setFirstExtensionPoint(first);
  setSecondExtensionPoint(second);
  setDimensionLinePoint(dimensionLinePoint);
}

// Equal points leave the direction open; the dimension is then drawn along the plane's x axis.
void ZnDbAlignedDimension::build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const {
  const ZnGeVector3d span = second_ - first_;
  const ZnGeVector3d flat = span - normal() * span.dotProduct(normal());
  const ZnGeVector3d along = flat.isZeroLength() ? normal().perpVector() : flat.normal();
  const ZnGeVector3d across = normal().crossProduct(along);
  const double offset = (dimensionLinePoint_ - first_).dotProduct(across);
  const ZnGePoint3d start = first_ + across * offset;
  const ZnGePoint3d end = start + along * span.dotProduct(along);

  graphics.lines.emplace_back(start, end);
  const ZnGeVector3d outward = offset < 0.0 ? -across : across;
  const double reach = offset < 0.0 ? -offset : offset;
  for (const auto& [point, foot] : {std::pair(first_, start), std::pair(second_, end)})
    if (reach > sizes.extensionOffset)
      graphics.lines.emplace_back(point + outward * sizes.extensionOffset,
                                  foot + outward * sizes.extensionBeyond);
  // Heads that would meet point inwards from outside.
  const bool inside = start.distanceTo(end) >= 2.0 * sizes.arrowLength;
  graphics.addArrowHead(start, inside ? -along : along, normal(), sizes.arrowLength);
  graphics.addArrowHead(end, inside ? along : -along, normal(), sizes.arrowLength);

  graphics.textDirection = zndbReadableDirection(along, normal());
  graphics.textPosition =
      start + (end - start) * 0.5 + normal().crossProduct(graphics.textDirection) * sizes.textGap;
}

// Its points are filed by the base.
template<class Walk> void ZnDbAlignedDimension::describe(Walk& walk) { walk.section(className(), 1); }

ZNDB_DEFINE_FIELDS(ZnDbAlignedDimension, ZnDbDimension)
