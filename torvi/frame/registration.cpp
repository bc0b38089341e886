#include "torvi/frame/registration.h"

#include "torvi/centerline/kind.h"
#include "torvi/centermark/kind.h"
#include "torvi/core/action_body.h"
#include "torvi/edgeextension/kind.h"
#include "torvi/integration/query_overrule_curve.h"
#include "torvi/lifecycle/clone_reactors.h"
#include "torvi/lifecycle/drawing_reactors.h"
#include "torvi/lifecycle/updates.h"
#include "torvi/pattern/auto_fill_reactor.h"
#include "torvi/pattern/dependency_extension.h"
#include "torvi/pattern/kind.h"

namespace {

// A kind that derives from another comes after it.
constexpr const torvi::Kind* kKinds[] = {
    &torvi::kCenterMarkKind,
    &torvi::kCenterLineKind,
    &torvi::kEdgeExtensionKind,
    &torvi::kCenterMarkPatternKind,
};

using Step = void (*)();

struct ClassRow {
  Step add = nullptr;
  Step remove = nullptr;
};
template<class Class> constexpr ClassRow rowOf() { return {Class::rxInit, torvi::deleteClassByName<Class>}; }

// Of these the bodies of all kinds derive; parents come before their children.
constexpr ClassRow kBaseClasses[] = {rowOf<ZnDbTorviActionBodyBase>(), rowOf<ZnDbTorviActionBody>()};
constexpr ClassRow kOtherClasses[] = {rowOf<ZnRxQueryXOverruleTorviCurve>(),
                                      rowOf<ZnDbDatabaseReactor_Torvi>(),
                                      rowOf<ZnDbCenterMarkPatternAssocDependencyPE>()};

void addClasses() {
  for (const ClassRow& row : kBaseClasses) row.add();
  for (const torvi::Kind* kind : kKinds) {
    kind->registerClass();
    torvi::registerKind(*kind);
  }
  for (const ClassRow& row : kOtherClasses) row.add();
  znrxBuildClassHierarchy();
}

// Classes go before those from which they derive.
void removeClasses() {
  torvi::forgetKinds();
  for (size_t i = std::size(kOtherClasses); i-- > 0;) kOtherClasses[i].remove();
  for (const bool derived : {true, false})
    for (const torvi::Kind* kind : kKinds)
      if (kind->derivesFromAnotherKind == derived) kind->deleteClass();
  for (size_t i = std::size(kBaseClasses); i-- > 0;) kBaseClasses[i].remove();
  znrxBuildClassHierarchy();
}

struct ReactorRow {
  Step attach = nullptr;
  Step detach = nullptr;
};
template<class Reactor> constexpr ReactorRow reactorOf() { return {Reactor::attach, Reactor::detach}; }
constexpr ReactorRow kReactors[] = {
    reactorOf<ZnRxVariableAutoCMPReactor>(),
    reactorOf<ZnRxEventReactor_Torvi>(),
    reactorOf<ZnRxEventReactor_DeepCloneCopy>(),
    reactorOf<ZnRxEventReactor_TorviDeepCloneExplode>(),
};

// Added and removed in the same order.
struct OverruleRow {
  ZnRxClass* (*target)() = nullptr;
  ZnRxOverrule* (*overrule)() = nullptr;
  bool atEnd = false;
};
template<class Overrule> ZnRxOverrule* instanceOf() { return Overrule::instance(); }
constexpr OverruleRow kOverrules[] = {
    {ZnDbLine::desc, instanceOf<ZnRxQueryXOverruleTorviCurve>, false},
    {ZnDbArc::desc, instanceOf<ZnRxQueryXOverruleTorviCurve>, false},
};

} // namespace

void registerTorvi() {
  addClasses();
  for (const ReactorRow& row : kReactors) row.attach();
  for (const OverruleRow& row : kOverrules)
    ZnRxOverrule::addOverrule(row.target(), row.overrule(), row.atEnd);
}

// Classes go last: reactors and overrules are objects of them, or are kept by them.
void withdrawTorvi() {
  for (size_t i = std::size(kReactors); i-- > 0;) kReactors[i].detach();
  for (const OverruleRow& row : kOverrules) ZnRxOverrule::removeOverrule(row.target(), row.overrule());
  removeClasses();
}
