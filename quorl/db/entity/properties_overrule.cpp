#include "quorl/db/entity/properties_overrule.h"

#include "quorl/db/entity/entity.h"
#include "quorl/db/table/entity_list.h"

ZNRX_DEFINE_ABSTRACT(ZnDbPropertiesOverrule, ZnRxOverrule)

void ZnDbPropertiesOverrule::list(const ZnDbEntity* entity) const {
  if (!entity) return;
  if (const auto* next = ZnRxOverrule::firstApplicable<ZnDbPropertiesOverrule>(entity, this))
    next->list(entity);
  else
    ShareDB::listEntityPlainly(entity);
}
