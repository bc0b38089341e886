// A text filer in memory: a list of items that is written, tampered with and read again.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "quorl/db/core/tdoc_filer.h"

namespace dbTest {

class TdocRecorder : public ZnDbTdocFiler {
public:
  std::vector<ZnDbTdocItem> items;

  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return nullptr; }
  // What an object writes as text, in one line an item. It is another description of its fields than the
  // binary one, so that a field which one of them leaves out shows.
  template<class Object> static std::string textOf(const Object& object) {
    TdocRecorder filer;
    object.tdocOutFields(filer);
    std::ostringstream text;
    text.precision(17);
    for (const ZnDbTdocItem& item : filer.items)
      text << item.code << ' ' << item.integer << ' ' << item.real << ' ' << item.point.x << ' '
           << item.point.y << ' ' << item.point.z << ' ' << item.text.utf8() << ' ' << item.id.handle().value
           << '\n';
    return text.str();
  }

  void writeSubclassMarker(const wchar_t* name) override { add(kMarker).text = name; }
  void writeBool(int code, bool value) override { add(code).integer = value; }
  void writeInteger(int code, std::int64_t value) override { add(code).integer = value; }
  void writeDouble(int code, double value) override { add(code).real = value; }
  void writeString(int code, const ZnString& value) override { add(code).text = value; }
  void writePoint3d(int code, const ZnGePoint3d& value) override { add(code).point = value; }
  void writeVector3d(int code, const ZnGeVector3d& value) override {
    add(code).point = ZnGePoint3d(value.x, value.y, value.z);
  }
  void writeBytes(int code, const void*, size_t) override { add(code); }
  void writeId(int code, ZnDbObjectId id) override { add(code).id = id; }

  bool atEndOfObject() override { return at_ >= items.size(); }
  bool atSubclassData(const wchar_t* name) override {
    if (atEndOfObject() || items[at_].code != kMarker || !(items[at_].text == name)) return false;
    ++at_;
    return true;
  }
  Quorl::ErrorStatus readItem(ZnDbTdocItem& item) override {
    if (atEndOfObject()) status_ = Quorl::eFilerError;
    if (status_ == Quorl::eOk) item = items[at_++];
    return status_;
  }
  void pushBackItem() override { --at_; }

private:
  static constexpr int kMarker = 100;
  ZnDbTdocItem& add(int code) {
    items.emplace_back().code = code;
    return items.back();
  }
  size_t at_ = 0;
  Quorl::ErrorStatus status_ = Quorl::eOk;
};

} // namespace dbTest
