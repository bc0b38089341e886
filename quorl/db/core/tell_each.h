// Notifies the reactors of a list, which may change meanwhile.
#pragma once

#include <algorithm>
#include <vector>

// A reactor may add and remove others, and go itself: the list is copied, and whoever is gone by then is
// passed over. The list itself must outlive the call.
template<class Reactor, class Call> void zndbTellEach(const std::vector<Reactor*>& reactors, Call&& call) {
  if (reactors.empty()) return;
  const std::vector<Reactor*> now = reactors;
  for (Reactor* reactor : now)
    if (std::find(reactors.begin(), reactors.end(), reactor) != reactors.end()) call(*reactor);
}
