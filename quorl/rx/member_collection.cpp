#include "quorl/rx/member_collection.h"

ZnRxMember* ZnRxMemberCollection::find(std::wstring_view name) const {
  for (const auto& member : members_)
    if (member->name().view() == name) return member.get();
  return nullptr;
}

Quorl::ErrorStatus ZnRxMemberCollectionBuilder::add(std::unique_ptr<ZnRxMember> member) {
  if (!member || member->name().isEmpty()) return Quorl::eInvalidInput;
  if (collection_.find(member->name())) return Quorl::eDuplicateKey;
  member->collection_ = &collection_;
  collection_.members_.push_back(std::move(member));
  return Quorl::eOk;
}
