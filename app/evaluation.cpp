#include "app/evaluation.h"

#include <fmt/format.h>

#include "app/failure.h"
#include "quorl/assoc/action.h"
#include "quorl/assoc/evaluation_callback.h"
#include "quorl/assoc/manager.h"

namespace app {

namespace {

class FailureCollector : public ZnDbAssocEvaluationCallback {
public:
  void beginEvaluation(ZnDbAssocAction*) override {}
  void endEvaluation(ZnDbAssocAction*) override {}
  void reportFailure(ZnDbAssocAction* action, Quorl::ErrorStatus status, ZnDbObjectId, ZnDbObject*,
                     void*) override {
    const ZnDbHandle handle = action ? action->handle() : ZnDbHandle();
    lines.push_back(fmt::format("action #{} could not be brought up to date: {}", handleText(handle).utf8(),
                                statusSentence(status)));
  }
  void beginUse(ZnDbAssocAction*, ZnDbObjectId, bool, bool, ZnDbObject*&) override {}
  void endUse(ZnDbAssocAction*, ZnDbObjectId, ZnDbObject*) override {}

  std::vector<std::string> lines;
};

} // namespace

std::vector<std::string> evaluate(ZnDbDatabase& database) {
  FailureCollector collector;
  ZnDbAssocManager::evaluateTopLevelNetwork(&database, &collector);
  return collector.lines;
}

} // namespace app
