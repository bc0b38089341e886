// A dependency on an edge or a vertex of an entity.
#pragma once

#include "quorl/assoc/dependency.h"

class ZnDbAssocGeomDependency : public ZnDbAssocDependency {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocGeomDependency)

public:
  const ZnDbSubentId& subentId() const { return subent_; }
  void setSubentId(const ZnDbSubentId& subent);

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

private:
  ZnDbSubentId subent_;
};
