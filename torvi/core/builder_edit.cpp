#include "torvi/core/builder.h"
#include "torvi/core/evaluation.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"

using Quorl::ErrorStatus;

void ZnTorviBuilder::setInputEdges(const ZnArray<ZnDbEdgeRef>& edges) { inputEdges_ = edges; }

void ZnTorviBuilder::addInputEdge(const ZnDbEdgeRef& edge) {
  inputEdges_.append(edge);
  if (!objectLoaded()) return;
  if (!removedEdges_.remove(edge)) addedEdges_.append(edge);
}

bool ZnTorviBuilder::removeInputEdge(const ZnDbEdgeRef& edge) {
  if (objectLoaded() && !addedEdges_.remove(edge)) removedEdges_.append(edge);
  return inputEdges_.remove(edge);
}

void ZnTorviBuilder::clearInput() {
  removeEmptyEdges_ = true;
  if (objectLoaded()) {
    for (int i = inputEdges_.length() - 1; i >= 0; --i) {
      const ZnDbEdgeRef edge = inputEdges_[i];
      removeInputEdge(edge);
    }
  }
  inputEdges_.removeAll();
  pickPoints_.removeAll();
}

bool ZnTorviBuilder::hasInputEdgeChangesInEdit() const {
  return objectLoaded() && (!addedEdges_.isEmpty() || !removedEdges_.isEmpty());
}

ErrorStatus ZnTorviBuilder::loadTorvi(ZnDbObjectId centerId) {
  loadedObject_.setNull();
  addedEdges_.removeAll();
  removedEdges_.removeAll();
  removeEmptyEdges_ = false;
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(centerId);
  if (wrapper.openStatus() != Quorl::eOk) return wrapper.openStatus();
  if (wrapper->getEdgeRefs(inputEdges_) != Quorl::eOk) return Quorl::eOk;
  emptyEdgeIndexes_.removeAll();
  for (int i = 0; i < inputEdges_.length(); ++i)
    if (inputEdges_[i] == ZnDbEdgeRef()) emptyEdgeIndexes_.append(i);
  for (int i = emptyEdgeIndexes_.length() - 1; i >= 0; --i) inputEdges_.removeAt(emptyEdgeIndexes_[i]);
  for (ZnDbEdgeRef& edge : inputEdges_) convertEdgeRefToOriginalForm(edge);
  loadedObject_ = centerId;
  return subLoadTorvi(wrapper.object());
}

ErrorStatus ZnTorviBuilder::modifyTorvi() const {
  if (!objectLoaded()) return Quorl::eNothingToDo;
  const ZnDbObjectId bodyId = torvi::bodyOfReference(loadedObject_);
  ErrorStatus status = removeEmptyEdges_ ? removeLoadedEmptyEdgesFromBody(bodyId) : Quorl::eOk;
  if (status == Quorl::eOk) status = removeInputEdgesFromBody(bodyId, removedEdges_);
  if (status == Quorl::eOk) status = addInputEdgesToBody(bodyId, addedEdges_);
  if (status == Quorl::eOk) status = subModifyTorvi(bodyId);
  return status == Quorl::eOk ? torvi::evaluateNetworkFor(bodyId) : status;
}

ErrorStatus ZnTorviBuilder::removeLoadedEmptyEdgesFromBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  for (const int index : emptyEdgeIndexes_) body->breakAssociativity(index);
  return Quorl::eOk;
}

// Parameters are emptied, not removed: the positions of the others stay.
ErrorStatus ZnTorviBuilder::removeInputEdgesFromBody(ZnDbObjectId bodyId,
                                                     const ZnArray<ZnDbEdgeRef>& edges) const {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  ZnArray<ZnDbEdgeRef> held;
  body->getEdgeRefs(held);
  for (int i = 0; i < held.length(); ++i) {
    convertEdgeRefToOriginalForm(held[i]);
    if (!edges.contains(held[i])) continue;
    if (const ErrorStatus status = body->breakAssociativity(i); status != Quorl::eOk) return status;
  }
  return Quorl::eOk;
}

ErrorStatus ZnTorviBuilder::convertEdgeRefToOriginalForm(ZnDbEdgeRef& edge) {
  ZnDbHolder<ZnDbEntity> entity;
  if (const ErrorStatus status = entity.open(edge.entity().leafId()); status != Quorl::eOk) return status;
  const auto* naming = ZnDbAssocPersSubentIdPE2::cast(entity->queryX(ZnDbAssocPersSubentIdPE::desc()));
  if (!naming) return Quorl::eNothingToDo;
  ZnDbCompoundObjectId source;
  const ErrorStatus status =
      naming->getSourceOfSubentity(entity.object(), edge.subentId(), edge.entity(), source);
  if (status != Quorl::eOk) return status;
  ZnArray<ZnDbObjectId> path;
  source.getFullPath(path);
  edge = ZnDbEdgeRef(ZnDbFullSubentPath(path, edge.subentId()));
  return Quorl::eOk;
}
