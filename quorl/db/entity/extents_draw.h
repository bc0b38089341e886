// A sink that draws nothing and gathers the box of what it is given: exact extents through block references.
#pragma once

#include <vector>

#include "quorl/db/entity/world_draw.h"
#include "quorl/ge/bound_block3d.h"

class ZnDbExtentsDraw : public ZnGiWorldDraw {
public:
  const ZnGeBoundBlock3d& extents() const { return extents_; }

  void setTraits(const ZnGiSubEntityTraits& traits) override { traits_ = traits; }
  const ZnGiSubEntityTraits& traits() const override { return traits_; }
  void curve(const ZnGeCurve3d& curve) override;
  void polyline(const std::vector<ZnGePoint3d>& points, bool closed) override;
  void chain(const std::vector<const ZnGeCurve3d*>& pieces, bool closed) override;
  void text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
            double height, double widthFactor, const ZnString& text, int horizontalAlign) override;
  void point(const ZnGePoint3d& position) override;
  void pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits& reference) override;
  void popReference() override;
  // Extents do not depend on what layers happen to show.
  bool isLayerShown(ZnDbObjectId) const override { return true; }

private:
  const ZnGeMatrix3d& current() const {
    return transforms_.empty() ? ZnGeMatrix3d::kIdentity : transforms_.back();
  }

  std::vector<ZnGeMatrix3d> transforms_;
  ZnGiSubEntityTraits traits_;
  ZnGeBoundBlock3d extents_;
};
