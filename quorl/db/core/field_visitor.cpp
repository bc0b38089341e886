#include "quorl/db/core/field_visitor.h"

#include <string_view>

#include "quorl/db/core/object.h"

namespace {

template<class T> class Setter : public ZnDbFieldVisitor {
public:
  Setter(std::wstring_view name, const T& value)
      : name_(name)
      , value_(value) {}
  Quorl::ErrorStatus status() const { return status_; }
  const T& before() const { return before_; }

  using ZnDbFieldVisitor::visit;
  Wish visit(const ZnDbField& field, T& candidate) override {
    if (status_ != Quorl::eKeyNotFound || name_ != field.name) return kKeep;
    before_ = std::exchange(candidate, value_);
    return kTake;
  }
  void taken(Quorl::ErrorStatus status) override { status_ = status; }

private:
  std::wstring_view name_;
  const T& value_;
  T before_{};
  Quorl::ErrorStatus status_ = Quorl::eKeyNotFound;
};

} // namespace

// Links follow from the fields, so they are removed before and entered after; in between the object is
// asked whether it may stand like that.
template<class T> Quorl::ErrorStatus zndbSetField(ZnDbObject& object, const wchar_t* name, const T& value) {
  object.assertWriteEnabled();
  Setter<T> setter(name, value);
  object.detachLinks();
  object.walkFields(setter);
  Quorl::ErrorStatus status = setter.status();
  if (status == Quorl::eOk && object.database()) status = object.judgePlace(*object.database());
  if (status != Quorl::eOk && setter.status() == Quorl::eOk) {
    Setter<T> back(name, setter.before());
    object.walkFields(back);
  }
  object.attachLinks();
  return status;
}

template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const bool&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const std::int64_t&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const double&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnString&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGePoint3d&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGeVector3d&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGeMatrix3d&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnCmColor&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnCmTransparency&);
template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnDbObjectId&);
