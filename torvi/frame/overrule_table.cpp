#include "torvi/frame/overrule_table.h"

#include "torvi/frame/registration_step.h"
#include "torvi/host/database.h"
#include "torvi/integration/query_overrule_curve.h"

namespace {

// Added and removed in the same order. What an overrule hands out is made just before it is added and goes
// just after it was removed.
struct OverruleRow {
  ZnRxClass* (*target)() = nullptr;
  ZnRxOverrule* (*overrule)() = nullptr;
  bool atEnd = false;
  TorviStep beforeAdding = nullptr;
  TorviStep afterRemoving = nullptr;
};

template<class Overrule> ZnRxOverrule* instanceOf() { return Overrule::instance(); }

constexpr OverruleRow kOverrules[] = {
    {ZnDbLine::desc, instanceOf<ZnRxQueryXOverruleTorviCurve>, false},
    {ZnDbArc::desc, instanceOf<ZnRxQueryXOverruleTorviCurve>, false},
};

} // namespace

void addTorviOverrules() {
  for (const OverruleRow& row : kOverrules) {
    if (row.beforeAdding) row.beforeAdding();
    ZnRxOverrule::addOverrule(row.target(), row.overrule(), row.atEnd);
  }
}

void removeTorviOverrules() {
  for (const OverruleRow& row : kOverrules) {
    ZnRxOverrule::removeOverrule(row.target(), row.overrule());
    if (row.afterRemoving) row.afterRemoving();
  }
}
