#include "torvi/core/action_body.h"

#include <cmath>
#include <limits>
#include <memory>

#include "torvi/core/action_body_utils.h"
#include "torvi/core/layout.h"
#include "torvi/core/new_entities.h"
#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/dependencies.h"
#include "torvi/drawing/views.h"
#include "torvi/host/class_registration.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbTorviActionBody, ZnDbTorviActionBodyBase)

namespace {

// Built once: a name that keeps its buffer is looked up by address.
const ZnString kCenterDepId(L"CenterDepId");
const ZnString kStyleDepId(L"StyleDepId");
const ZnString kDimStyleDepId(L"DimStyleDepId");
const ZnString kSubentLineType(L"SubentLineType");
const ZnString kSubentLineWeight(L"SubentLineWeight");
const ZnString kSubentLinetypeScale(L"SubentLinetypeScale");
const ZnString kIsExplicitlyDeassociatived(L"IsExplicitlyDeassociatived");
const ZnString kAssociationToBeBroken(L"AssociationToBeBroken");
const ZnString kCachedViewportScale(L"CachedViewportScale");
const ZnString kCachedAssociateStatus(L"CachedAssociateStatus");

} // namespace

ZnDbObjectId ZnDbTorviActionBody::centerDepId() const { return getObjectIdParam(kCenterDepId); }
ZnDbObjectId ZnDbTorviActionBody::styleDepId() const { return getObjectIdParam(kStyleDepId); }
ZnDbObjectId ZnDbTorviActionBody::dimStyleDepId() const { return getObjectIdParam(kDimStyleDepId); }
ErrorStatus ZnDbTorviActionBody::setCenterDepId(ZnDbObjectId id) {
  return setObjectIdParam(kCenterDepId, id);
}
ErrorStatus ZnDbTorviActionBody::setStyleDepId(ZnDbObjectId id) { return setObjectIdParam(kStyleDepId, id); }
ErrorStatus ZnDbTorviActionBody::setDimStyleDepId(ZnDbObjectId id) {
  return setObjectIdParam(kDimStyleDepId, id);
}

ZnDbObjectId ZnDbTorviActionBody::objectOfDependency(ZnDbObjectId dependencyId) const {
  return torvi::ask<ZnDbAssocDependency>(dependencyId, ZnDbObjectId(),
                                         &ZnDbAssocDependency::dependentOnObject);
}

ZnDbObjectId ZnDbTorviActionBody::centerObjectId() const { return objectOfDependency(centerDepId()); }

ZnDbObjectId ZnDbTorviActionBody::getStyleId() const { return objectOfDependency(styleDepId()); }

ErrorStatus ZnDbTorviActionBody::addDependencyToStyle(ZnDbObjectId styleId) {
  ZnDbObjectId dependencyId;
  if (styleId.isValid()) torvi::addDependencyTo(*this, styleId, torvi::DependencyAccess::kRead, dependencyId);
  return setStyleDepId(dependencyId);
}

ErrorStatus ZnDbTorviActionBody::createCenterEntity(ZnDbDatabase* database) {
  assertWriteEnabled();
  const ZnDbEdgeRef edge = getInputEdge(0);
  ZnDbHolder<ZnDbEntity> entity;
  if (const ErrorStatus status = entity.open(edge.entity().topId()); status != Quorl::eOk) return status;
  ZnDbObjectId btrId, refId;
  ZnDbTorviActionBodyUtils::createCenterBlockRef(entity.object(), btrId, refId, database);
  if (!refId.isValid()) return Quorl::eInvalidInput;
  ZnDbObjectId dependencyId;
  if (torvi::addDependencyTo(*this, refId, torvi::DependencyAccess::kReadWrite, dependencyId) != Quorl::eOk)
    return Quorl::eInvalidInput;
  setCenterDepId(dependencyId);
  return addEntitiesIntoCenterAnonymousBTR(entity->database(), btrId) == Quorl::eOk ? Quorl::eOk
                                                                                    : Quorl::eInvalidInput;
}

namespace {

class EntitiesForBlock : public torvi::NewEntities {
public:
  explicit EntitiesForBlock(ZnDbBlockTableRecord& record)
      : record_(record) {}

  // Places one entity, or the open group as a sub-block; the id is what an output key names.
  ErrorStatus place(int index, ZnArray<ZnDbEntity*>& group, bool groupIsOpen, ZnDbObjectId& id) {
    if (groupIsOpen) {
      ZnArray<ZnDbObjectId> ids;
      const ErrorStatus status =
          ZnDbTorviActionBodyUtils::createSubBlockForEntities(&record_, group, id, ids);
      group.removeAll();
      return status;
    }
    const ErrorStatus status = record_.appendZnDbEntity(id, entities[index]);
    return status == Quorl::eOk ? entities[index]->close() : status;
  }

  ZnArray<ZnString> keys;

private:
  ZnDbBlockTableRecord& record_;
};

} // namespace

// The entity that ends a run of equal keys before the end of the list falls out: the run is flushed by the
// meeting of its two different keys, without it. Layouts with groups arrange their keys to suit.
ErrorStatus ZnDbTorviActionBody::addEntitiesIntoCenterAnonymousBTR(ZnDbDatabase* /*database*/,
                                                                   ZnDbObjectId btrId) {
  ZnDbHolder<ZnDbBlockTableRecord> record;
  if (record.openForWrite(btrId) != Quorl::eOk) return Quorl::eInvalidInput;
  const std::unique_ptr<ZnDbTorviLayout> layout(getLayout());
  if (!layout) return Quorl::eInvalidInput;
  EntitiesForBlock placing(*record);
  if (const ErrorStatus status = layout->createEntities(placing.entities, placing.keys); status != Quorl::eOk)
    return status;

  const bool keyed = !placing.keys.isEmpty();
  const int last = placing.entities.length() - 1;
  ZnArray<ZnDbEntity*> group;
  bool groupIsOpen = false;
  for (int i = 0; i <= last; ++i) {
    if (!placing.entities[i]) continue;
    if (keyed && i != last && placing.keys[i] == placing.keys[i + 1]) {
      groupIsOpen = true;
      group.append(placing.entities[i]);
      continue;
    }
    if (keyed && i == last && groupIsOpen) group.append(placing.entities[i]);
    ZnDbObjectId id;
    if (const ErrorStatus status = placing.place(i, group, groupIsOpen, id); status != Quorl::eOk)
      return status;
    groupIsOpen = false;
    if (keyed) setOutputEdge(placing.keys[i], id);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviActionBody::eraseCenterEntity() {
  assertWriteEnabled();
  const ZnDbObjectId refId = centerObjectId();
  const ZnDbObjectId dependencyId = centerDepId();
  ZnDbHolder<ZnDbAssocDependency> dependency;
  if (dependency.openForWrite(dependencyId) == Quorl::eOk) dependency->erase();
  dependency.close();
  ZnDbObjectId btrId;
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(refId, false, true) == Quorl::eOk) {
    btrId = reference->blockTableRecord();
    reference->erase();
  }
  reference.close();
  ZnDbHolder<ZnDbBlockTableRecord> record;
  if (record.openForWrite(btrId, false, true) == Quorl::eOk) record->erase();
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviActionBody::getCenterEntitesIds(ZnArray<ZnDbObjectId>& ids) const {
  return torvi::curvesOfReference(centerObjectId(), ids, false);
}

ErrorStatus ZnDbTorviActionBody::getCenterObjGeometry(ZnArray<ZnGeCurve3d*>& curves) const {
  ZnArray<ZnDbObjectId> ids;
  const ErrorStatus status = getCenterEntitesIds(ids);
  return status == Quorl::eOk ? getCenterObjGeometry(ids, curves) : status;
}

ErrorStatus ZnDbTorviActionBody::getCenterObjGeometry(const ZnArray<ZnDbObjectId>& ids,
                                                      ZnArray<ZnGeCurve3d*>& curves) const {
  const ZnGeTol& tol = ZnGeContext::gTol;
  for (const ZnDbObjectId id : ids) {
    ZnDbHolder<ZnDbCurve> entity(id);
    if (!entity.isOpen()) continue;
    ZnGeCurve3d* curve = nullptr;
    if (entity->getZnGeCurve(curve, tol) == Quorl::eOk && curve && curve->isDegenerate(tol)) {
      delete curve;
      curve = nullptr;
    }
    curves.append(curve ? curve : new ZnGeLine3d);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviActionBody::getAssociatedEntitiesIds(ZnArray<ZnDbObjectId>& ids) const {
  ZnArray<ZnDbEdgeRef> edges;
  if (getEdgeRefs(edges) != Quorl::eOk) return Quorl::eNoInputEdges;
  for (const ZnDbEdgeRef& edge : edges)
    if (const ZnDbObjectId leaf = edge.entity().leafId(); leaf.isValid()) ids.append(leaf);
  return Quorl::eOk;
}

ZnDbObjectId ZnDbTorviActionBody::getDependentViewportId() const {
  if (edgeRefCount() == 0) return {};
  return torvi::viewportOfEdge(getInputEdge(0));
}

ZnString ZnDbTorviActionBody::subentLineType() const {
  ZnDbEvalVariant value;
  ZnString name;
  if (getValueParam(kSubentLineType, value) == Quorl::eOk && value.getValue(name) == Quorl::eOk) return name;
  return ZnTorviStyle::getCenterLineTypeName();
}

// A drawing may bring a number along that no int can hold.
int ZnDbTorviActionBody::subentLineWeight() const {
  const double weight = valueOf(kSubentLineWeight, 0.0);
  return std::fabs(weight) < std::numeric_limits<int>::max() ? static_cast<int>(weight) : 0;
}

double ZnDbTorviActionBody::subentLinetypeScale() const { return valueOf(kSubentLinetypeScale, 0.0); }

ErrorStatus ZnDbTorviActionBody::setSubentLineType(ZnString name) {
  return storeValue(kSubentLineType, ZnDbEvalVariant(name));
}

ErrorStatus ZnDbTorviActionBody::setSubentLineWeight(int weight) {
  return storeValue(kSubentLineWeight, ZnDbEvalVariant(static_cast<double>(weight)));
}

ErrorStatus ZnDbTorviActionBody::setSubentLinetypeScale(double scale) {
  return storeValue(kSubentLinetypeScale, ZnDbEvalVariant(scale));
}

bool ZnDbTorviActionBody::isExplicitlyDeassociatived() const {
  return getBoolParam(kIsExplicitlyDeassociatived, false);
}

ErrorStatus ZnDbTorviActionBody::setIsExplicitlyDeassociatived(bool value) {
  return setBoolParam(kIsExplicitlyDeassociatived, value);
}

bool ZnDbTorviActionBody::associationToBeBroken() const {
  return getBoolParam(kAssociationToBeBroken, false);
}

void ZnDbTorviActionBody::setAssociationToBeBroken(bool value) {
  setBoolParam(kAssociationToBeBroken, value);
}

double ZnDbTorviActionBody::cachedViewportScale() const { return getDoubleParam(kCachedViewportScale, 0.0); }

ErrorStatus ZnDbTorviActionBody::setCachedViewportScale(double scale) {
  return setDoubleParam(kCachedViewportScale, scale);
}

bool ZnDbTorviActionBody::getCachedAssociateStatus() const {
  return getBoolParam(kCachedAssociateStatus, false);
}

ErrorStatus ZnDbTorviActionBody::setCachedAssociateStatus(bool associative) {
  return setBoolParam(kCachedAssociateStatus, associative);
}
