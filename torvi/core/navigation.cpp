#include "torvi/core/navigation.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "torvi/core/action_body.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/views.h"

namespace torvi {

namespace {

// The body of the action, null unless it is that of a center object.
ZnDbObjectId centerBodyOf(ZnDbObjectId actionId) {
  const ZnDbObjectId bodyId = ask<ZnDbAssocAction>(actionId, ZnDbObjectId(), &ZnDbAssocAction::actionBody);
  return bodyId.isDerivedFrom(ZnDbTorviActionBody::desc()) ? bodyId : ZnDbObjectId();
}

} // namespace

ZnDbObjectId bodyOfReference(ZnDbObjectId refId) {
  if (!refId.isValid() || !refId.isDerivedFrom(ZnDbBlockReference::desc())) return {};
  ZnArray<ZnDbObjectId> actions;
  ZnDbAssocAction::getActionsDependentOnObject(refId, false, true, actions);
  for (const ZnDbObjectId actionId : actions)
    if (const ZnDbObjectId bodyId = centerBodyOf(actionId); !bodyId.isNull()) return bodyId;
  return {};
}

ZnDbObjectId referenceOfBody(ZnDbObjectId bodyId) {
  return ask<ZnDbTorviActionBody>(bodyId, ZnDbObjectId(), &ZnDbTorviActionBody::centerObjectId);
}

CenterObject centerObjectOf(ZnDbObjectId refId) {
  CenterObject object{refId, bodyOfReference(refId)};
  if (const Kind* kind = kindOfBody(object.body)) object.kind = kind->type;
  return object;
}

void appendBodiesOn(ZnDbObjectId refId, bool readersToo, ZnArray<ZnDbObjectId>& bodies) {
  ZnDbHolder<ZnDbBlockReference> reference(refId, true);
  if (!reference.isOpen()) return;
  ZnArray<ZnDbObjectId> actions;
  ZnDbAssocAction::getActionsDependentOnObject(reference.object(), readersToo, true, actions);
  for (const ZnDbObjectId actionId : actions)
    if (const ZnDbObjectId bodyId = centerBodyOf(actionId); !bodyId.isNull()) appendOnce(bodies, bodyId);
}

void appendCenterActions(ZnDbDatabase& db, ZnArray<ZnDbObjectId>& actions) {
  // A set beside the array: drawings hold center objects by the hundred thousand.
  std::unordered_set<ZnDbObjectId> seen;
  for (const ZnDbObjectId id : actions) seen.insert(id);
  for (const ZnDbObjectId space : spacesOf(db)) {
    ZnDbHolder<ZnDbAssocNetwork> network(ZnDbAssocNetwork::getInstanceFromObject(space, false, true, L""));
    if (!network.isOpen()) continue;
    for (const ZnDbObjectId id : network->getActions())
      if (!centerBodyOf(id).isNull() && seen.insert(id).second) actions.append(id);
  }
}

bool isCenterMarkAction(ZnDbObjectId actionId) {
  const Kind* kind = kindOfBody(centerBodyOf(actionId));
  return kind && kind->type == kCenterMark;
}

void appendCenterMarkActions(ZnDbDatabase& db, ZnArray<ZnDbObjectId>& actions) {
  std::unordered_set<ZnDbObjectId> seen;
  for (const ZnDbObjectId id : actions) seen.insert(id);
  std::vector<ZnDbObjectId> networks{ZnDbAssocNetwork::getInstanceFromDatabase(&db, false)};
  for (size_t next = 0; next < networks.size(); ++next) {
    ZnDbHolder<ZnDbAssocNetwork> network(networks[next]);
    if (!network.isOpen()) continue;
    for (const ZnDbObjectId id : network->getActions()) {
      const bool isNetwork = id.isDerivedFrom(ZnDbAssocNetwork::desc());
      if ((!isNetwork && !isCenterMarkAction(id)) || !seen.insert(id).second) continue;
      if (isNetwork)
        networks.push_back(id);
      else
        actions.append(id);
    }
  }
}

CenterObject centerObjectWithCurve(const ZnDbCurve* curve) {
  ZnDbObjectId owner = curve ? curve->ownerId() : ZnDbObjectId();
  while (!owner.isNull() && owner.isDerivedFrom(ZnDbBlockTableRecord::desc())) {
    ZnDbHolder<ZnDbBlockTableRecord> block(owner);
    const ZnDbObjectId only = block.isOpen() ? onlyReferenceOf(*block) : ZnDbObjectId();
    if (const CenterObject object = centerObjectOf(only); object.kind != kTorviNone) return object;
    owner = ask<ZnDbBlockReference>(only, ZnDbObjectId(), &ZnDbBlockReference::ownerId);
  }
  return {};
}

CenterObject centerObjectWithBlock(const ZnDbBlockTableRecord& block, ZnDbObjectId& inner) {
  inner.setNull();
  if (!block.isAnonymous() || block.isLayout()) return {};
  const ZnDbObjectId only = onlyReferenceOf(block);
  if (const CenterObject object = centerObjectOf(only); object.kind != kTorviNone) return object;
  ZnDbHolder<ZnDbBlockTableRecord> outerBlock(
      ask<ZnDbBlockReference>(only, ZnDbObjectId(), &ZnDbBlockReference::ownerId));
  if (!outerBlock.isOpen()) return {};
  const CenterObject outer = centerObjectOf(onlyReferenceOf(*outerBlock));
  if (outer.kind == kTorviNone) return {};
  inner = only;
  return outer;
}

bool isCenterOfDrawingView(ZnDbObjectId refId) {
  ZnArray<ZnDbEdgeRef> edges;
  if (kindOfBody(bodyOfReference(refId))) ZnDbTorviObjectWrapper(refId).getEdgeRefs(edges);
  return std::any_of(edges.begin(), edges.end(),
                     [](const ZnDbEdgeRef& edge) { return isInDrawingView(edge); });
}

} // namespace torvi
