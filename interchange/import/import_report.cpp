#include "interchange/import/import_report.h"

#include <utility>

namespace interchange {

void ImportReport::add(ImportedEntity entity) {
  byId_.emplace(entity.id, entities.size());
  entities.push_back(std::move(entity));
}

const ImportedEntity* ImportReport::find(ZnDbObjectId id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : &entities[found->second];
}

} // namespace interchange
