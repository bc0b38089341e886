// The walks over a class's description of its fields: out to and in from a binary filer, the same for text,
// and past a visitor. All have the same operations, which descriptions call in the order of the binary
// format.
#pragma once

#include <algorithm>
#include <type_traits>
#include <vector>

#include "quorl/base/array.h"
#include "quorl/db/core/field_codecs.h"
#include "quorl/db/core/field_rules.h"
#include "quorl/db/core/object_id.h"

// What an id must name. Without a class the audit leaves the id to the class that has it. instead gives what
// stands in for a missing target; without it the id becomes null.
struct ZnDbIdRule {
  const ZnRxClass* cls = nullptr;
  ZnDbObjectId (ZnDbDatabase::*instead)() const = nullptr;
  bool nullIsWritten = false; // in text, where else a null id is left out
};

// Lists of elements: which are filed, and which of those that were read are kept. For undo all are filed.
struct ZnDbKeepAll {
  template<class T> bool isFiled(const T&) const { return true; }
  template<class T> bool isKept(const T&) const { return true; }
};

inline void zndbAppend(std::vector<ZnDbObjectId>& list, ZnDbObjectId id) { list.push_back(id); }
inline void zndbAppend(ZnArray<ZnDbObjectId>& list, ZnDbObjectId id) { list.append(id); }

namespace Quorl {
// An erased id is in no file, and no clone's, where it counts as null; undo brings its object back.
// So for the time of a save are those that are kept for undo alone.
inline bool isFiledId(ZnDbObjectId id, bool forUndo) {
  return forUndo || (!id.isErased() && !id.slot()->leftOut);
}
} // namespace Quorl

// To a binary filer. For a filer in memory all calls are inlined: undo and clones go this way.
template<class Filer> class ZnDbFieldsOut {
public:
  static constexpr bool kReads = false;
  explicit ZnDbFieldsOut(Filer& filer)
      : filer_(filer) {}
  bool isGood() const { return filer_.status() == Quorl::eOk; }
  bool isForUndo() const { return filer_.kind() == ZnDbFiler::kUndo; }

  // The class's own part begins, with the version of its description. Sections of a version before oldest
  // never were.
  void section(const wchar_t* /*marker*/, std::int16_t version, std::int16_t /*oldest*/ = 1) {
    filer_.writeInt16(version);
  }
  // The part before all sections, whose text items have these codes.
  void leading(std::initializer_list<int> /*codes*/) {}
  // Whether the source has the fields that came with that version.
  bool since(std::int16_t /*version*/) const { return true; }

  template<class Value, class Rule = ZnDbRule::Usual>
  void field(int /*code*/, const wchar_t* /*name*/, Value&& value, const Rule& = {}) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    Codec::write(filer_, Codec::get(value));
  }
  // The same, but that text leaves an empty one out.
  template<class Value> void optional(int code, const wchar_t* name, Value&& value) {
    field(code, name, value);
  }
  void id(ZnReferenceKind kind, int /*code*/, const wchar_t* /*name*/, ZnDbObjectId& id,
          const ZnDbIdRule& = {}) {
    filer_.writeId(kind, Quorl::isFiledId(id, isForUndo()) ? id : ZnDbObjectId());
  }
  // Null and erased ones are left out.
  template<class List>
  void ids(ZnReferenceKind kind, int /*code*/, const wchar_t* /*name*/, List& list, const ZnDbIdRule& = {}) {
    const bool forUndo = isForUndo();
    filer_.writeInt32(countFiled(list, forUndo));
    for (const ZnDbObjectId id : list)
      if (Quorl::isFiledId(id, forUndo)) filer_.writeId(kind, id);
  }
  // Ids of which some are owned and some are only named.
  template<class List, class Owns>
  void mixedIds(int /*ownedCode*/, int /*namedCode*/, const wchar_t* /*name*/, List& list, Owns&& owns) {
    const bool forUndo = isForUndo();
    filer_.writeInt32(countFiled(list, forUndo));
    for (const ZnDbObjectId id : list) {
      if (!Quorl::isFiledId(id, forUndo)) continue;
      const bool owned = owns(id);
      filer_.writeBool(owned);
      filer_.writeId(owned ? ZnReferenceKind::kHardOwner : ZnReferenceKind::kSoftPointer, id);
    }
  }
  // Elements with fields of their own; in text an item of the code begins each.
  template<class T, class Element, class Keep = ZnDbKeepAll>
  void list(int /*code*/, const wchar_t* /*name*/, std::vector<T>& list, Element&& element, Keep keep = {}) {
    const bool forUndo = isForUndo();
    const auto isFiled = [&](const T& e) { return forUndo || keep.isFiled(e); };
    filer_.writeInt32(static_cast<std::int32_t>(std::count_if(list.begin(), list.end(), isFiled)));
    for (T& e : list)
      if (isFiled(e)) element(*this, e);
  }
  // Fields that are taken together or not at all: usable(shape) is what ties them.
  template<class Shape, class Fields, class Usable>
  void whole(const wchar_t* /*name*/, Shape& shape, Fields&& fields, Usable&&) {
    fields(*this, shape);
  }

private:
  template<class List> static std::int32_t countFiled(const List& list, bool forUndo) {
    return static_cast<std::int32_t>(std::count_if(
        list.begin(), list.end(), [&](ZnDbObjectId id) { return Quorl::isFiledId(id, forUndo); }));
  }
  Filer& filer_;
};

// What both readers do: a value is taken over once it is read and its rule allows it. What an object itself
// gave for undo or a clone is not judged: it is what stood there, and must come back.
template<class Filer> class ZnDbFieldsReading {
public:
  static constexpr bool kReads = true;
  bool isGood() const { return filer_.status() == Quorl::eOk; }

protected:
  ZnDbFieldsReading(Filer& filer, bool judges)
      : filer_(filer)
      , judges_(judges) {}
  void setDamaged() { filer_.setStatus(Quorl::eFileDamaged); }

  template<class Value, class Raw, class Rule> void take(Value&& value, Raw&& raw, const Rule& rule) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    if (!isGood()) return;
    if (!judges_ || rule(raw) == Quorl::eOk)
      Codec::set(value, std::move(raw));
    else
      setDamaged();
  }
  template<class Shape, class Fields, class Usable, class Walk>
  void takeWhole(Walk& walk, Shape& shape, Fields&& fields, Usable&& usable) {
    if (!isGood()) return;
    Shape read = shape;
    fields(walk, read);
    if (!isGood()) return;
    if (!judges_ || usable(read))
      shape = std::move(read);
    else
      setDamaged();
  }

  Filer& filer_;

private:
  bool judges_;
};

template<class Filer> class ZnDbFieldsIn : public ZnDbFieldsReading<Filer> {
public:
  using ZnDbFieldsReading<Filer>::isGood;
  explicit ZnDbFieldsIn(Filer& filer)
      : ZnDbFieldsReading<Filer>(filer, filer.kind() == ZnDbFiler::kFile) {}
  bool isForUndo() const { return filer_.kind() == ZnDbFiler::kUndo; }

  void section(const wchar_t* /*marker*/, std::int16_t version, std::int16_t oldest = 1) {
    version_ = filer_.readInt16();
    if (!isGood()) return;
    if (version_ > version) filer_.setStatus(Quorl::eNewerVersion);
    if (version_ < oldest) this->setDamaged();
  }
  void leading(std::initializer_list<int> /*codes*/) {}
  bool since(std::int16_t version) const { return version_ >= version; }

  template<class Value, class Rule = ZnDbRule::Usual>
  void field(int /*code*/, const wchar_t* /*name*/, Value&& value, const Rule& rule = {}) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    typename Codec::Raw raw{};
    Codec::read(filer_, raw);
    this->take(value, std::move(raw), rule);
  }
  template<class Value> void optional(int code, const wchar_t* name, Value&& value) {
    field(code, name, value);
  }
  void id(ZnReferenceKind kind, int /*code*/, const wchar_t* /*name*/, ZnDbObjectId& id,
          const ZnDbIdRule& = {}) {
    const ZnDbObjectId read = filer_.readId(kind);
    if (isGood()) id = read;
  }
  template<class List>
  void ids(ZnReferenceKind kind, int /*code*/, const wchar_t* /*name*/, List& list, const ZnDbIdRule& = {}) {
    readIds(list, [&] { return filer_.readId(kind); });
  }
  template<class List, class Owns>
  void mixedIds(int /*ownedCode*/, int /*namedCode*/, const wchar_t* /*name*/, List& list, Owns&&) {
    readIds(list, [&] {
      const bool owned = filer_.readBool();
      return filer_.readId(owned ? ZnReferenceKind::kHardOwner : ZnReferenceKind::kSoftPointer);
    });
  }
  template<class T, class Element, class Keep = ZnDbKeepAll>
  void list(int /*code*/, const wchar_t* /*name*/, std::vector<T>& list, Element&& element, Keep keep = {}) {
    std::vector<T> read;
    const int count = filer_.readCount();
    read.reserve(static_cast<size_t>(std::min(count, kMostAhead)));
    for (int left = count; left > 0 && isGood(); --left) {
      element(*this, read.emplace_back());
      if (!keep.isKept(read.back())) read.pop_back();
    }
    if (isGood()) list = std::move(read);
  }
  template<class Shape, class Fields, class Usable>
  void whole(const wchar_t* /*name*/, Shape& shape, Fields&& fields, Usable&& usable) {
    this->takeWhole(*this, shape, fields, usable);
  }

private:
  using ZnDbFieldsReading<Filer>::filer_;
  static constexpr int kMostAhead = 4096; // elements that a count alone makes room for

  template<class List, class Read> void readIds(List& list, Read&& readOne) {
    List read;
    const int count = filer_.readCount();
    for (int left = count; left > 0 && isGood(); --left)
      if (const ZnDbObjectId id = readOne(); !id.isNull()) zndbAppend(read, id);
    if (isGood()) list = std::move(read);
  }
  std::int16_t version_ = 0;
};

class ZnDbFieldsTextOut {
public:
  static constexpr bool kReads = false;
  explicit ZnDbFieldsTextOut(ZnDbTdocFiler& filer)
      : filer_(filer) {}
  bool isGood() const { return filer_.status() == Quorl::eOk; }
  bool isForUndo() const { return false; }

  void section(const wchar_t* marker, std::int16_t /*version*/, std::int16_t /*oldest*/ = 1) {
    filer_.writeSubclassMarker(marker);
  }
  void leading(std::initializer_list<int> /*codes*/) {}
  bool since(std::int16_t /*version*/) const { return true; }

  template<class Value, class Rule = ZnDbRule::Usual>
  void field(int code, const wchar_t* /*name*/, Value&& value, const Rule& = {}) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    Codec::writeText(filer_, code, Codec::get(value));
  }
  template<class Value> void optional(int code, const wchar_t* name, Value&& value) {
    if (!(value == std::remove_cvref_t<Value>{})) field(code, name, value);
  }
  void id(ZnReferenceKind /*kind*/, int code, const wchar_t* /*name*/, ZnDbObjectId& id,
          const ZnDbIdRule& rule = {}) {
    const bool isFiled = Quorl::isFiledId(id, isForUndo());
    if (rule.nullIsWritten || isFiled) filer_.writeId(code, isFiled ? id : ZnDbObjectId());
  }
  template<class List>
  void ids(ZnReferenceKind /*kind*/, int code, const wchar_t* /*name*/, List& list, const ZnDbIdRule& = {}) {
    for (const ZnDbObjectId id : list)
      if (Quorl::isFiledId(id, isForUndo())) filer_.writeId(code, id);
  }
  template<class List, class Owns>
  void mixedIds(int ownedCode, int namedCode, const wchar_t* /*name*/, List& list, Owns&& owns) {
    for (const ZnDbObjectId id : list)
      if (Quorl::isFiledId(id, isForUndo())) filer_.writeId(owns(id) ? ownedCode : namedCode, id);
  }
  template<class T, class Element, class Keep = ZnDbKeepAll>
  void list(int /*code*/, const wchar_t* /*name*/, std::vector<T>& list, Element&& element, Keep keep = {}) {
    for (T& e : list)
      if (keep.isFiled(e)) element(*this, e);
  }
  template<class Shape, class Fields, class Usable>
  void whole(const wchar_t* /*name*/, Shape& shape, Fields&& fields, Usable&&) {
    fields(*this, shape);
  }

private:
  ZnDbTdocFiler& filer_;
};

// A missing item or section leaves what stands.
class ZnDbFieldsTextIn : public ZnDbFieldsReading<ZnDbTdocFiler> {
public:
  explicit ZnDbFieldsTextIn(ZnDbTdocFiler& filer)
      : ZnDbFieldsReading(filer, true) {}
  bool isForUndo() const { return false; }

  void section(const wchar_t* marker, std::int16_t /*version*/, std::int16_t /*oldest*/ = 1) {
    found_ = zndbReadTdocSection(filer_, marker, read_);
    items_ = ZnDbTdocItems(found_ ? read_ : std::span<ZnDbTdocItem>());
  }
  void leading(std::initializer_list<int> codes) {
    zndbReadLeadingItems(filer_, codes, read_);
    items_ = ZnDbTdocItems(read_);
  }
  bool since(std::int16_t /*version*/) const { return true; }

  template<class Value, class Rule = ZnDbRule::Usual>
  void field(int code, const wchar_t* /*name*/, Value&& value, const Rule& rule = {}) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    typename Codec::Raw raw = Codec::get(value);
    if (Codec::readText(items_, code, raw)) take(value, std::move(raw), rule);
  }
  template<class Value> void optional(int code, const wchar_t* name, Value&& value) {
    field(code, name, value);
  }
  void id(ZnReferenceKind /*kind*/, int code, const wchar_t* /*name*/, ZnDbObjectId& id,
          const ZnDbIdRule& = {}) {
    if (const ZnDbTdocItem* item = items_.next(code); item && isGood()) id = item->id;
  }
  template<class List>
  void ids(ZnReferenceKind /*kind*/, int code, const wchar_t* /*name*/, List& list, const ZnDbIdRule& = {}) {
    readIds(list, [&](int c) { return c == code; });
  }
  template<class List, class Owns>
  void mixedIds(int ownedCode, int namedCode, const wchar_t* /*name*/, List& list, Owns&&) {
    readIds(list, [&](int c) { return c == ownedCode || c == namedCode; });
  }
  template<class T, class Element, class Keep = ZnDbKeepAll>
  void list(int code, const wchar_t* /*name*/, std::vector<T>& list, Element&& element, Keep keep = {}) {
    if (!found_ || !isGood()) return;
    std::vector<T> read;
    const std::span<ZnDbTdocItem> all = items_.all();
    const auto begins = [&](const ZnDbTdocItem& item) { return item.code == code; };
    auto begin = std::find_if(all.begin(), all.end(), begins);
    while (begin != all.end() && isGood()) {
      const auto end = std::find_if(begin + 1, all.end(), begins);
      ZnDbFieldsTextIn part(filer_, {begin, end});
      element(part, read.emplace_back());
      if (!keep.isKept(read.back())) read.pop_back();
      begin = end;
    }
    if (isGood()) list = std::move(read);
  }
  template<class Shape, class Fields, class Usable>
  void whole(const wchar_t* /*name*/, Shape& shape, Fields&& fields, Usable&& usable) {
    takeWhole(*this, shape, fields, usable);
  }

private:
  ZnDbFieldsTextIn(ZnDbTdocFiler& filer, std::span<ZnDbTdocItem> items)
      : ZnDbFieldsReading(filer, true)
      , items_(items)
      , found_(true) {}
  template<class List, class Wanted> void readIds(List& list, Wanted&& wanted) {
    if (!found_ || !isGood()) return;
    List read;
    for (const ZnDbTdocItem& item : items_.all())
      if (wanted(item.code) && !item.id.isNull()) zndbAppend(read, item.id);
    list = std::move(read);
  }

  std::vector<ZnDbTdocItem> read_;
  ZnDbTdocItems items_;
  bool found_ = false;
};

// Past a visitor, which may change what it sees.
class ZnDbFieldsVisit {
public:
  static constexpr bool kReads = true;
  // The database is that of the object; ids are not judged without it.
  ZnDbFieldsVisit(ZnDbFieldVisitor& visitor, const ZnDbDatabase* database)
      : visitor_(visitor)
      , database_(database) {}
  bool isGood() const { return true; }
  bool isForUndo() const { return false; }

  void section(const wchar_t* /*marker*/, std::int16_t /*version*/, std::int16_t /*oldest*/ = 1) {}
  void leading(std::initializer_list<int> /*codes*/) {}
  bool since(std::int16_t /*version*/) const { return true; }

  template<class Value, class Rule = ZnDbRule::Usual>
  void field(int code, const wchar_t* name, Value&& value, const Rule& rule = {}) {
    using Codec = ZnDbFieldCodec<std::remove_cvref_t<Value>>;
    const ZnDbField seen{code, name, rule(Codec::get(value)), entry_};
    if constexpr (requires { typename Codec::Shown; }) {
      typename Codec::Shown candidate = Codec::shown(Codec::get(value));
      const ZnDbFieldVisitor::Wish wish = visitor_.visit(seen, candidate);
      if (wish == ZnDbFieldVisitor::kKeep) return;
      typename Codec::Raw raw = Codec::get(value);
      if (wish == ZnDbFieldVisitor::kRepair) {
        rule.repair(raw);
        Codec::set(value, std::move(raw));
      } else {
        const Quorl::ErrorStatus status = Codec::take(candidate, raw) ? rule(raw) : Quorl::eOutOfRange;
        if (status == Quorl::eOk) Codec::set(value, std::move(raw));
        visitor_.taken(status);
      }
    } else {
      Codec::show(visitor_, seen, Codec::get(value));
    }
  }
  template<class Value> void optional(int code, const wchar_t* name, Value&& value) {
    field(code, name, value);
  }
  void id(ZnReferenceKind kind, int code, const wchar_t* name, ZnDbObjectId& id, const ZnDbIdRule& rule = {});
  template<class List>
  void ids(ZnReferenceKind kind, int code, const wchar_t* name, List& list, const ZnDbIdRule& rule = {}) {
    List kept;
    entry_ = 0;
    for (ZnDbObjectId id : list) {
      this->id(kind, code, name, id, rule);
      if (!id.isNull()) zndbAppend(kept, id);
      ++entry_;
    }
    entry_ = -1;
    if (!std::equal(kept.begin(), kept.end(), list.begin(), list.end())) list = std::move(kept);
  }
  template<class List, class Owns>
  void mixedIds(int ownedCode, int /*namedCode*/, const wchar_t* name, List& list, Owns&&) {
    ids(ZnReferenceKind::kHardOwner, ownedCode, name, list);
  }
  template<class T, class Element, class Keep = ZnDbKeepAll>
  void list(int /*code*/, const wchar_t* /*name*/, std::vector<T>& list, Element&& element, Keep = {}) {
    entry_ = 0;
    for (T& e : list) {
      element(*this, e);
      ++entry_;
    }
    entry_ = -1;
  }
  template<class Shape, class Fields, class Usable>
  void whole(const wchar_t* name, Shape& shape, Fields&& fields, Usable&& usable) {
    const Shape before = shape;
    const bool wasUsable = usable(shape);
    fields(*this, shape);
    if (wasUsable && !usable(shape)) {
      shape = before;
      visitor_.taken(Quorl::eInvalidInput);
    }
    const ZnDbField seen{0, name, usable(shape) ? Quorl::eOk : Quorl::eInvalidInput};
    if (visitor_.visitWhole(seen) == ZnDbFieldVisitor::kRepair) shape = Shape{};
  }

private:
  Quorl::ErrorStatus judge(ZnReferenceKind kind, ZnDbObjectId id, const ZnDbIdRule& rule) const;

  ZnDbFieldVisitor& visitor_;
  const ZnDbDatabase* database_;
  int entry_ = -1;
};
