// The base of parameters: objects that an action owns under a name.
#pragma once

#include "quorl/assoc/action.h"

class ZnDbAssocActionParam : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocActionParam)

public:
  const ZnString& name() const { return name_; }
  void setName(const ZnString& name);
  ZnDbAssocAction* parentAction() const;

  ZNDB_DECLARE_FIELDS
  void attachLinks() override;
  void detachLinks() override;

private:
  ZnString name_;
};
