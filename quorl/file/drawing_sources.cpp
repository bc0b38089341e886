#include "quorl/file/drawing_sources.h"

#include <limits>

#include "quorl/db/core/undo.h"
#include "quorl/file/block_nesting.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/restoration.h"
#include "quorl/file/salvage.h"

std::vector<ZnDbObjectId> Quorl::storedObjects(const ZnDbDatabase& database) {
  std::vector<ZnDbObjectId> ids = database.allObjectIds();
  std::erase_if(ids, [](ZnDbObjectId id) { return id.isErased() || id.slot()->leftOut; });
  return ids;
}

std::unique_ptr<ZnDbDatabase> Quorl::drawingToFill() {
  auto database = std::make_unique<ZnDbDatabase>(false);
  database->undoRecorder().setRecording(false);
  return database;
}

bool Quorl::addSlot(ZnDbDatabase& database, ZnHandleIndex& index, std::uint64_t handle,
                    std::uint64_t nextHandle) {
  // The next handle must stay below the largest number, or numbering would begin again at 0.
  if (handle <= index.lastHandle() || handle >= nextHandle ||
      nextHandle > std::numeric_limits<std::int64_t>::max())
    return false;
  ZnDbObjectId id;
  database.getZnDbObjectId(id, true, ZnDbHandle(handle));
  index.add(handle, id);
  return true;
}

void Quorl::install(ZnDbDatabase& database, ZnDbObjectId id, std::unique_ptr<ZnDbObject> object) {
  QUORL_ASSERT(database.installObject(id, object.release()) == Quorl::eOk);
}

bool Quorl::finishDrawing(ZnDbDatabase& database, const ZnHandleIndex& index, const ZnDrawingHeader& header,
                          ZnFileError& error) {
  if (!header.apply(database, index, error) || !checkBlockNesting(index, error)) return false;
  for (size_t i = 0; i < index.size(); ++i) {
    ZnDbSlot* slot = index.at(i).slot();
    if (!slot) continue;
    // Nobody else is about: whoever settles after reading may write.
    ++slot->writers;
    slot->object->loaded();
    --slot->writers;
  }
  for (size_t i = 0; i < index.size(); ++i)
    if (!index.at(i).isErased()) index.at(i).slot()->object->attachLinks();
  database.undoRecorder().setRecording(true);
  return true;
}

bool Quorl::finishSalvaged(ZnDbDatabase& database, ZnHandleIndex& index, ZnDrawingHeader& header,
                           ZnSalvage& salvage, ZnFileError& error) {
  if (!salvage.hasLostMore()) restoreEssentials(database, index, header, salvage);
  if (!salvage.hasLostMore() && !finishDrawing(database, index, header, error))
    loseReferencesIn(database, error, salvage);
  return !salvage.hasLostMore() && error.status == Quorl::eOk;
}
