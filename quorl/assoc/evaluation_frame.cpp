#include "quorl/assoc/evaluation_frame.h"

#include <utility>

#include "quorl/assoc/action_body.h"

namespace {

const ZnDbAssocEvaluationFrame* innermost = nullptr;

// What changed while the object was merely held is told once, now.
void tellChanges(ZnDbStub* stub) {
  ZnDbObject* object = nullptr;
  if (stub && accessZnDbObjectForWrite(object, ZnDbObjectId(stub), nullptr, true, true) == Quorl::eOk)
    revertZnDbObjectFromWrite(object);
}

} // namespace

ZnDbAssocEvaluationFrame::ZnDbAssocEvaluationFrame(ZnDbAssocAction* action,
                                                   ZnDbAssocEvaluationCallback* callback)
    : action_(action)
    , callback_(callback)
    , bodyStub_(action->actionBody().isValid() ? action->actionBody().stub() : nullptr)
    , actionWasHeld_(false)
    , bodyWasHeld_(false)
    , outer_(std::exchange(innermost, this)) {
  if (ZnDbStub* stub = action->objectId().stub()) actionWasHeld_ = std::exchange(stub->evaluating, true);
  if (bodyStub_) bodyWasHeld_ = std::exchange(bodyStub_->evaluating, true);
}

ZnDbAssocEvaluationFrame::~ZnDbAssocEvaluationFrame() {
  ZnDbStub* stub = action_->objectId().stub();
  tellChanges(bodyStub_);
  tellChanges(stub);
  if (bodyStub_) bodyStub_->evaluating = bodyWasHeld_;
  if (stub) stub->evaluating = actionWasHeld_;
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
