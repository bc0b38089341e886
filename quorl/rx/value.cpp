#include "quorl/rx/value.h"

namespace {
struct Varies {
  bool operator==(const Varies&) const = default;
};
ZnString textOf(const Varies&) { return L"*varies*"; }
} // namespace

const ZnRxValue& ZnRxValue::varies() {
  static const auto* type = new ZnRxNonBlittableType<Varies>(L"ZnRxVaries", nullptr, textOf);
  static const Varies instance;
  static const auto* value = new ZnRxValue(*type, &instance);
  return *value;
}

ZnRxValue::ZnRxValue(const ZnRxValueType& type, const void* instance)
    : type_(&type) {
  if (!isLocal()) heap_ = ::operator new(type.size());
  type.copyConstruct(const_cast<void*>(address()), instance);
}

ZnRxValue::ZnRxValue(const ZnRxValue& other) {
  if (!other.type_) return;
  new (this) ZnRxValue(*other.type_, other.address());
}

ZnRxValue& ZnRxValue::operator=(const ZnRxValue& other) {
  if (this == &other) return *this;
  clear();
  if (other.type_) new (this) ZnRxValue(*other.type_, other.address());
  return *this;
}

void ZnRxValue::clear() {
  if (!type_) return;
  type_->destroy(const_cast<void*>(address()));
  if (!isLocal()) ::operator delete(heap_);
  type_ = nullptr;
}

ZnString ZnRxValue::toString() const { return type_ ? type_->toString(address()) : ZnString(); }

bool operator==(const ZnRxValue& a, const ZnRxValue& b) {
  if (a.type_ != b.type_) return false;
  return !a.type_ || a.type_->equals(a.address(), b.address());
}
