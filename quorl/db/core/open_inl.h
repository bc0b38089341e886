// Definitions of the templates of open.h; object.h brings them in.
#pragma once

template<class T>
Quorl::ErrorStatus zndbOpenObject(T*& object, ZnDbObjectId id, ZnDbOpenMode mode, bool openErased) {
  object = nullptr;
  if (!id.isNull() && id.isValid() && !id.isDerivedFrom(T::desc())) return Quorl::eWrongObjectClass;
  ZnDbObject* any = nullptr;
  const Quorl::ErrorStatus status = zndbOpenObject(any, id, mode, openErased);
  if (status == Quorl::eOk) object = static_cast<T*>(any);
  return status;
}

template<class T> Quorl::ErrorStatus ZnDbHolder<T>::open(ZnDbObjectId id, bool openErased) {
  close();
  ZnDbObject* any = nullptr;
  status_ = accessZnDbObjectForRead(any, id, T::desc(), openErased);
  object_ = static_cast<T*>(any);
  return status_;
}

template<class T> Quorl::ErrorStatus ZnDbHolder<T>::upgrade(bool evenIfLocked) {
  if (status_ != Quorl::eOk || writing_ || owned_) return status_;
  ZnDbObject* any = nullptr;
  const Quorl::ErrorStatus status =
      accessZnDbObjectForWrite(any, object_->objectId(), nullptr, true, evenIfLocked, 1);
  writing_ = status == Quorl::eOk;
  return status;
}

template<class T>
Quorl::ErrorStatus ZnDbHolder<T>::openForWrite(ZnDbObjectId id, bool openErased, bool evenIfLocked) {
  if (open(id, openErased) != Quorl::eOk) return status_;
  const Quorl::ErrorStatus status = upgrade(evenIfLocked);
  if (status != Quorl::eOk) {
    close();
    status_ = status;
  }
  return status;
}

template<class T> void ZnDbHolder<T>::acquire(T* object) {
  close();
  object_ = object;
  owned_ = object != nullptr;
  status_ = object ? Quorl::eOk : Quorl::eNullObjectPointer;
}

template<class T> T* ZnDbHolder<T>::release() {
  T* object = object_;
  if (!owned_) close();
  object_ = nullptr;
  owned_ = false;
  status_ = Quorl::eNotOpenedYet;
  return object;
}

template<class T> void ZnDbHolder<T>::close() {
  if (object_) {
    if (owned_) {
      if (object_->objectId().isNull())
        delete object_;
      else
        object_->close();
    } else {
      if (writing_) revertZnDbObjectFromWrite(object_);
      endZnDbObjectRead(object_);
    }
  }
  object_ = nullptr;
  writing_ = owned_ = false;
  status_ = Quorl::eNotOpenedYet;
}
