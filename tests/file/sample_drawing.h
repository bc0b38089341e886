// A drawing with something of everything that files hold, and short ways to write and read drawings.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "quorl/db/core/database.h"
#include "quorl/db/table/block_table.h"
#include "quorl/file/drawing_file.h"

namespace fileTest {

// Every entity class, nested blocks, layers, linetypes, styles, dictionaries, extension dictionaries,
// variables of every type, texts beyond ASCII and doubles at the ends of their range. Some objects are
// erased.
std::unique_ptr<ZnDbDatabase> sampleDrawing();

// Puts a new entity into the block; the drawing owns it.
ZnDbObjectId append(ZnDbObjectId block, ZnDbEntity* entity);
// Puts a new object into the named objects dictionary.
ZnDbObjectId addNamed(ZnDbDatabase& database, const wchar_t* name, ZnDbObject* object);
void erase(ZnDbObjectId id);

// Failing the test where the drawing can't be written or read.
std::string written(const ZnDbDatabase& database, ZnDrawingFormat format);
std::unique_ptr<ZnDbDatabase> opened(const std::string& bytes);

} // namespace fileTest
