// Recognized shapes as entities of a drawing.
#pragma once

#include "interchange/recognize/shape.h"

#include "quorl/db/core/object_id.h"

#include <memory>
#include <vector>

class ZnDbEntity;

namespace interchange {

// A new entity in no database with the shape's geometry in the plane z = 0. `blocks` are the records of the
// scene's blocks, by index. Null for a shape without extent or beyond what the entity can hold.
std::unique_ptr<ZnDbEntity> entityOf(const Shape& shape, const std::vector<ZnDbObjectId>& blocks);

} // namespace interchange
