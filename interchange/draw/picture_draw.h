// The sink between drawables and a picture: follows references, resolves traits and lays out dashes.
#pragma once

#include "interchange/draw/stroke_target.h"
#include "interchange/draw/trait_resolver.h"

#include "quorl/db/entity/world_draw.h"

#include <vector>

class ZnDbEntity;
class ZnDbViewport;

namespace interchange {

class PictureDraw final : public ZnGiWorldDraw {
public:
  // chordHeight is in drawing units. Resolver and target must outlive the sink.
  PictureDraw(TraitResolver& resolver, StrokeTarget& target, double chordHeight, double lineWeightFactor);

  // Entities on layers that are shown, in the order of the block; a viewport shows model space.
  void drawSpace(ZnDbObjectId blockRecord, ZnDbObjectId modelSpace);
  void drawEntity(const ZnDbEntity& entity);

  void setTraits(const ZnGiSubEntityTraits& traits) override;
  const ZnGiSubEntityTraits& traits() const override { return traits_; }
  void curve(const ZnGeCurve3d& curve) override;
  void polyline(const std::vector<ZnGePoint3d>& points, bool closed) override;
  void chain(const std::vector<const ZnGeCurve3d*>& pieces, bool closed) override;
  void text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
            double height, double widthFactor, const ZnString& text, int horizontalAlign) override;
  void point(const ZnGePoint3d& position) override;
  void pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits& reference) override;
  void popReference() override;
  bool isLayerShown(ZnDbObjectId layerId) const override;

private:
  struct Level {
    ZnGeMatrix3d toSpace;
    ResolvedTraits reference;
    bool isReference = false; // false: model space in a viewport, which resolves nothing
  };
  const ZnGeMatrix3d& toSpace() const {
    return levels_.empty() ? ZnGeMatrix3d::kIdentity : levels_.back().toSpace;
  }
  const ResolvedTraits* reference() const;
  void draw(const Contour& contour);
  void drawThroughViewport(const ZnDbViewport& viewport, ZnDbObjectId modelSpace);

  TraitResolver& resolver_;
  StrokeTarget& target_;
  double chordHeight_;
  double lineWeightFactor_;
  std::vector<Level> levels_;
  const ZnDbViewport* viewport_ = nullptr;
  ZnGiSubEntityTraits traits_;
  Ink ink_;
  DashPattern pattern_;
};

} // namespace interchange
