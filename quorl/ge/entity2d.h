// Root of the geometric entities in a plane: their kind, copies, transforms and equality.
#pragma once

#include "quorl/ge/entity_id.h"
#include "quorl/ge/matrix2d.h"

class ZnGeEntity2d {
public:
  virtual ~ZnGeEntity2d() = default;

  // The concrete class.
  virtual ZnGe::EntityId type() const = 0;
  // Whether the entity is of that class or of one derived from it.
  virtual bool isKindOf(ZnGe::EntityId id) const { return id == ZnGe::kEntity2d; }
  // A new entity on the heap; the caller owns it.
  virtual ZnGeEntity2d* copy() const = 0;
  // In place.
  virtual ZnGeEntity2d& transformBy(const ZnGeMatrix2d& matrix) = 0;

  // Same concrete class, same shape and same sense; a reversed curve is another one.
  virtual bool isEqualTo(const ZnGeEntity2d& other, const ZnGeTol& tol = ZnGeContext::gTol) const = 0;
  bool operator==(const ZnGeEntity2d& other) const { return isEqualTo(other); }
  bool operator!=(const ZnGeEntity2d& other) const { return !isEqualTo(other); }

protected:
  ZnGeEntity2d() = default;
  ZnGeEntity2d(const ZnGeEntity2d&) = default;
  ZnGeEntity2d& operator=(const ZnGeEntity2d&) = default;
};
