// Which actions are under evaluation now. Evaluations nest: the frames stand on the stack of the callers.
#pragma once

#include "quorl/db/core/object_id.h"

class ZnDbAssocAction;
class ZnDbAssocEvaluationCallback;

class ZnDbAssocEvaluationFrame {
public:
  // Holds the action and its body for everybody within the evaluation to read and write.
  ZnDbAssocEvaluationFrame(ZnDbAssocAction* action, ZnDbAssocEvaluationCallback* callback);
  ~ZnDbAssocEvaluationFrame();
  ZnDbAssocEvaluationFrame(const ZnDbAssocEvaluationFrame&) = delete;
  ZnDbAssocEvaluationFrame& operator=(const ZnDbAssocEvaluationFrame&) = delete;

  ZnDbAssocAction* action() const { return action_; }
  ZnDbAssocEvaluationCallback* callback() const { return callback_; }

  // The innermost frame in the drawing, or of the action; null without one.
  static const ZnDbAssocEvaluationFrame* current(const ZnDbDatabase* database);
  static const ZnDbAssocEvaluationFrame* of(const ZnDbAssocAction* action);

private:
  ZnDbAssocAction* action_;
  ZnDbAssocEvaluationCallback* callback_;
  ZnDbSlot* bodySlot_;
  bool actionWasHeld_, bodyWasHeld_;
  const ZnDbAssocEvaluationFrame* outer_;
};

// The action under evaluation now in the drawing, or null.
ZnDbAssocAction* zndbAssocGetCurrentlyEvaluatedActionPointer(const ZnDbDatabase* database);
