// The members that a class declares itself, and the builder that fills them in.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "quorl/base/resource.h"
#include "quorl/rx/member.h"

class ZnRxMemberCollection {
public:
  explicit ZnRxMemberCollection(const ZnRxClass* owner)
      : owner_(owner) {}
  ZnRxMemberCollection(const ZnRxMemberCollection&) = delete;
  ZnRxMemberCollection& operator=(const ZnRxMemberCollection&) = delete;

  const ZnRxClass* owner() const { return owner_; }
  int count() const { return static_cast<int>(members_.size()); }
  ZnRxMember* at(int index) const { return members_[static_cast<size_t>(index)].get(); }
  // Names differ by case; null when there is none.
  ZnRxMember* find(std::wstring_view name) const;
  const ZnRxResourceInstance& resources() const { return resources_; }

private:
  friend class ZnRxMemberCollectionBuilder;
  const ZnRxClass* owner_;
  ZnRxResourceInstance resources_;
  std::vector<std::unique_ptr<ZnRxMember>> members_;
};

class ZnRxMemberCollectionBuilder {
public:
  explicit ZnRxMemberCollectionBuilder(ZnRxMemberCollection& collection)
      : collection_(collection) {}

  const ZnRxClass* owner() const { return collection_.owner(); }
  // Takes over the member, and deletes it where it fails: eDuplicateKey when the name is taken,
  // eInvalidInput for null or no name.
  Quorl::ErrorStatus add(std::unique_ptr<ZnRxMember> member);
  Quorl::ErrorStatus add(ZnRxMember* member) { return add(std::unique_ptr<ZnRxMember>(member)); }
  // Where the text numbers of this collection's attributes are looked up.
  void setResources(const ZnRxResourceInstance& resources) { collection_.resources_ = resources; }

private:
  ZnRxMemberCollection& collection_;
};
