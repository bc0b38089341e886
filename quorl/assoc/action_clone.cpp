// How actions travel with what they write when that is cloned.
#include "quorl/assoc/action_body.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/deep_clone.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/table/block_table.h"

namespace {

// The body of the action that writes through the link; null for a reader and for a watcher of another kind.
const ZnDbAssocActionBody* writingBody(const ZnDbWatchLink& link) {
  if (link.watcher.isErased() || !link.watcher.isDerivedFrom(ZnDbAssocDependency::desc())) return nullptr;
  const auto* dependency = static_cast<const ZnDbAssocDependency*>(link.watcher.slot()->object);
  const ZnDbAssocAction* action = dependency->isWriteDependency() ? dependency->owningAction() : nullptr;
  return action && !action->isErased() ? action->body() : nullptr;
}

void collectWritingActions(ZnDbIdMapping& mapping, const ZnArray<ZnDbObjectId>& cloned,
                           ZnArray<ZnDbObjectId>& more) {
  for (const ZnDbObjectId id : cloned) {
    const ZnDbWatchLink* const first = id.slot()->watchers;
    const ZnDbWatchLink* link = first;
    if (!first) continue;
    do {
      if (const ZnDbAssocActionBody* body = writingBody(*link)) {
        const ZnDbHolder<ZnDbAssocActionBody> held(body->objectId());
        body->addMoreObjectsToDeepCloneOverride(mapping, more);
      }
      link = link->next;
    } while (link != first);
  }
}

// A cloned action belongs to the network of the block into which its object goes.
ZnDbObjectId networkOfDestination(const ZnDbObject* original, const ZnDbIdMapping&,
                                  ZnDbObjectId destinationOwner) {
  if (!original->isKindOf(ZnDbAssocAction::desc()) || original->isKindOf(ZnDbAssocNetwork::desc())) return {};
  if (!destinationOwner.isDerivedFrom(ZnDbBlockTableRecord::desc())) return {};
  return ZnDbAssocNetwork::getInstanceFromObject(destinationOwner, true, true);
}

const bool registered = (zndbSetDeepCloneCollector(collectWritingActions),
                         zndbSetDeepCloneOwnerFinder(networkOfDestination), true);

} // namespace
