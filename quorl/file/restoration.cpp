#include "quorl/file/restoration.h"

#include <algorithm>
#include <cmath>

#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/drawing_sources.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/salvage.h"

namespace {

constexpr char kHeader[] = "section header";

// Nobody else is about while a drawing is read.
class Writing {
public:
  explicit Writing(ZnDbObjectId id)
      : slot_(id.slot()) {
    ++slot_->writers;
  }
  ~Writing() { --slot_->writers; }
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

private:
  ZnDbSlot* slot_;
};

class Restoration {
public:
  Restoration(ZnDbDatabase& database, ZnHandleIndex& index, ZnDrawingHeader& header, ZnSalvage& salvage)
      : database_(database)
      , index_(index)
      , header_(header)
      , salvage_(salvage) {}

  void run() {
    header_.nextHandle = std::max(std::min(header_.nextHandle, kLargestHandle), index_.lastHandle() + 1);
    restoreAxes();
    firstMade_ = header_.nextHandle;
    for (size_t i = 0; i < ZnDrawingHeader::kIds; ++i) restore(i);
    for (size_t i = 0; i < index_.size(); ++i)
      if (const ZnDbObjectId id = index_.at(i); !id.isNull() && id.slot()->object->ownerId().isNull())
        rehome(id);
  }

private:
  static constexpr std::uint64_t kLargestHandle = std::uint64_t{1} << 62;

  void note(const std::string& what) {
    ZnFileError error;
    error.fail(Quorl::eFileDamaged, kHeader, what);
    salvage_.note(error);
  }

  void restoreAxes() {
    const auto isNumber = [](double element) { return std::isfinite(element); };
    if (std::all_of(header_.ucs.begin(), header_.ucs.end(), isNumber)) return;
    header_.ucs = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};
    note("the user's axes were lost; they are those of the world now");
  }

  void restore(size_t i) {
    const ZnDrawingHeader::Place& place = ZnDrawingHeader::place(i);
    const ZnDbObjectId named = index_.find(header_.handles[i]);
    // What was never set is 0 in a header that is whole.
    const bool isUnset = !place.required && header_.handles[i] == 0 && !salvage_.hasTold();
    if (named.isDerivedFrom(place.cls()) || isUnset) return;
    ZnDbObjectId id = found(place);
    const bool isFound = !id.isNull();
    if (!isFound && (place.required || place.record)) id = made(place);
    header_.handles[i] = id.handle().value;
    if (!id.isNull())
      note(std::string(place.name) + " was lost; " + (isFound ? "found again as " : "made anew as ") +
           handleText(id.handle()).utf8());
  }

  // A dictionary has no name by which it could be told from others.
  ZnDbObjectId found(const ZnDrawingHeader::Place& place) const {
    const bool isTable = place.cls()->isDerivedFrom(ZnDbSymbolTable::desc());
    if (!isTable && !place.record) return {};
    for (size_t i = 0; i < index_.size(); ++i) {
      const ZnDbObjectId id = index_.at(i);
      if (id.isNull() || !id.isDerivedFrom(place.cls())) continue;
      const auto* record = ZnDbSymbolTableRecord::cast(id.slot()->object);
      if (isTable || (record && record->name().equalsNoCase(place.record))) return id;
    }
    return {};
  }

  ZnDbObjectId made(const ZnDrawingHeader::Place& place) {
    std::unique_ptr<ZnDbObject> object(static_cast<ZnDbObject*>(place.cls()->create()));
    if (auto* record = ZnDbSymbolTableRecord::cast(object.get())) record->setName(place.record);
    const std::uint64_t handle = header_.nextHandle++;
    QUORL_ASSERT(Quorl::addSlot(database_, index_, handle, header_.nextHandle));
    index_.finish();
    const ZnDbObjectId id = index_.find(handle);
    Quorl::install(database_, id, std::move(object));
    return id;
  }

  // The tables stand first among the places, so they are there by now.
  ZnDbObjectId homeOf(ZnDbObjectId id) const {
    if (id.isDerivedFrom(ZnDbEntity::desc())) return headerId(ZnDrawingHeader::kModelSpace);
    for (size_t i = 0; i < ZnDrawingHeader::kTables; ++i) {
      const ZnDbObjectId table = headerId(i);
      if (id.isDerivedFrom(static_cast<ZnDbSymbolTable*>(table.slot()->object)->recordClass())) return table;
    }
    return {};
  }
  ZnDbObjectId headerId(size_t i) const { return index_.find(header_.handles[i]); }

  void rehome(ZnDbObjectId id) {
    for (size_t i = 0; i <= ZnDrawingHeader::kTables; ++i) // the dictionary of named objects is the last
      if (headerId(i) == id) return;
    const std::string place = Quorl::objectPlace(id.handle(), id.objectClass()->name().utf8());
    const ZnDbObjectId home = homeOf(id);
    ZnFileError error;
    if (home.isNull()) {
      error.fail(Quorl::eFileDamaged, place, "its owner is lost");
      salvage_.lose(id.handle(), error);
      return;
    }
    error.fail(Quorl::eFileDamaged, place,
               "its owner is lost; it is now in " +
                   Quorl::objectPlace(home.handle(), home.objectClass()->name().utf8()));
    if (id.handle().value < firstMade_) salvage_.note(error); // what was made anew is told already
    const Writing object(id), owner(home);
    id.slot()->object->setOwnerId(home);
    home.slot()->object->memberAdded(id);
  }

  ZnDbDatabase& database_;
  ZnHandleIndex& index_;
  ZnDrawingHeader& header_;
  ZnSalvage& salvage_;
  std::uint64_t firstMade_ = 0;
};

} // namespace

void Quorl::restoreEssentials(ZnDbDatabase& database, ZnHandleIndex& index, ZnDrawingHeader& header,
                              ZnSalvage& salvage) {
  Restoration(database, index, header, salvage).run();
}

void Quorl::loseReferencesIn(ZnDbDatabase& database, const ZnFileError& error, ZnSalvage& salvage) {
  ZnDbObjectId id;
  if (database.getZnDbObjectId(id, false, error.object) != Quorl::eOk || !id.isValid()) return;
  const auto* block = ZnDbBlockTableRecord::cast(id.slot()->object);
  if (!block) return;
  for (const ZnDbObjectId member : block->entityIds())
    if (member.isDerivedFrom(ZnDbBlockReference::desc())) salvage.lose(member.handle(), error);
}
