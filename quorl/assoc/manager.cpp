#include "quorl/assoc/manager.h"

#include <algorithm>
#include <vector>

#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/evaluation_callback.h"
#include "quorl/assoc/evaluation_order.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"

using Quorl::ErrorStatus;

namespace {

// How often one action may be evaluated in a run. More than once happens when a dependency comes up during
// the run, or when two actions share an object; those that never come to rest end here.
constexpr int kMostEvaluations = 8;

std::vector<const ZnDbDatabase*> running;

class Run {
public:
  Run(ZnDbAssocNetwork& network, ZnDbAssocEvaluationCallback* callback)
      : network_(network)
      , callback_(callback) {
    running.push_back(network.database());
  }
  ~Run() { running.pop_back(); }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Who would be evaluated now, in order.
  ErrorStatus tell() {
    network_.takeMarked(marked_);
    order_.build(marked_);
    for (ZnDbAssocAction* action : marked_) action->setStatus(action->status());
    for (ZnDbAssocAction* action : order_.actions()) {
      if (!zndbIsToEvaluate(action->status())) continue;
      callback_->beginEvaluation(action);
      callback_->endEvaluation(action);
    }
    return Quorl::eOk;
  }

  ErrorStatus evaluate() {
    for (;;) {
      marked_.clear();
      network_.takeMarked(marked_);
      if (marked_.empty()) return status_;
      order_.build(marked_);
      size_t begin = 0;
      for (const size_t end : order_.groupEnds()) {
        if (end - begin == 1)
          evaluateOne(order_.actions()[begin]);
        else
          refuseCycle(begin, end);
        begin = end;
      }
    }
  }

private:
  void evaluateOne(ZnDbAssocAction* action) {
    if (!zndbIsToEvaluate(action->status())) return;
    if (order_.countEvaluation(action) > kMostEvaluations)
      refuse(action);
    else
      action->evaluate(callback_);
  }

  // Only a cycle through which a change runs is a failure.
  void refuseCycle(size_t begin, size_t end) {
    const auto first = order_.actions().begin() + static_cast<std::ptrdiff_t>(begin);
    const auto last = order_.actions().begin() + static_cast<std::ptrdiff_t>(end);
    const bool touched = std::any_of(
        first, last, [](const ZnDbAssocAction* action) { return zndbIsToEvaluate(action->status()); });
    if (touched) std::for_each(first, last, [this](ZnDbAssocAction* action) { refuse(action); });
  }

  void refuse(ZnDbAssocAction* action) {
    action->setStatus(kFailedToEvaluateAssocStatus);
    if (callback_) callback_->reportFailure(action, Quorl::eCyclicDependency, {}, nullptr, nullptr);
    status_ = Quorl::eCyclicDependency;
  }

  ZnDbAssocNetwork& network_;
  ZnDbAssocEvaluationCallback* callback_;
  ZnDbAssocEvaluationOrder order_;
  std::vector<ZnDbAssocAction*> marked_;
  ErrorStatus status_ = Quorl::eOk;
};

} // namespace

ErrorStatus ZnDbAssocManager::evaluateTopLevelNetwork(ZnDbDatabase* database,
                                                      ZnDbAssocEvaluationCallback* callback,
                                                      std::uint32_t /*flags*/) {
  if (!database) return Quorl::eNoDatabase;
  const bool isToldOnly = callback && callback->evaluationMode() == kTellActionsOnly;
  if (!isToldOnly) ZnDbDimAssoc::followWhatWaits(database);
  const ZnDbObjectId id = ZnDbAssocNetwork::getInstanceFromDatabase(database, false);
  if (id.isErased()) return Quorl::eOk;
  auto* network = static_cast<ZnDbAssocNetwork*>(id.slot()->object);
  if (callback) callback->networkEvaluationBegins(network);
  const ErrorStatus status = evaluateNetwork(network, callback);
  if (callback) callback->networkEvaluationEnded(network);
  return status;
}

ErrorStatus ZnDbAssocManager::evaluateNetwork(ZnDbAssocNetwork* network,
                                              ZnDbAssocEvaluationCallback* callback) {
  if (!network) return Quorl::eNullObjectPointer;
  if (std::find(running.begin(), running.end(), network->database()) != running.end())
    return Quorl::eNothingToDo;
  if (callback && callback->evaluationMode() == kTellActionsOnly) return Run(*network, callback).tell();
  const ZnDbUndoRecorder::Amendment finishing(network->database()->undoRecorder());
  return Run(*network, callback).evaluate();
}
