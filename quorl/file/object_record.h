// One object as files hold it: its fields as bytes, and beside them the ids and names that the fields name,
// in the order in which they are read. So an object of an unknown class can be kept and translated.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quorl/base/atom.h"
#include "quorl/db/core/filer.h"

struct ZnDbReference {
  ZnReferenceKind kind = ZnReferenceKind::kSoftPointer;
  ZnDbObjectId id;
  friend bool operator==(const ZnDbReference&, const ZnDbReference&) = default;
};

struct ZnDbObjectRecord {
  std::string bytes;
  std::vector<ZnDbReference> references;
  std::vector<ZnAtom> atoms;

  void clear() {
    bytes.clear();
    references.clear();
    atoms.clear();
  }
  friend bool operator==(const ZnDbObjectRecord&, const ZnDbObjectRecord&) = default;
};
