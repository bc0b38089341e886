// What reading and writing of both formats do alike.
#pragma once

#include <memory>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/file_error.h"

class ZnHandleIndex;
class ZnSalvage;
struct ZnDrawingHeader;

namespace Quorl {

// The objects that a file holds: all that are not erased, in order of handles.
std::vector<ZnDbObjectId> storedObjects(const ZnDbDatabase& database);

// A bare drawing that keeps no undo history while it is filled.
std::unique_ptr<ZnDbDatabase> drawingToFill();
// A slot for each object of the file, in ascending order of handles; false for a handle that is 0, not above
// the one before or not below the next one to be given.
bool addSlot(ZnDbDatabase& database, ZnHandleIndex& index, std::uint64_t handle, std::uint64_t nextHandle);
// Puts the object that was read into its slot.
void install(ZnDbDatabase& database, ZnDbObjectId id, std::unique_ptr<ZnDbObject> object);
// After all objects are in: header, nesting of blocks, loaded() in order of handles, then the links.
bool finishDrawing(ZnDbDatabase& database, const ZnHandleIndex& index, const ZnDrawingHeader& header,
                   ZnFileError& error);

// The same for what could be saved of a file. False where objects were lost on the way, so that the file is
// to be read again without them, or with the error where nothing helps.
bool finishSalvaged(ZnDbDatabase& database, ZnHandleIndex& index, ZnDrawingHeader& header, ZnSalvage& salvage,
                    ZnFileError& error);

} // namespace Quorl
