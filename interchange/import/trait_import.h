// Layers, linetypes and traits of a scene's elements in a drawing.
#pragma once

#include "interchange/svg_in/scene.h"

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"
#include "quorl/db/core/color.h"
#include "quorl/db/core/object_id.h"

#include <map>
#include <set>
#include <string>
#include <vector>

class ZnDbDatabase;
class ZnDbEntity;

namespace interchange {

class TraitImport {
public:
  // Makes the layers of the scene. One that the drawing has already is used as it is; a new one gets the
  // color most used on it and is off when the scene hides it. The database must outlive this object.
  TraitImport(const Scene& scene, ZnDbDatabase& database);

  // Gives an entity of the database its traits; color is by layer where the layer has it.
  void apply(const Element& element, ZnDbEntity& entity);

private:
  struct LayerEntry {
    ZnDbObjectId id;
    ZnCmColor color;
  };
  // Of a stroke's dash array; the record is made on first use, its name tells the lengths in millimetres.
  ZnDbObjectId linetypeFor(const Style& style);

  ZnDbDatabase& database_;
  std::vector<LayerEntry> layers_;
  std::map<std::string, ZnDbObjectId> linetypes_;
};

// A name that the drawing allows and that is not taken, in any case; `taken` holds names in lower case and
// gets the new one. Deterministic: repaired, then numbered.
ZnString freeName(const std::string& wanted, std::set<std::string>& taken);

} // namespace interchange
