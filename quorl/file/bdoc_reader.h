// Reads a drawing in the binary format.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/bdoc_container.h"
#include "quorl/file/byte_codec.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/file_classes.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/object_record.h"

class ZnSalvage;

class ZnBdocReader {
public:
  // With a salvage, what is damaged is noted there and passed over.
  explicit ZnBdocReader(const ZnByteSource& source, ZnSalvage* salvage = nullptr)
      : container_(source)
      , salvage_(salvage) {}
  // Null with the error; nothing of the drawing is left then.
  std::unique_ptr<ZnDbDatabase> read(ZnFileError& error);

private:
  using Section = ZnBdocContainerReader::Section;
  using Part = bool (ZnBdocReader::*)(ZnByteReader&, const std::string& place, ZnFileError&);
  // Hands the sections of the type, one by one, to the part's reader.
  bool readAll(ZnSectionType type, Part part, ZnFileError& error);
  bool readPart(const Section& section, Part part, ZnFileError& error);
  bool checkCounts(ZnFileError& error);
  bool finish(ZnFileError& error);
  // True, with the error noted, for a reading that goes on behind it.
  bool passesOver(ZnFileError& error) const;
  bool loses(ZnDbObjectId id, ZnFileError& error) const;
  bool openContainer(ZnFileError& error);
  bool salvageObjects();
  size_t countRecords(const Section& section, bool& whole);
  void loseWhatIsMissing();
  std::string endPlace() const;
  std::uint64_t mostObjects() const;
  bool readHeader(ZnByteReader& in, const std::string& place, ZnFileError& error);
  bool readClasses(ZnByteReader& in, const std::string& place, ZnFileError& error);
  bool readNames(ZnByteReader& in, const std::string& place, ZnFileError& error);
  bool readHandles(ZnByteReader& in, const std::string& place, ZnFileError& error);
  bool readObjects(ZnByteReader& in, const std::string& place, ZnFileError& error);
  bool readRecord(ZnByteReader& in, std::uint64_t handle, std::string_view& text, bool& isText,
                  std::string& fault);
  bool readReferences(ZnByteReader& in, std::uint64_t count, std::uint64_t handle, std::string& fault);
  std::unique_ptr<ZnDbObject> readFields(int cls, const std::string_view* text, Quorl::ErrorStatus& status);

  ZnBdocContainerReader container_;
  std::unique_ptr<ZnDbDatabase> database_;
  ZnDrawingHeader header_;
  bool hasHeader_ = false, hasClasses_ = false;
  ZnFileClasses classes_;
  std::vector<ZnAtom> names_{ZnAtom()};
  ZnHandleIndex index_;
  std::vector<std::uint32_t> classOf_; // by place in the index
  size_t objectsRead_ = 0;
  ZnDbObjectRecord record_;
  std::string raw_;
  ZnSalvage* salvage_;
};
