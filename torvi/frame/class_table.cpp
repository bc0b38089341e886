#include "torvi/frame/class_table.h"

#include "torvi/centerline/action_body.h"
#include "torvi/centerline/builder.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/centermark/action_body.h"
#include "torvi/centermark/builder.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/object_pointer.h"
#include "torvi/edgeextension/action_body.h"
#include "torvi/edgeextension/builder.h"
#include "torvi/edgeextension/object_wrapper.h"
#include "torvi/frame/registration_step.h"
#include "torvi/integration/query_overrule_curve.h"
#include "torvi/pattern/action_body.h"
#include "torvi/pattern/builder.h"
#include "torvi/pattern/dependency_extension.h"
#include "torvi/pattern/object_wrapper.h"

namespace {

// Parents come before their children.
constexpr TorviStep kRegistrations[] = {
    ZnDbTorviActionBodyBase::rxInit,      ZnDbTorviActionBody::rxInit,
    ZnDbCenterMarkActionBody::rxInit,     ZnDbCenterLineActionBody::rxInit,
    ZnDbEdgeExtensionActionBody::rxInit,  ZnDbCenterMarkPatternActionBody::rxInit,
    ZnRxQueryXOverruleTorviCurve::rxInit, ZnDbCenterMarkPatternAssocDependencyPE::rxInit,
};

// What stands under the name goes, whoever made it.
template<class Class> void deleteByName() {
  if (ZnRxClass* cls = znrxFindZnRxClass(Class::className())) deleteZnRxClass(cls);
  Class::gpDesc = nullptr;
}

// Children go before their parents.
constexpr TorviStep kDeletions[] = {
    deleteByName<ZnDbCenterMarkPatternAssocDependencyPE>,
    deleteByName<ZnRxQueryXOverruleTorviCurve>,
    deleteByName<ZnDbCenterMarkPatternActionBody>,
    deleteByName<ZnDbCenterMarkActionBody>,
    deleteByName<ZnDbCenterLineActionBody>,
    deleteByName<ZnDbEdgeExtensionActionBody>,
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
    {ZnDbCenterLineObjectWrapper::wrapperCenterType(), makeWrapper<ZnDbCenterLineObjectWrapper>},
    {ZnDbEdgeExtensionObjectWrapper::wrapperCenterType(), makeWrapper<ZnDbEdgeExtensionObjectWrapper>},
    {ZnDbCenterMarkPatternObjectWrapper::wrapperCenterType(),
     makeWrapper<ZnDbCenterMarkPatternObjectWrapper>},
};

// Where builders keep the class that they look up by name.
constexpr ZnRxClass** kBuilderClasses[] = {
    &ZnCenterMarkBuilder::gpDesc,
    &ZnCenterLineBuilder::gpDesc,
    &ZnEdgeExtensionBuilder::gpDesc,
    &ZnCenterMarkPatternBuilder::gpDesc,
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
