#include "quorl/assoc/evaluation_order.h"

#include <algorithm>

#include "quorl/assoc/dependency.h"

namespace {

std::uint32_t lastRun = 0, lastBuild = 0;

bool takesPart(const ZnDbAssocAction* action) {
  return action && !action->isErased() && action->status() != kSuppressedAssocStatus &&
         action->status() != kErasedAssocStatus;
}

} // namespace

ZnDbAssocEvaluationOrder::ZnDbAssocEvaluationOrder()
    : run_(++lastRun) {}

int ZnDbAssocEvaluationOrder::countEvaluation(ZnDbAssocAction* action) {
  if (action->visit_.run != run_) {
    action->visit_.run = run_;
    action->visit_.evaluations = 0;
  }
  return ++action->visit_.evaluations;
}

// Strongly connected groups by Tarjan's walk, with a stack of its own: chains of actions can be longer than
// the program's. The walk finds readers before writers, so the result is turned round; roots are taken from
// the end for the same reason, and independent actions keep the order in which they were marked.
void ZnDbAssocEvaluationOrder::build(const std::vector<ZnDbAssocAction*>& marked) {
  build_ = ++lastBuild;
  nextIndex_ = 0;
  order_.clear();
  groupEnds_.clear();
  for (size_t i = marked.size(); i-- > 0;)
    if (takesPart(marked[i]) && !isVisited(marked[i])) visit(marked[i]);

  std::reverse(order_.begin(), order_.end());
  std::vector<size_t> ends;
  ends.reserve(groupEnds_.size());
  for (size_t i = groupEnds_.size(); i-- > 0;)
    ends.push_back(order_.size() - (i == 0 ? 0 : groupEnds_[i - 1]));
  groupEnds_ = std::move(ends);
}

void ZnDbAssocEvaluationOrder::visit(ZnDbAssocAction* root) {
  enter(root);
  while (!steps_.empty()) {
    Step& step = steps_.back();
    // What deeper steps appended is gone again, so the readers of this step end the list.
    if (step.nextReader == readers_.size()) {
      leave();
      continue;
    }
    ZnDbAssocAction* reader = readers_[step.nextReader++];
    if (!isVisited(reader))
      enter(reader);
    else if (reader->visit_.open)
      step.action->visit_.low = std::min(step.action->visit_.low, reader->visit_.index);
  }
}

void ZnDbAssocEvaluationOrder::enter(ZnDbAssocAction* action) {
  ZnDbAssocAction::Visit& mark = action->visit_;
  mark.build = build_;
  mark.index = mark.low = nextIndex_++;
  mark.open = true;
  open_.push_back(action);
  steps_.push_back({action, readers_.size(), readers_.size()});
  appendReaders(action);
}

void ZnDbAssocEvaluationOrder::leave() {
  ZnDbAssocAction* action = steps_.back().action;
  readers_.resize(steps_.back().firstReader);
  steps_.pop_back();
  const std::uint32_t low = action->visit_.low;
  if (!steps_.empty()) {
    std::uint32_t& outer = steps_.back().action->visit_.low;
    outer = std::min(outer, low);
  }
  if (low != action->visit_.index) return;
  ZnDbAssocAction* member = nullptr;
  do {
    member = open_.back();
    open_.pop_back();
    member->visit_.open = false;
    order_.push_back(member);
  } while (member != action);
  groupEnds_.push_back(order_.size());
}

// Two actions that both read and write one object share it; neither waits for the other.
void ZnDbAssocEvaluationOrder::appendReaders(const ZnDbAssocAction* action) {
  for (const ZnDbObjectId id : action->dependencyIds()) {
    const ZnDbAssocDependency* write = ZnDbAssocDependency::live(id);
    if (!write || !write->isWriteDependency() || !write->isAttached()) continue;
    const ZnDbWatchLink* const first = write->compoundObject().leafId().slot()->watchers;
    const ZnDbWatchLink* link = first;
    while (link) {
      const ZnDbAssocDependency* read = ZnDbAssocDependency::live(link->watcher);
      if (read && read->isReadDependency() && !(read->isWriteDependency() && write->isReadDependency())) {
        ZnDbAssocAction* reader = read->owningAction();
        if (reader != action && takesPart(reader)) readers_.push_back(reader);
      }
      link = link->next == first ? nullptr : link->next;
    }
  }
}
