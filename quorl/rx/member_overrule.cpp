#include "quorl/rx/member_overrule.h"

#include <algorithm>

#include "quorl/rx/member.h"

ZNRX_DEFINE_ABSTRACT(ZnRxMemberOverrule, ZnRxOverruleBase)

Quorl::ErrorStatus ZnRxMemberOverrule::addOverrule(ZnRxMember* member, ZnRxMemberOverrule* overrule) {
  if (!member || !overrule) return Quorl::eInvalidInput;
  auto& list = member->overrules_;
  if (std::find(list.begin(), list.end(), overrule) != list.end()) return Quorl::eDuplicateKey;
  list.insert(list.begin(), overrule);
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxMemberOverrule::removeOverrule(ZnRxMember* member, ZnRxMemberOverrule* overrule) {
  if (!member || !overrule) return Quorl::eInvalidInput;
  return std::erase(member->overrules_, overrule) > 0 ? Quorl::eOk : Quorl::eKeyNotFound;
}

Quorl::ErrorStatus ZnRxMemberOverrule::removeOverrules(const ZnArray<Attachment>& attachments) {
  Quorl::ErrorStatus first = Quorl::eOk;
  for (const Attachment& attachment : attachments) {
    const auto status = removeOverrule(attachment.member, attachment.overrule);
    if (first == Quorl::eOk) first = status;
  }
  return first;
}
