#include "quorl/rx/overrule.h"

#include <algorithm>

ZNRX_DEFINE_ABSTRACT(ZnRxOverruleBase, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnRxOverrule, ZnRxOverruleBase)

namespace {
bool overruling = true;
}

Quorl::ErrorStatus ZnRxOverrule::addOverrule(ZnRxClass* target, ZnRxOverrule* overrule, bool atEnd) {
  if (!target || !overrule) return Quorl::eInvalidInput;
  auto& list = target->overrules_;
  if (std::find(list.begin(), list.end(), overrule) != list.end()) return Quorl::eDuplicateKey;
  list.insert(atEnd ? list.end() : list.begin(), overrule);
  refreshMarks();
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxOverrule::removeOverrule(ZnRxClass* target, ZnRxOverrule* overrule) {
  if (!target || !overrule) return Quorl::eInvalidInput;
  auto& list = target->overrules_;
  const auto found = std::find(list.begin(), list.end(), overrule);
  if (found == list.end()) return Quorl::eKeyNotFound;
  list.erase(found);
  refreshMarks();
  return Quorl::eOk;
}

void ZnRxOverrule::setIsOverruling(bool on) { overruling = on; }

bool ZnRxOverrule::isOverruling() { return overruling; }

// Adding is rare and asking is not: every class carries the answer for itself and its ancestors.
void ZnRxOverrule::refreshMarks() {
  for (ZnRxClass* cls : znrxClasses()) {
    cls->overruled_ = false;
    for (const ZnRxClass* up = cls; up && !cls->overruled_; up = up->parent())
      cls->overruled_ = !up->overrules().empty();
  }
}
