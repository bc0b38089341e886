// References to edges and vertices of entities, as parameters of actions hold them.
#pragma once

#include <memory>
#include <optional>

#include "quorl/db/entity/subent.h"
#include "quorl/ge/curve3d.h"
#include "quorl/ge/point3d.h"

class ZnDbEntity;

class ZnDbSubentRef {
public:
  ZnDbSubentRef() = default;
  ZnDbSubentRef(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent)
      : entity_(entity)
      , subent_(subent) {}

  const ZnDbCompoundObjectId& entity() const { return entity_; }
  const ZnDbSubentId& subentId() const { return subent_; }
  bool isEmpty() const { return entity_.isEmpty(); }
  friend bool operator==(const ZnDbSubentRef& a, const ZnDbSubentRef& b) {
    return a.entity_ == b.entity_ && a.subent_ == b.subent_;
  }

protected:
  ZnDbCompoundObjectId entity_;
  ZnDbSubentId subent_;
};

// An edge. The default one is empty. It evaluates its curve when asked, unless it was given one to hold.
class ZnDbEdgeRef : public ZnDbSubentRef {
public:
  ZnDbEdgeRef() = default;
  explicit ZnDbEdgeRef(const ZnDbFullSubentPath& path);
  // secondSubent names the other face where an edge is given by two; unused by curves. curve is copied.
  ZnDbEdgeRef(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent,
              const ZnDbSubentId& secondSubent = ZnDbSubentId(), const ZnGeCurve3d* curve = nullptr);
  ZnDbEdgeRef(const ZnDbEdgeRef& other);
  ZnDbEdgeRef& operator=(const ZnDbEdgeRef& other);
  ZnDbEdgeRef(ZnDbEdgeRef&&) noexcept = default;
  ZnDbEdgeRef& operator=(ZnDbEdgeRef&&) noexcept = default;

  // The edge's curve in the coordinates of the space of the path's first id: the one it holds, else the
  // current one, owned by the caller. eKeyNotFound for an edge that the entity has not (any more).
  Quorl::ErrorStatus evaluateCurve(std::unique_ptr<ZnGeCurve3d>& curve) const;
  const ZnGeCurve3d* heldCurve() const { return curve_.get(); }
  // A new entity in no database that shows just this edge, in the coordinates of the space of the path's
  // first id, owned by the caller; null when there is none.
  ZnDbEntity* createEntity() const;

private:
  std::unique_ptr<ZnGeCurve3d> curve_;
};

class ZnDbVertexRef : public ZnDbSubentRef {
public:
  ZnDbVertexRef() = default;
  explicit ZnDbVertexRef(const ZnDbFullSubentPath& path);
  ZnDbVertexRef(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent)
      : ZnDbSubentRef(entity, subent) {}
  explicit ZnDbVertexRef(const ZnGePoint3d& fixed)
      : fixed_(fixed) {}
  // The vertex's point in the coordinates of the space of the path's first id. eKeyNotFound for an empty
  // reference and for a vertex that the entity has not (any more).
  Quorl::ErrorStatus evaluatePoint(ZnGePoint3d& point) const;

private:
  std::optional<ZnGePoint3d> fixed_;
};
