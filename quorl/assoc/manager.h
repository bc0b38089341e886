// Evaluates what is marked in a drawing.
#pragma once

#include <cstdint>

#include "quorl/base/error_status.h"

class ZnDbAssocEvaluationCallback;
class ZnDbAssocNetwork;
class ZnDbDatabase;

class ZnDbAssocManager {
public:
  // Visits the marked actions and those that their evaluation marks, and no others: an action that reads what
  // another writes comes after it. Actions that wait for each other get the failed status, each reported with
  // eCyclicDependency, and the rest goes on. The callback may be null; flags is kept for kinds of evaluation
  // and is 0. eNoDatabase for null, eNothingToDo within an evaluation of the drawing, whose end takes care of
  // what is marked meanwhile; else eOk, or eCyclicDependency when there was a cycle.
  static Quorl::ErrorStatus evaluateTopLevelNetwork(ZnDbDatabase* database,
                                                    ZnDbAssocEvaluationCallback* callback = nullptr,
                                                    std::uint32_t flags = 0);
  // The same for the actions below one network.
  static Quorl::ErrorStatus evaluateNetwork(ZnDbAssocNetwork* network,
                                            ZnDbAssocEvaluationCallback* callback = nullptr);
};
