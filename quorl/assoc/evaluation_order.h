// The order in which marked actions, and all that may be marked by them, are visited.
#pragma once

#include <vector>

#include "quorl/assoc/action.h"

class ZnDbAssocEvaluationOrder {
public:
  ZnDbAssocEvaluationOrder();

  // Groups of actions, each after those that write what it reads. A group of more than one is a cycle.
  // Follows the watch links from what actions write; suppressed and erased actions are left out.
  void build(const std::vector<ZnDbAssocAction*>& marked);
  const std::vector<ZnDbAssocAction*>& actions() const { return order_; }
  // Ends of the groups in the list of actions.
  const std::vector<size_t>& groupEnds() const { return groupEnds_; }

  // How often the action was evaluated since this order was made; counts this one.
  int countEvaluation(ZnDbAssocAction* action);

private:
  struct Step {
    ZnDbAssocAction* action;
    size_t firstReader, nextReader;
  };
  bool isVisited(const ZnDbAssocAction* action) const { return action->visit_.build == build_; }
  void visit(ZnDbAssocAction* root);
  void enter(ZnDbAssocAction* action);
  void leave();
  void appendReaders(const ZnDbAssocAction* action);

  std::uint32_t run_ = 0, build_ = 0, nextIndex_ = 0;
  std::vector<Step> steps_;
  std::vector<ZnDbAssocAction*> readers_, open_, order_;
  std::vector<size_t> groupEnds_;
};
