#include "torvi/frame/class_table.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/builder.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/object_pointer.h"
#include "torvi/frame/registration_step.h"

namespace {

// Parents come before their children.
constexpr TorviStep kRegistrations[] = {
    ZnDbTorviActionBodyBase::rxInit,
    ZnDbTorviActionBody::rxInit,
    ZnDbCenterMarkActionBody::rxInit,
};

// What stands under the name goes, whoever made it.
template<class Class> void deleteByName() {
  if (ZnRxClass* cls = znrxFindZnRxClass(Class::className())) deleteZnRxClass(cls);
  Class::gpDesc = nullptr;
}

// Children go before their parents.
constexpr TorviStep kDeletions[] = {
    deleteByName<ZnDbCenterMarkActionBody>,
    deleteByName<ZnDbTorviActionBody>,
    deleteByName<ZnDbTorviActionBodyBase>,
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
  runTorviSteps(kRegistrations);
  for (const WrapperKind& row : kWrappers) registerTorviWrapper(row.kind, row.maker);
  znrxBuildClassHierarchy();
}

void deleteTorviClasses() {
  for (const WrapperKind& row : kWrappers) registerTorviWrapper(row.kind, nullptr);
  for (ZnRxClass** stored : kBuilderClasses) *stored = nullptr;
  runTorviSteps(kDeletions);
  znrxBuildClassHierarchy();
}
