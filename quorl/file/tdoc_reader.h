// Reads a drawing in the text format: first the lines are gone through and checked, then the objects are
// read.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/file_classes.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/tdoc_items.h"

class ZnSalvage;

class ZnTdocReader {
public:
  // The text belongs to the caller. With a salvage, what is damaged is noted there and passed over.
  explicit ZnTdocReader(std::string_view text, ZnSalvage* salvage = nullptr);
  std::unique_ptr<ZnDbDatabase> read(ZnFileError& error);

private:
  struct Object {
    std::uint64_t handle = 0;
    size_t begin = 0, end = 0, line = 0; // of its fields
    int cls = 0;
    bool bytesMarked = false; // holds the bytes of a class that was unknown to who wrote it
  };
  // A pair of lines, taken where it is the wanted one; false with the error told.
  bool next(int& code, std::string_view& value, ZnFileError& error);
  bool expect(int code, std::string& value, ZnFileError& error);
  bool expectSection(std::string_view name, ZnFileError& error);
  bool expectChecksum(std::string_view section, size_t begin, ZnFileError& error);
  bool expectInteger(int code, int& value, ZnFileError& error);
  bool failHere(ZnFileError& error, std::string what, std::string expected = {}) const;

  bool readSections(ZnFileError& error);
  bool finish(ZnFileError& error);
  // How a reading that saves what it can goes on behind what is damaged.
  bool salvageSections();
  void salvageClasses();
  void salvageObjects();
  void salvageSlots();
  bool passesOver(bool done, ZnFileError& error);
  bool moveToSection(std::string_view name);
  bool moveToObject();

  bool readMark(ZnFileError& error);
  bool readHeader(ZnFileError& error);
  bool readHeaderName(const char* name, ZnFileError& error);
  bool readHeaderHandle(const char* name, std::uint64_t& value, ZnFileError& error);
  bool readVariable(const std::string& name, ZnFileError& error);
  bool readClasses(ZnFileError& error);
  bool readClass(ZnFileError& error);
  bool scanObjects(ZnFileError& error);
  bool scanObject(ZnFileError& error);
  bool makeSlots(ZnFileError& error);
  bool readObject(const Object& object, ZnFileError& error);

  std::string withoutReturns_;
  std::string_view text_;
  Quorl::TdocLines lines_;
  size_t line_ = 1; // of the pair that was read last
  size_t headerLine_ = 1, countLine_ = 1;
  std::unique_ptr<ZnDbDatabase> database_;
  ZnDrawingHeader header_;
  ZnFileClasses classes_;
  ZnHandleIndex index_;
  std::vector<Object> objects_;
  int lastClass_ = -1;
  ZnSalvage* salvage_;
};
