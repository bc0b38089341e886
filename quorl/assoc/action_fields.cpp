// The fields of an action, and what is made again from them.
#include "quorl/assoc/action.h"

#include "quorl/assoc/action_body.h"
#include "quorl/assoc/action_param.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/fields.h"

template<class Walk> void ZnDbAssocAction::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(70, L"status", zndbAs<std::int8_t>(status_),
             ZnDbRule::between(kIsUpToDateAssocStatus, kUnresolvedAssocStatus));
  walk.id(ZnReferenceKind::kHardOwner, 360, L"body", bodyId_);
  walk.ids(ZnReferenceKind::kHardOwner, 361, L"dependency", dependencies_);
  walk.ids(ZnReferenceKind::kHardOwner, 362, L"parameter", params_);
  walk.field(ZnDbAssocValueParamList::kNameCode, L"values", values_);
  if constexpr (Walk::kReads) groupsAreStale_ = true;
}

ZNDB_DEFINE_FIELDS(ZnDbAssocAction, ZnDbObject)

// The list of marked actions is not filed: it follows from the statuses.
void ZnDbAssocAction::attachLinks() {
  groupsAreStale_ = true;
  if (zndbIsToEvaluate(status_)) enterInNetwork();
}

void ZnDbAssocAction::loaded() { attachLinks(); }

void ZnDbAssocAction::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  const ZnString who = L"action " + handleText(handle());
  // What the action names must be there, of the class, and name the action as its owner.
  const auto isOwned = [&](ZnDbObjectId id, const ZnRxClass* cls) {
    return id.isValid() && (!cls || id.isDerivedFrom(cls)) && id.slot()->object->ownerId() == objectId();
  };
  const auto check = [&](std::vector<ZnDbObjectId>& ids, const ZnRxClass* cls, const wchar_t* what) {
    for (size_t i = 0; i < ids.size(); ++i) {
      if (isOwned(ids[i], cls)) continue;
      faults.push_back(who + L": " + what + L" " + handleText(ids[i].handle()) + L" is none of it");
      if (!fix) continue;
      assertWriteEnabled();
      ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(i--));
      groupsAreStale_ = true;
    }
  };
  check(dependencies_, ZnDbAssocDependency::desc(), L"dependency");
  check(params_, nullptr, L"parameter");
  if (!bodyId_.isNull() && !isOwned(bodyId_, nullptr)) {
    faults.push_back(who + L": its body is missing");
    if (fix) {
      assertWriteEnabled();
      bodyId_.setNull();
    }
  }
}
