// Makes the wrapper of the right kind for a center object and owns it.
#pragma once

#include <memory>

#include "torvi/core/object_wrapper.h"

// A new wrapper of the object's own kind, owned by the caller; null for what is no center object.
TORVI_EXPORT ZnDbTorviObjectWrapper* makeTorviWrapper(ZnDbObjectId centerObject);

// Status eOk: holds a wrapper that is a T. eInvalidInput: no center object. eWrongWrapperKind: one of another
// kind.
template<class T> class ZnDbTorviObjectPointer {
public:
  explicit ZnDbTorviObjectPointer(ZnDbObjectId centerObject)
      : centerObject_(centerObject) {
    std::unique_ptr<ZnDbTorviObjectWrapper> made(makeTorviWrapper(centerObject));
    if (!made) {
      status_ = Quorl::eInvalidInput;
      return;
    }
    wrapper_.reset(dynamic_cast<T*>(made.get()));
    if (!wrapper_) {
      status_ = Quorl::eWrongWrapperKind;
      return;
    }
    static_cast<void>(made.release());
    status_ = Quorl::eOk;
  }
  virtual ~ZnDbTorviObjectPointer() = default;

  Quorl::ErrorStatus openStatus() const { return status_; }
  ZnDbObjectId centerObject() const { return centerObject_; }
  T* object() const { return wrapper_.get(); }
  T* operator->() const { return wrapper_.get(); }
  T& operator*() const { return *wrapper_; }

private:
  ZnDbObjectId centerObject_;
  std::unique_ptr<T> wrapper_;
  Quorl::ErrorStatus status_ = Quorl::eNotOpenedYet;
};
