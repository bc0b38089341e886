// A point as an entity: the result of queries that answer with a place.
#pragma once

#include "quorl/ge/entity3d.h"

class ZnGePointEnt3d : public ZnGeEntity3d {
public:
  ZnGePointEnt3d() = default;
  explicit ZnGePointEnt3d(const ZnGePoint3d& point)
      : point_(point) {}

  operator ZnGePoint3d() const { return point_; }

  ZnGe::EntityId type() const override { return ZnGe::kPointEntity3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kPointEntity3d || ZnGeEntity3d::isKindOf(id);
  }
  ZnGePointEnt3d* copy() const override { return new ZnGePointEnt3d(*this); }
  ZnGePointEnt3d& transformBy(const ZnGeMatrix3d& matrix) override;
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

protected:
  ZnGePoint3d point_;
};
