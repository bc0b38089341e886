#include "quorl/db/core/field_walks.h"

#include "quorl/db/core/database.h"

using Quorl::ErrorStatus;

// A hard pointer keeps its target alive, so an erased one is missing; what others name may come back.
ErrorStatus ZnDbFieldsVisit::judge(ZnReferenceKind kind, ZnDbObjectId id, const ZnDbIdRule& rule) const {
  if (!database_ || !rule.cls) return Quorl::eOk;
  if (id.isNull()) return rule.instead ? Quorl::eNotFound : Quorl::eOk;
  const bool there = kind == ZnReferenceKind::kHardPointer ? !id.isErased() : id.isValid();
  return there && id.database() == database_ && id.isDerivedFrom(rule.cls) ? Quorl::eOk : Quorl::eNotFound;
}

void ZnDbFieldsVisit::id(ZnReferenceKind kind, int code, const wchar_t* name, ZnDbObjectId& id,
                         const ZnDbIdRule& rule) {
  ZnDbObjectId candidate = id;
  const ZnDbField seen{code, name, judge(kind, id, rule), entry_, rule.cls, kind};
  switch (visitor_.visit(seen, candidate)) {
  case ZnDbFieldVisitor::kKeep:
    return;
  case ZnDbFieldVisitor::kRepair:
    id = rule.instead && database_ ? (database_->*rule.instead)() : ZnDbObjectId();
    return;
  case ZnDbFieldVisitor::kTake:
    const bool isOurs = candidate.isNull() || !database_ || candidate.database() == database_;
    const bool fits = isOurs && judge(kind, candidate, rule) == Quorl::eOk;
    if (fits) id = candidate;
    visitor_.taken(fits ? Quorl::eOk : Quorl::eInvalidInput);
  }
}
