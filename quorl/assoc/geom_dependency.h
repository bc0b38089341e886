// A dependency on an edge or a vertex of an entity.
#pragma once

#include "quorl/assoc/dependency.h"

class ZnDbAssocGeomDependency : public ZnDbAssocDependency {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocGeomDependency)

public:
  const ZnDbSubentId& subentId() const { return subent_; }
  void setSubentId(const ZnDbSubentId& subent);

  ZNDB_DECLARE_FIELDS

private:
  ZnDbSubentId subent_;
};
