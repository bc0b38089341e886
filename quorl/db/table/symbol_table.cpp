#include "quorl/db/table/symbol_table.h"

#include <algorithm>

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/object_access.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbSymbolTable, ZnDbObject)
ZNRX_DEFINE_ABSTRACT(ZnDbSymbolTableRecord, ZnDbObject)

namespace {

// The name of an anonymous block taken apart; kind is a position in byNumber_, or -1 for any other name.
struct AnonymousName {
  int kind = -1;
  size_t number = 0;
};
AnonymousName anonymousName(std::wstring_view name) {
  constexpr size_t kMostDigits = 9;
  if (name.size() < 3 || name.size() > 2 + kMostDigits || name[0] != L'*' || name[2] == L'0') return {};
  const wchar_t letter = Quorl::foldCase(name[1]);
  if (letter != L'u' && letter != L'd') return {};
  AnonymousName parts{letter == L'u' ? 0 : 1, 0};
  for (const wchar_t digit : name.substr(2)) {
    if (digit < L'0' || digit > L'9') return {};
    parts.number = parts.number * 10 + static_cast<size_t>(digit - L'0');
  }
  return parts;
}

const ZnDbSymbolTableRecord* recordOf(ZnDbObjectId id) {
  return id.isValid() ? ZnDbSymbolTableRecord::cast(id.slot()->object) : nullptr;
}

} // namespace

const ZnRxClass* ZnDbSymbolTable::recordClass() const { return ZnDbSymbolTableRecord::desc(); }

ZnDbObjectId ZnDbSymbolTable::at(const ZnString& name) const {
  if (const AnonymousName parts = anonymousName(name.view()); parts.kind >= 0) {
    const std::vector<ZnDbObjectId>& ids = byNumber_[parts.kind];
    if (parts.number < ids.size() && !ids[parts.number].isNull()) return ids[parts.number];
    if (!hasFarNumbers_) return {}; // and the name, most likely a new one, is not interned for nothing
  }
  const auto found = byName_.find(name.atom().folded());
  return found == byName_.end() ? ZnDbObjectId() : found->second;
}

// Erased records are seldom asked for, so that nothing is kept for finding them.
ErrorStatus ZnDbSymbolTable::getIdAt(const ZnString& name, ZnDbObjectId& id, bool getErased) const {
  id = at(name);
  for (size_t i = records_.size(); getErased && id.isNull() && i-- > 0;)
    if (const auto* record = recordOf(records_[i]); record && record->name().equalsNoCase(name))
      id = records_[i];
  return id.isNull() ? Quorl::eKeyNotFound : Quorl::eOk;
}

bool ZnDbSymbolTable::has(const ZnString& name) const {
  ZnDbObjectId id;
  return getIdAt(name, id) == Quorl::eOk;
}

// "*U" and "*D" ask for the next free number, so that anonymous blocks never meet.
ZnString ZnDbSymbolTable::completed(const ZnString& name) {
  if (!name.equalsNoCase(L"*U") && !name.equalsNoCase(L"*D")) return name;
  for (;;) {
    const ZnString numbered(std::wstring(name.view()) + std::to_wstring(nextAnonymous_++));
    if (at(numbered).isNull()) return numbered;
  }
}

ErrorStatus ZnDbSymbolTable::add(ZnDbObjectId& id, ZnDbSymbolTableRecord* record) {
  id.setNull();
  if (!record) return Quorl::eNullObjectPointer;
  if (!database()) return Quorl::eNotInDatabase;
  if (record->database()) return Quorl::eAlreadyInDatabase;
  if (!record->isKindOf(recordClass())) return Quorl::eWrongObjectClass;
  const ZnString name = completed(record->name());
  if (name.isEmpty()) return Quorl::eInvalidName;
  if (has(name)) return Quorl::eDuplicateKey;
  if (const ErrorStatus status = record->judgePlace(*database()); status != Quorl::eOk) return status;
  assertWriteEnabled();
  record->name_ = name;
  const ErrorStatus status = database()->addObject(record, objectId(), id);
  if (status != Quorl::eOk) return status;
  completeRecord(*record);
  records_.push_back(id);
  record->attachLinks();
  return Quorl::eOk;
}

// Of two records of one name, which only a damaged file has, the first is found.
void ZnDbSymbolTable::enterName(ZnDbObjectId id, const ZnString& name) {
  if (id.isErased() || !at(name).isNull()) return;
  if (const AnonymousName parts = anonymousName(name.view()); parts.kind >= 0) {
    // Numbers are given one after the other; one far off is from elsewhere, and a name like any other.
    std::vector<ZnDbObjectId>& ids = byNumber_[parts.kind];
    constexpr size_t kRoom = 4096;
    if (parts.number < 2 * ids.size() + kRoom) {
      if (parts.number >= ids.size()) ids.resize(parts.number + 1);
      ids[parts.number] = id;
      return;
    }
    hasFarNumbers_ = true;
  }
  byName_[name.atom().folded()] = id;
}

void ZnDbSymbolTable::removeName(ZnDbObjectId id, const ZnString& name) {
  if (const AnonymousName parts = anonymousName(name.view()); parts.kind >= 0) {
    std::vector<ZnDbObjectId>& ids = byNumber_[parts.kind];
    if (parts.number < ids.size() && ids[parts.number] == id) {
      ids[parts.number].setNull();
      return;
    }
  }
  const auto found = byName_.find(name.atom().folded());
  if (found != byName_.end() && found->second == id) byName_.erase(found);
}

void ZnDbSymbolTable::clearIndex() {
  byName_.clear();
  for (std::vector<ZnDbObjectId>& ids : byNumber_) ids.clear();
  hasFarNumbers_ = false;
}

ErrorStatus ZnDbSymbolTable::subErase(bool erasing) { return erasing ? Quorl::eInUse : Quorl::eOk; }

ErrorStatus ZnDbSymbolTable::newIterator(ZnDbSymbolTableIterator*& iterator, bool skipDeleted) const {
  iterator = new ZnDbSymbolTableIterator(records_, skipDeleted);
  return Quorl::eOk;
}

// A member's own record undoes its coming and going. Names are read with the records.
template<class Walk> void ZnDbSymbolTable::describe(Walk& walk) {
  walk.section(className(), 0, 0);
  if (walk.isForUndo()) return;
  walk.field(160, L"next anonymous number", nextAnonymous_);
  walk.ids(ZnReferenceKind::kHardOwner, 360, L"record", records_);
}

ZNDB_DEFINE_FIELDS(ZnDbSymbolTable, ZnDbObject)

// Names are read with the records, so the index can only be made when all are there.
void ZnDbSymbolTable::loaded() {
  clearIndex();
  for (const ZnDbObjectId id : records_)
    if (const ZnDbSymbolTableRecord* record = recordOf(id)) enterName(id, record->name());
}

void ZnDbSymbolTable::memberAdded(ZnDbObjectId id) {
  if (std::find(records_.rbegin(), records_.rend(), id) == records_.rend()) records_.push_back(id);
  const ZnDbSymbolTableRecord* record = recordOf(id);
  if (!record) return;
  // A cloned anonymous block comes with its original's name.
  if (has(record->name())) {
    auto* renamed = const_cast<ZnDbSymbolTableRecord*>(record);
    const bool anonymous = record->name().view().starts_with(L"*") && record->name().length() > 1;
    renamed->name_ = completed(anonymous ? record->name().left(2) : record->name());
  }
  enterName(id, record->name());
}

// From behind: what is taken back was mostly added last.
void ZnDbSymbolTable::memberRemoved(ZnDbObjectId id) {
  const auto found = std::find(records_.rbegin(), records_.rend(), id);
  if (found != records_.rend()) records_.erase(std::next(found).base());
  const auto* record = id.isNull() ? nullptr : ZnDbSymbolTableRecord::cast(id.slot()->object);
  if (record) removeName(id, record->name());
}

void ZnDbSymbolTable::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  for (size_t i = 0; i < records_.size(); ++i) {
    const ZnDbSymbolTableRecord* record = recordOf(records_[i]);
    if (record && record->ownerId() == objectId() && record->isKindOf(recordClass())) continue;
    faults.push_back(isA()->name() + L": entry " + handleText(records_[i].handle()) +
                     L" is no record of this table");
    if (fix) records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(i--));
  }
  auditNames(faults, fix);
}

// A name finds one live record, which has it, and each live record is found by its name.
void ZnDbSymbolTable::auditNames(std::vector<ZnString>& faults, bool fix) {
  const auto hasName = [](ZnDbObjectId id, const ZnAtom& folded) {
    return !id.isErased() && recordOf(id) && recordOf(id)->name().atom().folded() == folded;
  };
  bool isStale = false;
  for (const auto& [folded, id] : byName_) isStale = isStale || !hasName(id, folded);
  for (const std::vector<ZnDbObjectId>& ids : byNumber_)
    for (const ZnDbObjectId id : ids) isStale = isStale || (!id.isNull() && id.isErased());
  if (isStale) {
    faults.push_back(isA()->name() + L": a name in it finds no record of that name");
    if (fix) loaded();
  }
  const std::vector<ZnDbObjectId> records = records_; // a record that is renamed enters its name
  for (const ZnDbObjectId id : records) {
    const ZnDbSymbolTableRecord* record = id.isErased() ? nullptr : recordOf(id);
    if (!record || at(record->name()) == id) continue;
    const bool isTaken = has(record->name());
    faults.push_back(record->auditLabel() + L": " +
                     (isTaken ? L"another has its name " : L"is not found as ") + record->name());
    if (!fix) continue;
    ZnDbHolder<ZnDbSymbolTableRecord> renamed;
    if (!isTaken)
      enterName(id, record->name());
    else if (renamed.openForWrite(id, false, true) == Quorl::eOk)
      renamed->setName(freeName(record->name()));
  }
}

ZnString ZnDbSymbolTable::freeName(const ZnString& taken) {
  if (taken.view().starts_with(L"*")) return completed(taken.left(2));
  for (int number = 2;; ++number) {
    const ZnString name(std::wstring(taken.view()) + L"_" + std::to_wstring(number));
    if (!has(name)) return name;
  }
}

ZnDbSymbolTableIterator::ZnDbSymbolTableIterator(std::vector<ZnDbObjectId> ids, bool skipDeleted)
    : ids_(std::move(ids))
    , skipDeleted_(skipDeleted) {
  start();
}

void ZnDbSymbolTableIterator::start() {
  at_ = 0;
  skip();
}

void ZnDbSymbolTableIterator::step() {
  if (done()) return;
  ++at_;
  skip();
}

void ZnDbSymbolTableIterator::skip() {
  while (skipDeleted_ && !done() && ids_[at_].isErased()) ++at_;
}

ErrorStatus ZnDbSymbolTableIterator::getRecordId(ZnDbObjectId& id) const {
  if (done()) return Quorl::eOutOfRange;
  id = ids_[at_];
  return Quorl::eOk;
}

ErrorStatus ZnDbSymbolTableRecord::getName(ZnString& name) const {
  name = name_;
  return Quorl::eOk;
}

ZnDbSymbolTable* ZnDbSymbolTableRecord::table() const {
  return ownerId().isValid() ? ZnDbSymbolTable::cast(ownerId().slot()->object) : nullptr;
}

namespace {

// Names that begin with a star are the drawing's own: spaces and anonymous blocks.
ErrorStatus judgeName(const ZnString& name) {
  return name.view().starts_with(L"*") ? Quorl::eOk : ZnDbSymbolUtilities::validateSymbolName(name, true);
}

} // namespace

ErrorStatus ZnDbSymbolTableRecord::setName(const ZnString& name) {
  if (const ErrorStatus status = judgeName(name); status != Quorl::eOk) return status;
  if (database() && !(name == name_) && database()->headerIds().standsUnderItsName(objectId()))
    return Quorl::eInUse;
  if (table() && !name_.equalsNoCase(name) && table()->has(name)) return Quorl::eDuplicateKey;
  assertWriteEnabled();
  detachLinks();
  name_ = name;
  attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbSymbolTableRecord::judgePlace(const ZnDbDatabase& /*drawing*/) const {
  ZnDbObjectId known;
  if (table() && table()->getIdAt(name_, known) == Quorl::eOk && known != objectId())
    return Quorl::eDuplicateKey;
  return judgeName(name_);
}

void ZnDbSymbolTableRecord::attachLinks() {
  if (table() && !isErased()) table()->enterName(objectId(), name_);
}

void ZnDbSymbolTableRecord::detachLinks() {
  if (table()) table()->removeName(objectId(), name_);
}

ErrorStatus ZnDbSymbolTableRecord::subErase(bool erasing) {
  if (!erasing) return Quorl::eOk;
  return objectId().slot()->users > 0 || database()->headerIds().needs(objectId()) ? Quorl::eInUse
                                                                                   : Quorl::eOk;
}

template<class Walk> void ZnDbSymbolTableRecord::describe(Walk& walk) {
  walk.section(className(), 0, 0);
  walk.field(2, L"name", name_);
}

ZNDB_DEFINE_FIELDS(ZnDbSymbolTableRecord, ZnDbObject)

namespace ZnDbSymbolUtilities {

namespace {
constexpr std::wstring_view kRefused = L"<>/\\\":;?*|,=`";
constexpr int kLongestName = 255;

bool isRefused(wchar_t c, bool allowVerticalBar) {
  if (c == L'|' && allowVerticalBar) return false;
  return c < 32 || c == 127 || kRefused.find(c) != std::wstring_view::npos;
}
} // namespace

ErrorStatus validateSymbolName(const ZnString& name, bool allowVerticalBar) {
  const std::wstring_view text = name.view();
  if (text.empty() || name.length() > kLongestName || text.front() == L' ' || text.back() == L' ')
    return Quorl::eInvalidName;
  const bool bad =
      std::any_of(text.begin(), text.end(), [&](wchar_t c) { return isRefused(c, allowVerticalBar); });
  return bad ? Quorl::eInvalidName : Quorl::eOk;
}

ZnString repairSymbolName(const ZnString& name) {
  ZnString trimmed(name.left(kLongestName));
  trimmed.trimLeft(L" ").trimRight(L" ");
  std::wstring text(trimmed.view());
  std::replace_if(
      text.begin(), text.end(), [](wchar_t c) { return isRefused(c, false); }, L'_');
  return text.empty() ? ZnString(L"_") : ZnString(text);
}

ZnDbObjectId layerZeroId(const ZnDbDatabase* database) {
  return database ? database->layerZero() : ZnDbObjectId();
}

} // namespace ZnDbSymbolUtilities
