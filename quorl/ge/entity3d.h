// Root of the geometric entities in space: their kind, copies, transforms and equality.
#pragma once

#include "quorl/ge/entity_id.h"
#include "quorl/ge/matrix3d.h"

class ZnGeEntity3d {
public:
  virtual ~ZnGeEntity3d() = default;

  // The concrete class.
  virtual ZnGe::EntityId type() const = 0;
  // Whether the entity is of that class or of one derived from it.
  virtual bool isKindOf(ZnGe::EntityId id) const { return id == ZnGe::kEntity3d; }
  // A new entity on the heap; the caller owns it.
  virtual ZnGeEntity3d* copy() const = 0;
  // In place.
  virtual ZnGeEntity3d& transformBy(const ZnGeMatrix3d& matrix) = 0;

  // Same concrete class, same shape and same sense; a reversed curve is another one.
  virtual bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const = 0;
  bool operator==(const ZnGeEntity3d& other) const { return isEqualTo(other); }
  bool operator!=(const ZnGeEntity3d& other) const { return !isEqualTo(other); }

protected:
  ZnGeEntity3d() = default;
  ZnGeEntity3d(const ZnGeEntity3d&) = default;
  ZnGeEntity3d& operator=(const ZnGeEntity3d&) = default;
};
