#include "quorl/assoc/left_overs.h"

#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/database.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"

namespace {

bool isInFile(ZnDbObjectId id) { return !id.isErased() && !id.slot()->leftOut; }

// An action that never had an output, or whose dependencies can't be read, has its reasons.
bool hasLostItsOutputs(const ZnDbAssocAction& action) {
  bool writes = false;
  for (const ZnDbObjectId id : action.dependencyIds()) {
    if (id.isErased()) continue;
    const ZnDbAssocDependency* dependency = ZnDbAssocDependency::live(id);
    if (!dependency) return false;
    if (!dependency->isWriteDependency()) continue;
    if (!dependency->isErasedOrBroken()) return false;
    writes = true;
  }
  return writes;
}

// The block of a reference, where only its references can name it.
ZnDbObjectId anonymousBlockOf(ZnDbObjectId reference) {
  const ZnDbObjectId block = static_cast<ZnDbBlockReference*>(reference.slot()->object)->blockTableRecord();
  if (block.isErased() || !block.isDerivedFrom(ZnDbBlockTableRecord::desc())) return {};
  return static_cast<ZnDbBlockTableRecord*>(block.slot()->object)->isAnonymous() ? block : ZnDbObjectId();
}

bool isShown(ZnDbObjectId block) {
  ZnArray<ZnDbObjectId> references;
  static_cast<ZnDbBlockTableRecord*>(block.slot()->object)->getBlockReferenceIds(references);
  for (const ZnDbObjectId id : references)
    if (isInFile(id) && isInFile(id.slot()->object->ownerId())) return true;
  return false;
}

} // namespace

ZnDbLeftOvers::ZnDbLeftOvers(const ZnDbDatabase& drawing)
    : all_(drawing.allObjectIds()) {
  leaveOutActions();
  leaveOutBlocks();
  if (!left_.empty()) leaveOutOwned();
}

ZnDbLeftOvers::~ZnDbLeftOvers() {
  for (const ZnDbObjectId id : left_) id.slot()->leftOut = false;
}

void ZnDbLeftOvers::leaveOut(ZnDbObjectId id) {
  id.slot()->leftOut = true;
  left_.push_back(id);
}

void ZnDbLeftOvers::leaveOutActions() {
  for (const ZnDbObjectId id : all_)
    if (!id.isErased() && id.isDerivedFrom(ZnDbAssocAction::desc()) &&
        !id.isDerivedFrom(ZnDbAssocNetwork::desc()) &&
        hasLostItsOutputs(*static_cast<ZnDbAssocAction*>(id.slot()->object)))
      leaveOut(id);
}

// From the references that were erased: a block that never had one is somebody's work. A block that goes
// takes the references in it with it.
void ZnDbLeftOvers::leaveOutBlocks() {
  std::vector<ZnDbObjectId> gone;
  for (const ZnDbObjectId id : all_)
    if (id.isErased() && id.isDerivedFrom(ZnDbBlockReference::desc())) gone.push_back(id);
  while (!gone.empty()) {
    const ZnDbObjectId block = anonymousBlockOf(gone.back());
    gone.pop_back();
    if (block.isNull() || !isInFile(block) || isShown(block)) continue;
    leaveOut(block);
    for (const ZnDbObjectId id : static_cast<ZnDbBlockTableRecord*>(block.slot()->object)->entityIds())
      if (!id.isErased() && id.isDerivedFrom(ZnDbBlockReference::desc())) gone.push_back(id);
  }
}

void ZnDbLeftOvers::leaveOutOwned() {
  for (const ZnDbObjectId id : all_) {
    if (!isInFile(id)) continue;
    for (ZnDbObjectId owner = id.slot()->object->ownerId(); owner.isValid();
         owner = owner.slot()->object->ownerId())
      if (owner.slot()->leftOut) {
        leaveOut(id);
        break;
      }
  }
}
