// A holder for one value of any value type.
#pragma once

#include <cstddef>
#include <type_traits>

#include "quorl/rx/value_type.h"

class ZnRxValue {
public:
  ZnRxValue() {} // empty: no type, no value
  template<class T>
  requires(!std::is_same_v<T, ZnRxValue> && !std::is_array_v<T> && !std::is_pointer_v<T>)
      ZnRxValue(const T& value)
      : ZnRxValue(ZnRxValueType::Desc<T>::value(), &value) {}
  ZnRxValue(const wchar_t* text)
      : ZnRxValue(ZnString(text)) {}
  // A copy of the instance, which is of that type.
  ZnRxValue(const ZnRxValueType& type, const void* instance);
  ZnRxValue(const ZnRxValue& other);
  ZnRxValue& operator=(const ZnRxValue& other);
  ~ZnRxValue() { clear(); }

  // Stands for "differs from object to object"; equal to itself alone.
  static const ZnRxValue& varies();
  bool isVaries() const { return *this == varies(); }

  bool isEmpty() const { return type_ == nullptr; }
  // Null for the empty value.
  const ZnRxValueType* type() const { return type_; }
  const void* address() const { return isLocal() ? local_ : heap_; }
  ZnString toString() const; // empty for the empty value
  void clear();

  // Same type and equal values. Numbers of different types are different.
  friend bool operator==(const ZnRxValue& a, const ZnRxValue& b);

private:
  static constexpr size_t kLocalSize = 3 * sizeof(double); // points and everything smaller
  bool isLocal() const { return !type_ || type_->size() <= kLocalSize; }

  const ZnRxValueType* type_ = nullptr;
  union {
    alignas(std::max_align_t) std::byte local_[kLocalSize];
    void* heap_;
  };
};

// The value as a T, or null when it is of another type.
template<class T> const T* znrxValueCast(const ZnRxValue* value) {
  if (!value || value->type() != &ZnRxValueType::Desc<T>::value()) return nullptr;
  return static_cast<const T*>(value->address());
}
