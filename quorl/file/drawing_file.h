// Saves drawings to files and opens them, in the binary format (.bdoc) and the text format (.tdoc).
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "quorl/db/core/database.h"
#include "quorl/file/file_error.h"

class ZnAtomicFile;

enum class ZnDrawingFormat { kBinary, kText };

// The format follows from the ending, .bdoc or .tdoc in any case; eInvalidInput for another. All or nothing:
// on failure the file on disk is what it was. What is erased is not saved. Objects may be open. Reactors hear
// beginSave before the drawing is looked at, then saveComplete or abortSave. The drawing takes the path as
// its file name when it is saved.
Quorl::ErrorStatus zndbSaveDrawing(ZnDbDatabase& database, const std::string& path, ZnFileError& error);
// The same for one of several files that are to appear together: the caller puts the file in place.
Quorl::ErrorStatus zndbWriteDrawing(ZnDbDatabase& database, const std::string& path, ZnAtomicFile& file,
                                    ZnFileError& error);

// The format is recognised by content. Null with the error when the file can't be read or any part of it is
// damaged. Objects of unknown classes come as proxies. A reference to a handle that is not in the file comes
// as null; an owner that is not in the file is an error. There is nothing to undo. Reactors hear
// drawingFileOpened and firstOpenCompleted once all is in.
std::unique_ptr<ZnDbDatabase> zndbOpenDrawing(const std::string& path, ZnFileError& error);

// The same in memory, without events and file name.
Quorl::ErrorStatus zndbDrawingToBytes(const ZnDbDatabase& database, ZnDrawingFormat format,
                                      std::string& bytes, ZnFileError& error);
std::unique_ptr<ZnDbDatabase> zndbDrawingFromBytes(std::string_view bytes, ZnFileError& error);
// The drawing in the text format, equal for equal drawings; empty where it can't be written.
std::string zndbDrawingText(const ZnDbDatabase& database);
