// What became of a drawing that was read: where each entity comes from, and what did not come along.
#pragma once

#include "interchange/import/source_page.h"
#include "interchange/svg_in/scene.h"

#include "quorl/base/failure.h"
#include "quorl/db/core/object_id.h"

#include <string>
#include <vector>

namespace interchange {

struct ImportedEntity {
  ZnDbObjectId id;
  ZnDbObjectId block; // the record that it stands in
  Source source;
  std::string hiddenReason; // empty when it is visible
};

struct FoundCircle {
  ZnDbObjectId entity; // of the page: the circle, or the reference that shows it
  Circle circle;       // on the page, millimetres, with how well it was drawn
  bool visible = true;
};

struct ImportReport {
  DocumentFacts document;
  SourcePage page;                      // for writing back onto the source
  std::vector<ImportedEntity> entities; // in document order, those of blocks first
  std::vector<FoundCircle> circles;
  std::vector<Skipped> skipped; // by the reader, and what the drawing could not hold
  std::vector<Quorl::Failure> problems;
};

} // namespace interchange
