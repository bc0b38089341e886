#include "quorl/rx/value_type.h"

#include "quorl/base/assert.h"
#include "quorl/rx/real_format.h"

ZNRX_DEFINE_ABSTRACT(ZnRxValueType, ZnRxClass)

ZnRxValueType::ZnRxValueType(const wchar_t* name, const wchar_t* parentName, size_t size,
                             ZnRxMemberBuild buildMembers)
    : size_(size) {
  setMemberBuilder(buildMembers);
  const bool nameWasFree = adopt(this, name, parentName);
  QUORL_ASSERT(nameWasFree);
}

ZnRxValueType::~ZnRxValueType() = default;

namespace {

ZnString textOf(const bool& value) { return value ? L"true" : L"false"; }
ZnString textOf(const short& value) { return Quorl::shortestReal(value); }
ZnString textOf(const int& value) { return Quorl::shortestReal(value); }
ZnString textOf(const double& value) { return Quorl::shortestReal(value); }
ZnString textOf(const ZnString& value) { return value; }

} // namespace

ZNRX_DEFINE_VALUE_TYPE(bool, L"bool", nullptr, textOf, nullptr)
ZNRX_DEFINE_VALUE_TYPE(short, L"int16", nullptr, textOf, nullptr)
ZNRX_DEFINE_VALUE_TYPE(int, L"int32", nullptr, textOf, nullptr)
ZNRX_DEFINE_VALUE_TYPE(double, L"double", nullptr, textOf, nullptr)
ZNRX_DEFINE_VALUE_TYPE(ZnString, L"ZnString", nullptr, textOf, nullptr)
