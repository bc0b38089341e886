#include "torvi/lifecycle/clone_reactors.h"

#include <memory>
#include <unordered_set>

#include "torvi/core/action_body.h"
#include "torvi/core/object_pointer.h"
#include "torvi/lifecycle/updates.h"

using Ids = ZnArray<ZnDbObjectId>;
using Utils = ZnTorviDeepCloneUtils;

namespace {

ZnRxEvent* hostEvents() { return ZnRxEvent::cast(znrxSysRegistry()->at(L"ZnRxEvent")); }

template<class Reactor> void attachTo(std::unique_ptr<Reactor>& reactor) {
  if (reactor) return;
  reactor = std::make_unique<Reactor>();
  if (ZnRxEvent* events = hostEvents()) events->addReactor(reactor.get());
}

template<class Reactor> void detachFrom(std::unique_ptr<Reactor>& reactor) {
  if (ZnRxEvent* events = hostEvents(); events && reactor) events->removeReactor(reactor.get());
  reactor.reset();
}

std::unique_ptr<ZnRxEventReactor_TorviDeepCloneExplode> explodeReactor;
std::unique_ptr<ZnRxEventReactor_DeepCloneCopy> copyReactor;

// What an explode leaves for the end of its reference. One clone follows another on one thread.
struct Explode {
  Ids blocks;
  ZnTorviEdgeParamMap oldParams, newParams;
  ZnTorviCenterBlockMap centers;
};
Explode explode;

} // namespace

void ZnRxEventReactor_TorviDeepCloneExplode::attach() { attachTo(explodeReactor); }

void ZnRxEventReactor_TorviDeepCloneExplode::detach() {
  Utils::deleteCenterBlockMap(explode.centers);
  explode = {};
  detachFrom(explodeReactor);
}

void ZnRxEventReactor_TorviDeepCloneExplode::beginDeepCloneTranslation(ZnDbIdMapping& map) {
  explode.blocks.removeAll();
  explode.oldParams.clear();
  Utils::deleteCenterBlockMap(explode.centers);
  if (map.deepCloneContext() != ZnDb::kExplodeContext) return;
  Utils::collectAllDeepCloneBtrIds(map, explode.blocks);
  Utils::collectAllOldEdgeParams(explode.blocks, explode.oldParams);
  Utils::createCenterBtrToSubEntitiesMap(explode.blocks, explode.centers);
}

void ZnRxEventReactor_TorviDeepCloneExplode::abortDeepClone(ZnDbIdMapping& map) {
  if (map.deepCloneContext() == ZnDb::kExplodeContext) Utils::deleteCenterBlockMap(explode.centers);
}

void ZnRxEventReactor_TorviDeepCloneExplode::endDeepClone(ZnDbIdMapping& map) {
  if (map.deepCloneContext() == ZnDb::kExplodeContext) {
    Utils::updateCenterBtrSubEntityProps(map, explode.centers);
    Utils::deleteCenterBlockMap(explode.centers);
  }
  Utils::getNewEdgeParamsWithNewSubentPath(map, explode.blocks, explode.oldParams, explode.newParams);
}

// The first reference to an exploded block that goes is the one that was exploded. What is left over then saw
// its edges through other references to that block: it has no use for these clones when they go in their
// turn.
void ZnRxEventReactor_TorviDeepCloneExplode::referenceErased(ZnDbObjectId reference, ZnDbObjectId block) {
  Utils::updateEdgeparams(explode.oldParams, explode.newParams, reference);
  if (!explode.blocks.contains(block)) return;
  explode.oldParams.clear();
  explode.newParams.clear();
}

void ZnRxEventReactor_TorviDeepCloneExplode::forget(const ZnDbDatabase& drawing) {
  const auto isOf = [&](const auto& entry) { return entry.first.database() == &drawing; };
  std::erase_if(explode.oldParams, isOf);
  std::erase_if(explode.newParams, isOf);
  if (!explode.blocks.isEmpty() && explode.blocks.first().database() == &drawing) explode.blocks.removeAll();
}

namespace {

constexpr bool isCopied(int context) {
  return context == ZnDb::kCopyContext || context == ZnDb::kBlockContext ||
         context == ZnDb::kCopyOutContext || context == ZnDb::kCopyInContext;
}

// Whether the originals stay behind without what is cloned.
constexpr bool takesAway(int context) {
  return context == ZnDb::kCopyOutContext || context == ZnDb::kBlockContext;
}

// Cached too, so that nothing is said of it at the next evaluation: the user has asked for this.
void breakCenterAndCache(ZnDbObjectId centerId) {
  const std::unique_ptr<ZnDbTorviObjectWrapper> center(makeTorviWrapper(centerId));
  if (!center) return;
  center->breakAssociativity();
  center->setCachedAssociateStatus(false);
}

bool isToBeBroken(const ZnDbIdMapping& map, ZnDbObjectId centerId) {
  ZnDbIdPair pair(centerId);
  const bool isCloned = map.compute(pair);
  const bool areEdgesCloned = Utils::isCenterDependentObjectsCloned(map, centerId);
  if (isCloned && areEdgesCloned) return false; // its clone follows the clones
  if (torvi::isLongTransactionActive()) return false;
  return takesAway(map.deepCloneContext()) || (isCloned && !areEdgesCloned);
}

void collectCentersToBreak(const ZnDbIdMapping& map, Ids& centers) {
  std::unordered_set<ZnDbObjectId> known(centers.begin(), centers.end());
  // The pairs as they are now: looking may not make more of them.
  const std::vector<ZnDbIdPair> pairs = map.pairs();
  for (const ZnDbIdPair& pair : pairs) {
    ZnDbHolder<ZnDbEntity> entity(pair.key());
    if (!entity.isOpen()) continue;
    Ids actions;
    ZnDbAssocAction::getActionsDependentOnObject(entity.object(), true, false, actions);
    for (const ZnDbObjectId actionId : actions) {
      ZnDbHolder<ZnDbAssocAction> action(actionId);
      ZnDbHolder<ZnDbTorviActionBody> body(action.isOpen() ? action->actionBody() : ZnDbObjectId());
      if (!body.isOpen()) continue;
      const ZnDbObjectId center = body->centerObjectId();
      // Asked once: a pattern is met at each of its circles.
      if (known.insert(center).second && isToBeBroken(map, center)) centers.append(center);
    }
  }
}

} // namespace

void ZnRxEventReactor_DeepCloneCopy::attach() { attachTo(copyReactor); }

void ZnRxEventReactor_DeepCloneCopy::detach() { detachFrom(copyReactor); }

void ZnRxEventReactor_DeepCloneCopy::beginDeepCloneTranslation(ZnDbIdMapping& map) {
  toDisassociate_.removeAll();
  if (!isCopied(map.deepCloneContext())) return;
  collectCentersToBreak(map, toDisassociate_);
  if (!takesAway(map.deepCloneContext())) return;
  for (const ZnDbObjectId center : toDisassociate_) breakCenterAndCache(center);
  toDisassociate_.removeAll();
}

void ZnRxEventReactor_DeepCloneCopy::endDeepClone(ZnDbIdMapping& map) {
  for (const ZnDbObjectId center : toDisassociate_) breakCenterAndCache(Utils::getClonedId(map, center));
  toDisassociate_.removeAll();
}
