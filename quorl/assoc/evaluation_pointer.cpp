#include "quorl/assoc/evaluation_pointer.h"

#include <utility>

void ZnDbEvalPointerBase::open(ZnDbObjectId id, const ZnRxClass* cls, bool forWrite, bool onLockedLayer) {
  close();
  id_ = id;
  frame_ = ZnDbAssocEvaluationFrame::current(id.database());
  if (frame_ && !frame_->callback()) frame_ = nullptr;
  if (frame_) {
    frame_->callback()->beginUse(frame_->action(), id, !forWrite, forWrite, object_);
    substituted_ = object_ != nullptr;
  }
  if (!substituted_) return openInDatabase(cls, forWrite, onLockedLayer);
  status_ = object_->isKindOf(cls) ? Quorl::eOk : Quorl::eWrongObjectClass;
}

void ZnDbEvalPointerBase::openInDatabase(const ZnRxClass* cls, bool forWrite, bool onLockedLayer) {
  status_ = accessZnDbObjectForRead(object_, id_, cls);
  if (status_ != Quorl::eOk || !forWrite) return;
  ZnDbObject* writable = nullptr;
  status_ = accessZnDbObjectForWrite(writable, id_, nullptr, false, onLockedLayer, 1);
  writing_ = status_ == Quorl::eOk;
  if (!writing_) endZnDbObjectRead(std::exchange(object_, nullptr));
}

void ZnDbEvalPointerBase::close() {
  ZnDbObject* const used = object_;
  if (used && !substituted_) {
    if (writing_) revertZnDbObjectFromWrite(used);
    endZnDbObjectRead(used);
  }
  const ZnDbAssocEvaluationFrame* const frame = std::exchange(frame_, nullptr);
  object_ = nullptr;
  substituted_ = writing_ = false;
  status_ = Quorl::eNotOpenedYet;
  if (frame) frame->callback()->endUse(frame->action(), id_, used);
}
