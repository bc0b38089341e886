// Writes a drawing in the text format.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quorl/file/byte_stream.h"
#include "quorl/file/file_classes.h"
#include "quorl/file/file_error.h"

class ZnDbDatabase;
class ZnDbObjectId;
struct ZnDrawingHeader;

class ZnTdocWriter {
public:
  explicit ZnTdocWriter(ZnByteSink& sink);
  ~ZnTdocWriter();
  // False with the error for an object that can't write itself, or when the sink takes no more.
  bool write(const ZnDbDatabase& database, ZnFileError& error);

private:
  struct Hash;
  void item(int code, std::string_view value);
  void beginSection(const char* name);
  bool endSection(const char* name, ZnFileError& error);
  bool flush(const std::string& place, ZnFileError& error);
  bool writeHeader(const ZnDrawingHeader& header, ZnFileError& error);
  bool writeClasses(const std::vector<ZnDbObjectId>& ids, ZnFileError& error);
  bool writeObject(ZnDbObjectId id, ZnFileError& error);

  ZnByteSink& sink_;
  std::unique_ptr<Hash> hash_;
  ZnFileClasses classes_;
  std::string text_;
  size_t hashed_ = 0; // of the text that waits, what is in the checksum
};
