#include "quorl/assoc/geom_dependency.h"

#include "quorl/assoc/path_fields.h"
#include "quorl/db/core/fields.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocGeomDependency, ZnDbAssocDependency, L"ASSOCGEOMDEPENDENCY")

void ZnDbAssocGeomDependency::setSubentId(const ZnDbSubentId& subent) {
  if (subent == subent_) return;
  assertWriteEnabled();
  subent_ = subent;
}

template<class Walk> void ZnDbAssocGeomDependency::describe(Walk& walk) {
  walk.section(className(), 1);
  zndbDescribeSubent(walk, 70, subent_);
}

ZNDB_DEFINE_FIELDS(ZnDbAssocGeomDependency, ZnDbAssocDependency)
