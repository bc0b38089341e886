#include "quorl/assoc/evaluation_frame.h"

#include <utility>

#include "quorl/assoc/action_body.h"

namespace {

const ZnDbAssocEvaluationFrame* innermost = nullptr;

// What changed while the object was merely held is told once, now.
void tellChanges(ZnDbSlot* slot) {
  ZnDbObject* object = nullptr;
  if (slot && accessZnDbObjectForWrite(object, ZnDbObjectId(slot), nullptr, true, true) == Quorl::eOk)
    revertZnDbObjectFromWrite(object);
}

} // namespace

ZnDbAssocEvaluationFrame::ZnDbAssocEvaluationFrame(ZnDbAssocAction* action,
                                                   ZnDbAssocEvaluationCallback* callback)
    : action_(action)
    , callback_(callback)
    , bodySlot_(action->actionBody().isValid() ? action->actionBody().slot() : nullptr)
    , actionWasHeld_(false)
    , bodyWasHeld_(false)
    , outer_(std::exchange(innermost, this)) {
  if (ZnDbSlot* slot = action->objectId().slot()) actionWasHeld_ = std::exchange(slot->evaluating, true);
  if (bodySlot_) bodyWasHeld_ = std::exchange(bodySlot_->evaluating, true);
}

ZnDbAssocEvaluationFrame::~ZnDbAssocEvaluationFrame() {
  ZnDbSlot* slot = action_->objectId().slot();
  tellChanges(bodySlot_);
  tellChanges(slot);
  if (bodySlot_) bodySlot_->evaluating = bodyWasHeld_;
  if (slot) slot->evaluating = actionWasHeld_;
  innermost = outer_;
}

const ZnDbAssocEvaluationFrame* ZnDbAssocEvaluationFrame::current(const ZnDbDatabase* database) {
  const ZnDbAssocEvaluationFrame* frame = innermost;
  while (frame && frame->action_->database() != database) frame = frame->outer_;
  return frame;
}

const ZnDbAssocEvaluationFrame* ZnDbAssocEvaluationFrame::of(const ZnDbAssocAction* action) {
  const ZnDbAssocEvaluationFrame* frame = innermost;
  while (frame && frame->action_ != action) frame = frame->outer_;
  return frame;
}

ZnDbAssocAction* zndbAssocGetCurrentlyEvaluatedActionPointer(const ZnDbDatabase* database) {
  const ZnDbAssocEvaluationFrame* frame = ZnDbAssocEvaluationFrame::current(database);
  return frame ? frame->action() : nullptr;
}
