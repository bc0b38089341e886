// A text filer that keeps its items in a list, for reading back what was written.
#pragma once

#include <vector>

#include "quorl/db/core/tdoc_filer.h"

class TdocListFiler : public ZnDbTdocFiler {
public:
  explicit TdocListFiler(ZnDbDatabase* database)
      : database_(database) {}
  std::vector<ZnDbTdocItem> items;
  void rewind() { at_ = 0; }

  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return database_; }

  void writeSubclassMarker(const wchar_t* name) override { add(100).text = ZnString(name); }
  void writeBool(int code, bool value) override { add(code).integer = value; }
  void writeInteger(int code, std::int64_t value) override { add(code).integer = value; }
  void writeDouble(int code, double value) override { add(code).real = value; }
  void writeString(int code, const ZnString& value) override { add(code).text = value; }
  void writePoint3d(int code, const ZnGePoint3d& value) override { add(code).point = value; }
  void writeVector3d(int code, const ZnGeVector3d& v) override {
    add(code).point = ZnGePoint3d(v.x, v.y, v.z);
  }
  void writeBytes(int code, const void*, size_t) override { add(code); }
  void writeId(int code, ZnDbObjectId id) override { add(code).id = id; }

  bool atEndOfObject() override { return at_ >= items.size(); }
  bool atSubclassData(const wchar_t* name) override {
    if (atEndOfObject() || items[at_].code != 100 || !(items[at_].text == name)) return false;
    ++at_;
    return true;
  }
  Quorl::ErrorStatus readItem(ZnDbTdocItem& item) override {
    if (atEndOfObject()) return Quorl::eFilerError;
    item = items[at_++];
    return Quorl::eOk;
  }
  void pushBackItem() override { --at_; }

private:
  ZnDbTdocItem& add(int code) {
    items.emplace_back().code = code;
    return items.back();
  }
  ZnDbDatabase* database_;
  Quorl::ErrorStatus status_ = Quorl::eOk;
  size_t at_ = 0;
};
