// What an evaluation tells and asks the one who started it.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

class ZnDbAssocAction;
class ZnDbAssocNetwork;
class ZnDbObject;

// What an evaluation does with the actions that are to be evaluated.
enum ZnDbAssocEvaluationMode : int {
  kEvaluateActions = 0,
  // Nothing is evaluated or written: begin and end of the evaluation are told for each action that would be
  // first in line now, in order, and all stay marked. What an evaluation would mark in turn is not known.
  kTellActionsOnly = 1,
};

class ZnDbAssocEvaluationCallback {
public:
  virtual ~ZnDbAssocEvaluationCallback() = default;

  // Asked as an evaluation of the drawing or of a network begins.
  virtual int evaluationMode() const { return kEvaluateActions; }

  virtual void beginEvaluation(ZnDbAssocAction* action) = 0;
  virtual void endEvaluation(ZnDbAssocAction* action) = 0;
  // The object is the one that failed, by id or pointer, or null where it is the action itself.
  virtual void reportFailure(ZnDbAssocAction* action, Quorl::ErrorStatus status, ZnDbObjectId objectId,
                             ZnDbObject* object, void* extra) = 0;
  // Before the action uses an object. A substitute that is given is used instead of the database object; it
  // stays the callback's. isInput tells that the object is only looked at.
  virtual void beginUse(ZnDbAssocAction* action, ZnDbObjectId objectId, bool isInput, bool isWrite,
                        ZnDbObject*& substitute) = 0;
  // After it, with the object that was used; null when none could be opened.
  virtual void endUse(ZnDbAssocAction* action, ZnDbObjectId objectId, ZnDbObject* object) = 0;

  // An evaluation of the whole drawing is about to visit what is marked.
  virtual void networkEvaluationBegins(ZnDbAssocNetwork* /*topLevel*/) {}
  // 0 no drag, 1 the first and 2 a further sample of one, 3 the last, which counts as a real evaluation.
  virtual int draggingState() const { return 0; }
  virtual void networkEvaluationEnded(ZnDbAssocNetwork* /*topLevel*/) {}
  virtual void actionErased(ZnDbAssocAction* /*action*/) {}
};
