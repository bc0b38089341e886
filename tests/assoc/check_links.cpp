#include "assoc/check_links.h"

#include <algorithm>
#include <map>

#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"

namespace {

using Count = std::map<std::pair<ZnDbObjectId, ZnDbObjectId>, int>; // (watched, watcher)

bool isDependency(ZnDbObjectId id) { return id.isDerivedFrom(ZnDbAssocDependency::desc()); }

Count wantedLinks(const std::vector<ZnDbObjectId>& ids) {
  Count wanted;
  for (const ZnDbObjectId id : ids) {
    if (id.isErased() || !isDependency(id)) continue;
    const auto* dependency = static_cast<const ZnDbAssocDependency*>(id.slot()->object);
    ZnArray<ZnDbObjectId> path;
    dependency->compoundObject().getFullPath(path);
    for (const ZnDbObjectId watched : path) ++wanted[{watched, id}];
  }
  return wanted;
}

Count standingLinks(const std::vector<ZnDbObjectId>& ids, std::vector<ZnString>& faults) {
  Count standing;
  for (const ZnDbObjectId id : ids) {
    const ZnDbWatchLink* const first = id.slot()->watchers;
    const ZnDbWatchLink* link = first;
    while (link) {
      if (link->watched != id) faults.push_back(L"a link stands in the ring of another object");
      if (link->next->previous != link) faults.push_back(L"a ring is torn at " + handleText(id.handle()));
      if (isDependency(link->watcher)) ++standing[{id, link->watcher}];
      link = link->next == first ? nullptr : link->next;
    }
  }
  return standing;
}

// Each live action stands once in its network, and a marked one is found from the top.
void checkNetworks(const std::vector<ZnDbObjectId>& ids, std::vector<ZnString>& faults) {
  for (const ZnDbObjectId id : ids) {
    if (id.isErased() || !id.isDerivedFrom(ZnDbAssocAction::desc())) continue;
    const auto* action = static_cast<const ZnDbAssocAction*>(id.slot()->object);
    const ZnDbAssocNetwork* network = action->owningNetwork();
    if (!network) continue;
    const ZnArray<ZnDbObjectId>& members = network->getActions();
    if (std::count(members.begin(), members.end(), id) != 1)
      faults.push_back(L"action " + handleText(id.handle()) + L" does not stand once in its network");
    if (zndbIsToEvaluate(action->status()) && !network->hasMarked())
      faults.push_back(L"the mark of action " + handleText(id.handle()) + L" is lost");
  }
}

} // namespace

std::vector<ZnString> linkFaults(const ZnDbDatabase& database) {
  const std::vector<ZnDbObjectId> ids = database.allObjectIds();
  std::vector<ZnString> faults;
  const Count standing = standingLinks(ids, faults);
  const Count wanted = wantedLinks(ids);
  for (const auto& [link, count] : wanted)
    if (const auto found = standing.find(link); found == standing.end() || found->second != count)
      faults.push_back(L"dependency " + handleText(link.second.handle()) + L" does not watch " +
                       handleText(link.first.handle()));
  for (const auto& [link, count] : standing)
    if (!wanted.count(link))
      faults.push_back(L"dependency " + handleText(link.second.handle()) + L" watches " +
                       handleText(link.first.handle()) + L" without depending on it");
  checkNetworks(ids, faults);
  return faults;
}
