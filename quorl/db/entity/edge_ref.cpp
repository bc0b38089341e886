#include "quorl/db/entity/edge_ref.h"

#include "quorl/db/entity/curve.h"
#include "quorl/db/entity/curve_transform.h"

using Quorl::ErrorStatus;

namespace {

std::unique_ptr<ZnGeCurve3d> copyOf(const ZnGeCurve3d* curve) {
  return std::unique_ptr<ZnGeCurve3d>(curve ? curve->copy() : nullptr);
}

// The current curve of an edge of the leaf, in the space of the path's first id.
ErrorStatus currentCurve(const ZnDbEntity& leaf, const ZnDbCompoundObjectId& path, const ZnDbSubentId& subent,
                         std::unique_ptr<ZnGeCurve3d>& curve) {
  std::unique_ptr<ZnGeCurve3d> found = leaf.subentCurve(subent);
  if (!found) return Quorl::eKeyNotFound;
  if (!path.pathIds().empty()) {
    ZnGeMatrix3d transform;
    const ErrorStatus status = path.getTransform(transform);
    if (status != Quorl::eOk) return status;
    found = zndbTransformedCurve(*found, transform);
  }
  curve = std::move(found);
  return Quorl::eOk;
}

} // namespace

ZnDbEdgeRef::ZnDbEdgeRef(const ZnDbFullSubentPath& path)
    : ZnDbSubentRef(ZnDbCompoundObjectId(path), path.subentId()) {}

ZnDbEdgeRef::ZnDbEdgeRef(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent, const ZnDbSubentId&,
                         const ZnGeCurve3d* curve)
    : ZnDbSubentRef(entity, subent)
    , curve_(copyOf(curve)) {}

ZnDbEdgeRef::ZnDbEdgeRef(const ZnDbEdgeRef& other)
    : ZnDbSubentRef(other)
    , curve_(copyOf(other.heldCurve())) {}

ZnDbEdgeRef& ZnDbEdgeRef::operator=(const ZnDbEdgeRef& other) {
  if (this == &other) return *this;
  ZnDbSubentRef::operator=(other);
  curve_ = copyOf(other.heldCurve());
  return *this;
}

ErrorStatus ZnDbEdgeRef::evaluateCurve(std::unique_ptr<ZnGeCurve3d>& curve) const {
  curve.reset();
  if (curve_) {
    curve = copyOf(curve_.get());
    return Quorl::eOk;
  }
  if (isEmpty()) return Quorl::eKeyNotFound;
  const ZnDbHolder<ZnDbEntity> leaf(entity_.leafId());
  return leaf.isOpen() ? currentCurve(*leaf, entity_, subent_, curve) : leaf.status();
}

ZnDbEntity* ZnDbEdgeRef::createEntity() const {
  const ZnDbHolder<ZnDbEntity> leaf(entity_.leafId());
  std::unique_ptr<ZnGeCurve3d> curve = copyOf(curve_.get());
  if (!curve && (!leaf.isOpen() || currentCurve(*leaf, entity_, subent_, curve) != Quorl::eOk))
    return nullptr;
  ZnDbCurve* shown = nullptr;
  if (zndbConvertGelibCurveToZnDbCurve(*curve, shown, nullptr, ZnGeContext::gTol) != Quorl::eOk)
    return nullptr;
  if (leaf.isOpen()) shown->setPropertiesFrom(leaf.object());
  return shown;
}

ZnDbVertexRef::ZnDbVertexRef(const ZnDbFullSubentPath& path)
    : ZnDbSubentRef(ZnDbCompoundObjectId(path), path.subentId()) {}

ErrorStatus ZnDbVertexRef::evaluatePoint(ZnGePoint3d& point) const {
  if (isEmpty()) {
    if (!fixed_) return Quorl::eKeyNotFound;
    point = *fixed_;
    return Quorl::eOk;
  }
  const ZnDbHolder<ZnDbEntity> leaf(entity_.leafId());
  if (!leaf.isOpen()) return leaf.status();
  ZnGePoint3d found;
  if (!leaf->subentPoint(subent_, found)) return Quorl::eKeyNotFound;
  ZnGeMatrix3d transform;
  const ErrorStatus status = entity_.getTransform(transform);
  if (status == Quorl::eOk) point = transform * found;
  return status;
}
