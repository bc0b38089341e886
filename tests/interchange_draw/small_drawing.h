// A drawing that is built line by line, shared by the tests of pictures.
#pragma once

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"

#include <functional>
#include <initializer_list>
#include <string>

namespace interchange_test {

struct SmallDrawing {
  ZnDbDatabase database;

  // Takes over the entity, with the drawing's defaults; to model space when no block is given.
  ZnDbObjectId add(ZnDbEntity* entity, ZnDbObjectId block = {});
  ZnDbObjectId addLine(double x1, double y1, double x2, double y2, ZnDbObjectId block = {});
  ZnDbObjectId addLinetype(const wchar_t* name, std::initializer_list<double> lengths);
  ZnDbObjectId addLayer(const wchar_t* name, const std::function<void(ZnDbLayerTableRecord&)>& set);
  ZnDbObjectId addBlock(const wchar_t* name);
  void change(ZnDbObjectId id, const std::function<void(ZnDbEntity&)>& set);
};

// A path in a fresh folder of the test's own.
std::string scratchPath(const std::string& name);
std::string contentOf(const std::string& path);

} // namespace interchange_test
