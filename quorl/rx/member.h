// A named member of a run-time class.
#pragma once

#include <vector>

#include "quorl/rx/attributes.h"
#include "quorl/rx/value_type.h"

class ZnRxMemberCollection;
class ZnRxMemberOverrule;

class ZnRxMember : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxMember)

public:
  ZnRxMember(const wchar_t* name, const ZnRxValueType& type)
      : name_(name)
      , type_(type) {}

  const ZnString& name() const { return name_; }
  const ZnRxValueType& type() const { return type_; }
  // The class that the member belongs to; null until it is added to a collection.
  const ZnRxClass* owner() const;

  ZnRxAttributeCollection& attributes() { return attributes_; }
  const ZnRxAttributeCollection& attributes() const { return attributes_; }
  // The texts of the name and description attributes; without attribute or text the plain name, and the
  // empty text.
  ZnString localizedName() const;
  ZnString description() const;

  // In the order in which they are asked; ZnRxMemberOverrule keeps them.
  const std::vector<ZnRxMemberOverrule*>& overrules() const { return overrules_; }

private:
  friend class ZnRxMemberCollectionBuilder;
  friend class ZnRxMemberOverrule;
  ZnString text(unsigned number) const;

  ZnString name_;
  const ZnRxValueType& type_;
  const ZnRxMemberCollection* collection_ = nullptr;
  ZnRxAttributeCollection attributes_;
  std::vector<ZnRxMemberOverrule*> overrules_;
};
