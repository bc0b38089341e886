// The text filer that writes: items as pairs of lines at the end of a text.
#pragma once

#include <string_view>
#include <vector>

#include "quorl/db/core/tdoc_filer.h"
#include "quorl/file/object_record.h"

// The text belongs to the caller. References are spelled as handles, those of erased objects as 0; given a
// list, they go into it instead and their value lines stay empty, so that they stand for objects of the
// drawing whatever becomes of them. Reading fails.
class ZnDbTextOutFiler : public ZnDbTdocFiler {
public:
  explicit ZnDbTextOutFiler(std::string& text, std::vector<ZnDbReference>* apart = nullptr)
      : text_(text)
      , apart_(apart) {}

  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return nullptr; }

  // A code that does not stand for that type of value sets eUnexpectedGroupCode: no reader would take it.
  void writeSubclassMarker(const wchar_t* name) override;
  void writeBool(int code, bool value) override;
  void writeInteger(int code, std::int64_t value) override; // eOutOfRange for a value too wide for its code
  void writeDouble(int code, double value) override;
  void writeString(int code, const ZnString& value) override;
  void writePoint3d(int code, const ZnGePoint3d& value) override;
  void writeVector3d(int code, const ZnGeVector3d& value) override;
  void writeBytes(int code, const void* bytes, size_t count) override;
  void writeId(int code, ZnDbObjectId id) override;
  // Items that already are lines, their references (in order) apart.
  void writeLines(std::string_view lines, const std::vector<ZnDbReference>& references);

  bool atEndOfObject() override { return true; }
  bool atSubclassData(const wchar_t*) override { return false; }
  Quorl::ErrorStatus readItem(ZnDbTdocItem&) override { return Quorl::eFilerError; }
  void pushBackItem() override {}

private:
  bool begin(int code, bool fits);
  void putPoint(int code, double x, double y, double z);
  void end() { text_ += '\n'; }

  std::string& text_;
  std::vector<ZnDbReference>* apart_;
  Quorl::ErrorStatus status_ = Quorl::eOk;
};
