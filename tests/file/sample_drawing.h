// A drawing with something of everything that files hold, and short ways to write and read drawings.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "quorl/file/drawing_file.h"
#include "support/host_drawing.h"

namespace fileTest {

constexpr ZnDrawingFormat kFormats[] = {ZnDrawingFormat::kBinary, ZnDrawingFormat::kText};

// Every entity class, nested blocks, layers, linetypes, styles, dictionaries, extension dictionaries,
// variables of every type, texts beyond ASCII and doubles at the ends of their range. Some objects are
// erased.
std::unique_ptr<ZnDbDatabase> sampleDrawing();

// Puts a new object into the named objects dictionary.
ZnDbObjectId addNamed(ZnDbDatabase& database, const wchar_t* name, ZnDbObject* object);

// Failing the test where the drawing can't be written or read.
std::string written(const ZnDbDatabase& database, ZnDrawingFormat format);
std::unique_ptr<ZnDbDatabase> opened(const std::string& bytes);

// A text drawing with "?" for each checksum of a section, to be edited, and with those made right again.
std::string unsealed(const std::string& text);
std::string sealed(const std::string& text);

} // namespace fileTest
