// The text filer that reads: items of one object from its lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quorl/db/core/tdoc_filer.h"
#include "quorl/file/object_record.h"
#include "quorl/file/tdoc_items.h"

class ZnHandleIndex;

// Lines, index and list belong to the caller and outlive the filer. References are found in the index of the
// file; a handle that names no object there gives null, but for the owner that an object names first: that
// one is damage. With a list instead, empty value lines take its references in order. Writing fails.
class ZnDbTextInFiler : public ZnDbTdocFiler {
public:
  ZnDbTextInFiler(std::string_view lines, ZnDbDatabase* database, const ZnHandleIndex& index,
                  size_t firstLine);
  ZnDbTextInFiler(std::string_view lines, ZnDbDatabase* database, const std::vector<ZnDbReference>& apart);

  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return database_; }

  bool atEndOfObject() override { return status_ != Quorl::eOk || lines_.atEnd(); }
  bool atSubclassData(const wchar_t* name) override;
  Quorl::ErrorStatus readItem(ZnDbTdocItem& item) override;
  void pushBackItem() override;

  // What is left as lines with their references apart; all is read then.
  Quorl::ErrorStatus takeRest(ZnDbObjectRecord& rest);

  // Fails with eUnexpectedGroupCode at what is left.
  Quorl::ErrorStatus refuseRest();

  // For a reader that goes on without it, a missing owner is null like any other reference.
  void allowMissingOwner() { ownerMayBeMissing_ = true; }

  // Of the item that could not be read, where the status comes from here.
  size_t faultLine() const { return lastLine_; }
  const std::string& fault() const { return fault_; }
  const std::string& expected() const { return expected_; }

  void writeSubclassMarker(const wchar_t*) override { refuse(); }
  void writeBool(int, bool) override { refuse(); }
  void writeInteger(int, std::int64_t) override { refuse(); }
  void writeDouble(int, double) override { refuse(); }
  void writeString(int, const ZnString&) override { refuse(); }
  void writePoint3d(int, const ZnGePoint3d&) override { refuse(); }
  void writeVector3d(int, const ZnGeVector3d&) override { refuse(); }
  void writeBytes(int, const void*, size_t) override { refuse(); }
  void writeId(int, ZnDbObjectId) override { refuse(); }

private:
  void refuse() { status_ = Quorl::eNotProvided; }
  Quorl::ErrorStatus fail(Quorl::ErrorStatus status, std::string fault, std::string expected = {});
  bool nextPair(int& code, std::string_view& value);
  Quorl::ErrorStatus readValue(ZnDbTdocItem& item, std::string_view value);
  Quorl::ErrorStatus readInteger(std::string_view value, std::int64_t least, std::int64_t most,
                                 std::int64_t& target);
  Quorl::ErrorStatus readPoint(ZnDbTdocItem& item);
  Quorl::ErrorStatus readReference(int code, std::string_view value, ZnDbObjectId& id);

  Quorl::TdocLines lines_;
  ZnDbDatabase* database_;
  const ZnHandleIndex* index_ = nullptr;
  const std::vector<ZnDbReference>* apart_ = nullptr;
  Quorl::ErrorStatus status_ = Quorl::eOk;
  bool ownerMayBeMissing_ = false;
  size_t nextApart_ = 0, lastApart_ = 0, lastPosition_ = 0, lastLine_ = 0;
  std::string plain_, fault_, expected_;
};
