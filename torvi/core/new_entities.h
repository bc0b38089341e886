// New entities on their way into a block.
#pragma once

#include "torvi/host/database.h"

namespace torvi {

// Deletes those that were not placed: until then they are in no drawing.
struct NewEntities {
  NewEntities() = default;
  NewEntities(const NewEntities&) = delete;
  NewEntities& operator=(const NewEntities&) = delete;
  ~NewEntities() {
    for (ZnDbEntity* entity : entities)
      if (entity && !entity->database()) delete entity;
  }
  ZnArray<ZnDbEntity*> entities;
};

} // namespace torvi
