#include "interchange/draw/shown_extents.h"

#include "interchange/draw/curve_contour.h"
#include "interchange/draw/lettering_face.h"
#include "interchange/recognize/limits.h"

#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/extents_draw.h"
#include "quorl/db/table/block_table.h"

namespace interchange {

namespace {

// Of letters with accents and tails, in capital heights.
constexpr double kDescent = 0.35, kAscent = 1.3;

class ShownExtentsDraw final : public ZnDbExtentsDraw {
public:
  explicit ShownExtentsDraw(TraitResolver& resolver)
      : resolver_(resolver) {}

  void pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits& traits) override {
    references_.push_back(resolver_.resolve(traits, reference()));
    ZnDbExtentsDraw::pushReference(transform, traits);
  }
  void popReference() override {
    references_.pop_back();
    ZnDbExtentsDraw::popReference();
  }
  // A drawing's own extents use nominal widths; a picture must hold the letters that it shows.
  void text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
            double height, double widthFactor, const ZnString& text, int horizontalAlign) override {
    const ZnGeVector3d along = direction * (height * widthFactor * widthOfText(text.utf8()));
    const ZnGeVector3d up = normal.crossProduct(direction) * height;
    const ZnGePoint3d left = position - along * (0.5 * horizontalAlign);
    const ZnGePoint3d below = left - up * kDescent, above = left + up * kAscent;
    for (const ZnGePoint3d& corner : {below, below + along, above, above + along}) point(corner);
  }
  bool isLayerShown(ZnDbObjectId layer) const override {
    return resolver_.isShown(resolver_.effectiveLayer(layer, reference()));
  }
  void add(const ZnDbEntity& entity) {
    if (isLayerShown(entity.layerId())) entity.worldDraw(*this);
  }

private:
  const ResolvedTraits* reference() const { return references_.empty() ? nullptr : &references_.back(); }

  TraitResolver& resolver_;
  std::vector<ResolvedTraits> references_;
};

} // namespace

std::optional<Extent> shownExtents(TraitResolver& resolver, ZnDbObjectId space,
                                   const std::vector<const ZnDbEntity*>& extra) {
  ShownExtentsDraw draw(resolver);
  const ZnDbHolder<ZnDbBlockTableRecord> block(space);
  if (block.isOpen()) {
    for (const ZnDbObjectId id : block->entityIds()) {
      if (id.isErased()) continue;
      const ZnDbHolder<ZnDbEntity> entity(id);
      if (entity.isOpen()) draw.add(*entity);
    }
  }
  for (const ZnDbEntity* entity : extra) draw.add(*entity);
  if (draw.extents().isEmpty()) return std::nullopt;
  const Extent extent{seenFromAbove(draw.extents().min()), seenFromAbove(draw.extents().max())};
  if (!isUsable(extent.min) || !isUsable(extent.max)) return std::nullopt;
  return extent;
}

} // namespace interchange
