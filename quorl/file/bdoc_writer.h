// Writes a drawing in the binary format.
#pragma once

#include <string>
#include <unordered_map>

#include "quorl/file/bdoc_container.h"
#include "quorl/file/file_classes.h"
#include "quorl/file/object_record.h"

class ZnByteWriter;
class ZnDbDatabase;
struct ZnDrawingHeader;

class ZnBdocWriter {
public:
  explicit ZnBdocWriter(ZnByteSink& sink)
      : container_(sink) {}
  // False with the error for an object that can't write itself, or when the sink takes no more. The drawing's
  // objects are opened for read one at a time.
  bool write(const ZnDbDatabase& database, ZnFileError& error);

private:
  bool writeObject(ZnDbObjectId id, ZnFileError& error);
  void putRecord(std::uint64_t handle, std::string_view text, bool isText);
  bool flush(ZnSectionType type, std::string& section, size_t least, ZnFileError& error);
  bool writeHeader(const ZnDrawingHeader& header, ZnFileError& error);
  bool writeClasses(ZnFileError& error);
  std::uint64_t numberOfName(ZnAtom name);

  ZnBdocContainerWriter container_;
  ZnFileClasses classes_;
  ZnDbObjectRecord record_;
  std::string objects_, handles_, names_;
  std::unordered_map<ZnAtom, std::uint64_t> nameNumbers_;
  std::uint64_t lastHandle_ = 0;
};
