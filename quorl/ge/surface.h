// What every surface answers.
#pragma once

#include "quorl/ge/entity3d.h"

class ZnGeSurface : public ZnGeEntity3d {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kSurface || ZnGeEntity3d::isKindOf(id);
  }
  ZnGeSurface* copy() const override = 0;
  ZnGeSurface& transformBy(const ZnGeMatrix3d& matrix) override = 0;

  virtual ZnGePoint3d closestPointTo(const ZnGePoint3d& point) const = 0;
  // Within equalPoint of the surface.
  bool isOn(const ZnGePoint3d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
};
