// The callback of an evaluation outside the network: the host asks for one, and nobody listens.
#pragma once

#include "torvi/host/association.h"

class CTempCallBack : public ZnDbAssocEvaluationCallback {
public:
  void beginEvaluation(ZnDbAssocAction*) override {}
  void endEvaluation(ZnDbAssocAction*) override {}
  void reportFailure(ZnDbAssocAction*, Quorl::ErrorStatus, ZnDbObjectId, ZnDbObject*, void*) override {}
  void beginUse(ZnDbAssocAction*, ZnDbObjectId, bool, bool, ZnDbObject*&) override {}
  void endUse(ZnDbAssocAction*, ZnDbObjectId, ZnDbObject*) override {}
};
