#include "torvi/frame/class_table.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/builder.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/object_pointer.h"

namespace {

// Parents come before their children.
using Registration = void (*)();
constexpr Registration kRegistrations[] = {
    ZnDbTorviActionBodyBase::rxInit,
    ZnDbTorviActionBody::rxInit,
    ZnDbCenterMarkActionBody::rxInit,
};

// Children go before their parents.
struct ClassToDelete {
  const wchar_t* name;
  ZnRxClass** stored;
};
constexpr ClassToDelete kDeletions[] = {
    {L"ZnDbCenterMarkActionBody", &ZnDbCenterMarkActionBody::gpDesc},
    {L"ZnDbTorviActionBody", &ZnDbTorviActionBody::gpDesc},
    {L"ZnDbTorviActionBodyBase", &ZnDbTorviActionBodyBase::gpDesc},
};

template<class Wrapper> ZnDbTorviObjectWrapper* makeWrapper(ZnDbObjectId centerObject) {
  return new Wrapper(centerObject);
}

struct WrapperKind {
  ZnDbTorviType kind;
  TorviWrapperMaker maker;
};
constexpr WrapperKind kWrappers[] = {
    {ZnDbCenterMarkObjectWrapper::wrapperCenterType(), makeWrapper<ZnDbCenterMarkObjectWrapper>},
};

// Where builders keep the class that they look up by name.
constexpr ZnRxClass** kBuilderClasses[] = {
    &ZnCenterMarkBuilder::gpDesc,
};

} // namespace

void registerTorviClasses() {
  for (const Registration registration : kRegistrations) registration();
  for (const WrapperKind& row : kWrappers) registerTorviWrapper(row.kind, row.maker);
  znrxBuildClassHierarchy();
}

void deleteTorviClasses() {
  for (const WrapperKind& row : kWrappers) registerTorviWrapper(row.kind, nullptr);
  for (ZnRxClass** stored : kBuilderClasses) *stored = nullptr;
  for (const ClassToDelete& row : kDeletions) {
    if (ZnRxClass* cls = znrxFindZnRxClass(row.name)) deleteZnRxClass(cls);
    *row.stored = nullptr;
  }
  znrxBuildClassHierarchy();
}
