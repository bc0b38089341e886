// The holder with which evaluations open objects: whoever runs the evaluation may put a substitute in place,
// as a drag does, and the code works on that without noticing.
#pragma once

#include "quorl/assoc/evaluation_callback.h"
#include "quorl/assoc/evaluation_frame.h"
#include "quorl/db/core/object.h"

// The part that does not depend on the class.
class ZnDbEvalPointerBase {
public:
  ZnDbEvalPointerBase(const ZnDbEvalPointerBase&) = delete;
  ZnDbEvalPointerBase& operator=(const ZnDbEvalPointerBase&) = delete;

  // eOk, or why there is no object; eWrongObjectClass also for a substitute of another class.
  Quorl::ErrorStatus status() const { return status_; }
  bool isOpen() const { return status_ == Quorl::eOk; }
  // Tells the callback of the end of use, or reverts and closes the database object. Twice does nothing.
  void close();

protected:
  ZnDbEvalPointerBase() = default;
  ~ZnDbEvalPointerBase() { close(); }
  void open(ZnDbObjectId id, const ZnRxClass* cls, bool forWrite, bool onLockedLayer);
  ZnDbObject* object_ = nullptr;

private:
  void openInDatabase(const ZnRxClass* cls, bool forWrite, bool onLockedLayer);

  ZnDbObjectId id_;
  Quorl::ErrorStatus status_ = Quorl::eNotOpenedYet;
  const ZnDbAssocEvaluationFrame* frame_ = nullptr;
  bool substituted_ = false, writing_ = false;
};

// A scope inside one evaluation: it must not outlive it.
template<class T> class ZnDbEvalPointer : public ZnDbEvalPointerBase {
public:
  ZnDbEvalPointer() = default;
  explicit ZnDbEvalPointer(ZnDbObjectId id, bool forWrite = false, bool onLockedLayer = false) {
    open(id, forWrite, onLockedLayer);
  }
  Quorl::ErrorStatus open(ZnDbObjectId id, bool forWrite = false, bool onLockedLayer = false) {
    ZnDbEvalPointerBase::open(id, T::desc(), forWrite, onLockedLayer);
    return status();
  }
  T* object() const { return static_cast<T*>(object_); }
  T* operator->() const { return object(); }
  T& operator*() const { return *object(); }
};
