#include "quorl/file/drawing_file.h"

#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/shown_content.h"
#include "quorl/db/table/block_table.h"
#include "quorl/file/atomic_file.h"
#include "quorl/file/bdoc_reader.h"
#include "quorl/file/bdoc_writer.h"
#include "quorl/file/block_nesting.h"
#include "quorl/file/disk_file.h"
#include "quorl/file/tdoc_layout.h"
#include "quorl/file/tdoc_reader.h"
#include "quorl/file/tdoc_writer.h"

using Quorl::ErrorStatus;

namespace {

bool writeTo(ZnByteSink& sink, const ZnDbDatabase& database, ZnDrawingFormat format, ZnFileError& error) {
  return format == ZnDrawingFormat::kBinary ? ZnBdocWriter(sink).write(database, error)
                                            : ZnTdocWriter(sink).write(database, error);
}

// A text came through a system that ends lines in two characters, or it did not.
bool isText(std::string_view start) {
  std::string plain(start);
  std::erase(plain, '\r');
  return plain.starts_with(Quorl::kTdocStart);
}

std::unique_ptr<ZnDbDatabase> readFrom(const ZnByteSource& source, ZnFileError& error) {
  constexpr std::uint64_t kLookAt = 32;
  std::string bytes;
  if (!source.read(0, std::min(source.size(), kLookAt), bytes)) {
    error.fail(Quorl::eFileAccess, "byte 0", "can't be read", "a readable file");
    return nullptr;
  }
  if (bytes.starts_with(Quorl::kBdocMagic)) return ZnBdocReader(source).read(error);
  if (!isText(bytes)) {
    error.fail(Quorl::eFileDamaged, "byte 0", "no drawing file", "the mark of a drawing");
    return nullptr;
  }
  if (!source.read(0, source.size(), bytes)) {
    error.fail(Quorl::eFileAccess, "byte 0", "can't be read", "a readable file");
    return nullptr;
  }
  return ZnTdocReader(bytes).read(error);
}

bool formatOf(const std::string& path, ZnDrawingFormat& format) {
  const ZnString ending = ZnString::fromUtf8(path.substr(path.find_last_of('.') + 1));
  format = ending.equalsNoCase(L"bdoc") ? ZnDrawingFormat::kBinary : ZnDrawingFormat::kText;
  return path.find('.') != std::string::npos &&
         (format == ZnDrawingFormat::kBinary || ending.equalsNoCase(L"tdoc"));
}

constexpr const char* kWanted = "a file in a folder with room, both open to writing";

// What could not be read again is not written.
bool canBeReadAgain(const ZnDbDatabase& database, ZnFileError& error) {
  const ZnDbHolder<ZnDbSymbolTable> table(database.blockTableId());
  if (!table.isOpen()) return true;
  for (const ZnDbObjectId id : table->recordIds()) {
    if (id.isErased() || zndbShownCount(id) <= Quorl::kMostShownInFile) continue;
    const ZnDbHolder<ZnDbBlockTableRecord> block(id);
    return error.fail(Quorl::eInvalidInput, "block " + block->name().utf8(),
                      "repeats its content beyond all measure", "a hundred million entities at most");
  }
  return true;
}

bool writeFile(ZnAtomicFile& file, const ZnDbDatabase& database, ZnDrawingFormat format, ZnFileError& error) {
  if (file.fault().empty() && !canBeReadAgain(database, error)) return false;
  if (file.fault().empty() && writeTo(file, database, format, error)) return true;
  if (!file.fault().empty()) error.fail(Quorl::eFileAccess, {}, file.fault(), kWanted);
  return false;
}

// With the events of a save around it, whoever puts the file in place.
template<class Write>
ErrorStatus saveAs(ZnDbDatabase& database, const std::string& path, ZnFileError& error, const Write& write) {
  error = {};
  error.file = path;
  ZnDrawingFormat format{};
  if (!formatOf(path, format)) {
    error.fail(Quorl::eInvalidInput, {}, "the ending names no format", ".bdoc or .tdoc");
    return error.status;
  }
  const ZnString name = ZnString::fromUtf8(path);
  {
    // What is cleared away before a save belongs to the change that left it.
    const ZnDbUndoRecorder::Amendment clearing(database.undoRecorder());
    ZnRxEvent::instance().tell(
        [&](ZnRxEventReactor& reactor) { reactor.beginSave(&database, name.c_str()); });
  }
  if (!write(format)) {
    ZnRxEvent::instance().tell([&](ZnRxEventReactor& reactor) { reactor.abortSave(&database); });
    return error.status;
  }
  database.setFileName(name);
  ZnRxEvent::instance().tell(
      [&](ZnRxEventReactor& reactor) { reactor.saveComplete(&database, name.c_str()); });
  return Quorl::eOk;
}

} // namespace

ErrorStatus zndbSaveDrawing(ZnDbDatabase& database, const std::string& path, ZnFileError& error) {
  return saveAs(database, path, error, [&](ZnDrawingFormat format) {
    ZnAtomicFile file(path);
    return writeFile(file, database, format, error) &&
           (file.commit() || error.fail(Quorl::eFileAccess, {}, file.fault(), kWanted));
  });
}

ErrorStatus zndbWriteDrawing(ZnDbDatabase& database, const std::string& path, ZnAtomicFile& file,
                             ZnFileError& error) {
  return saveAs(database, path, error,
                [&](ZnDrawingFormat format) { return writeFile(file, database, format, error); });
}

std::unique_ptr<ZnDbDatabase> zndbOpenDrawing(const std::string& path, ZnFileError& error) {
  error = {};
  error.file = path;
  const ZnDiskSource source(path);
  if (!source.fault().empty()) {
    error.fail(Quorl::eFileAccess, {}, "can't be opened: " + source.fault(), "a readable file");
    return nullptr;
  }
  std::unique_ptr<ZnDbDatabase> database = readFrom(source, error);
  if (!database) return nullptr;
  const ZnString name = ZnString::fromUtf8(path);
  database->setFileName(name);
  ZnDbDatabase* opened = database.get();
  ZnRxEvent::instance().tell(
      [&](ZnRxEventReactor& reactor) { reactor.drawingFileOpened(opened, name.c_str()); });
  ZnRxEvent::instance().tell([&](ZnRxEventReactor& reactor) { reactor.firstOpenCompleted(opened); });
  return database;
}

ErrorStatus zndbDrawingToBytes(const ZnDbDatabase& database, ZnDrawingFormat format, std::string& bytes,
                               ZnFileError& error) {
  error = {};
  bytes.clear();
  ZnStringSink sink(bytes);
  if (!writeTo(sink, database, format, error)) bytes.clear();
  return error.status;
}

std::unique_ptr<ZnDbDatabase> zndbDrawingFromBytes(std::string_view bytes, ZnFileError& error) {
  error = {};
  return readFrom(ZnStringSource(bytes), error);
}

std::string zndbDrawingText(const ZnDbDatabase& database) {
  std::string text;
  ZnFileError error;
  zndbDrawingToBytes(database, ZnDrawingFormat::kText, text, error);
  return text;
}
