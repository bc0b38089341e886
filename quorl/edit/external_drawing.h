// External drawings: blocks whose content stands in a file of its own and is read again when that has
// changed. What was last read is kept in the drawing, so that it can be shown where the file is missing.
#pragma once

#include <string>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/file_error.h"

struct ZnDbExternalDrawing {
  ZnDbObjectId block;
  ZnString name;
  std::string path; // as it was attached
  bool isUnloaded = false;
  bool isMissing = false; // no such file at present
};

// Those that the drawing itself attaches, in the order of attachment.
std::vector<ZnDbExternalDrawing> zndbExternalDrawings(const ZnDbDatabase& drawing);
// Null for a name of none.
ZnDbObjectId zndbExternalDrawingNamed(const ZnDbDatabase& drawing, const ZnString& name);

// Each of the following gives false with the error and leaves the drawing as it was.
// A new block with the model space of the file. A path that is not whole is looked for beside the drawing's
// own file, then in the current folder. Its layers, linetypes and styles are called "name|theirs". Drawings
// that it attaches in its turn come along, read anew; one that leads back to where it is attached is refused.
bool zndbAttachDrawing(ZnDbDatabase& drawing, const std::string& path, const ZnString& name,
                       ZnDbObjectId& block, ZnFileError& error);
// Reads the file again. What watched an object of it watches the one of the same handle from then on.
bool zndbReloadDrawing(ZnDbObjectId block, ZnFileError& error);
// Of all that are not unloaded; what can't be read stays as it was, each with its error.
std::vector<ZnFileError> zndbReloadDrawings(ZnDbDatabase& drawing);
// Not shown until it is reloaded.
bool zndbUnloadDrawing(ZnDbObjectId block, ZnFileError& error);
// Becomes a block of the drawing's own; "name|layer" becomes "name$0$layer".
bool zndbBindDrawing(ZnDbObjectId block, ZnFileError& error);
// Takes the block and all its references away, and what of its layers, linetypes and styles nothing else
// uses.
bool zndbDetachDrawing(ZnDbObjectId block, ZnFileError& error);
