#include "quorl/db/core/undo.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/core/transaction.h"
#include "quorl/rx/variables_dictionary.h"

using Quorl::ErrorStatus;

// One change. State: the object's fields, in the step's bytes, and erased mark as they were. Creation: the
// object came into being (or, in a redo list, is to come back). Header: a value outside of objects, by its
// place in the step's exchanges.
struct ZnDbUndoRecorder::Record {
  enum Kind { kState, kCreation, kHeader } kind = kState;
  bool erased = false;
  ZnDbObjectId id;
  size_t at = 0;
  size_t size = 0;
};

// The states of a step stand one after the other: keeping one costs no memory of its own.
struct ZnDbUndoRecorder::Step {
  ZnString label;
  std::vector<Record> records;
  std::string bytes;
  std::vector<std::function<void()>> exchanges;
  size_t before = 0;      // records of all earlier steps
  size_t bytesBefore = 0; // and their memory

  size_t memory() const {
    constexpr size_t kExchange = 128; // a function with what it holds, about
    return sizeof(Step) + records.size() * sizeof(Record) + bytes.size() + exchanges.size() * kExchange;
  }

  void addState(ZnDbObjectId id, bool erased, std::string_view state) {
    records.push_back({Record::kState, erased, id, bytes.size(), state.size()});
    bytes += state;
  }
  std::string_view stateOf(const Record& record) const {
    return std::string_view(bytes).substr(record.at, record.size);
  }
  void addCreation(ZnDbObjectId id, bool erased) { records.push_back({Record::kCreation, erased, id, 0, 0}); }
  void addExchange(std::function<void()> exchange) {
    records.push_back({Record::kHeader, false, {}, exchanges.size(), 0});
    exchanges.push_back(std::move(exchange));
  }
};

ZnDbUndoRecorder::ZnDbUndoRecorder(ZnDbDatabase& database)
    : database_(database)
    , scratch_(std::make_unique<ZnDbMemoryFiler>(ZnDbFiler::kUndo, &database))
    , reader_(std::make_unique<ZnDbMemoryFiler>(ZnDbFiler::kUndo, &database))
    , notes_(std::make_unique<Step>()) {}

ZnDbUndoRecorder::~ZnDbUndoRecorder() = default;

void ZnDbUndoRecorder::startStep(const ZnString& label) {
  settleNotes();
  ++stamp_;
  if (recordCount() != droppedAt_) dropped_.clear();
  giveUpOldest();
  if (!done_.empty() && done_.back().records.empty())
    done_.back().label = label;
  else
    push({label, {}, {}, {}});
}

void ZnDbUndoRecorder::push(Step step) {
  step.before = recordCount();
  if (!done_.empty()) step.bytesBefore = done_.back().bytesBefore + done_.back().memory();
  done_.push_back(std::move(step));
}

size_t ZnDbUndoRecorder::keptBytes() const {
  if (done_.empty()) return 0;
  return done_.back().bytesBefore + done_.back().memory() - done_.front().bytesBefore;
}

// Marks count records from the first step that ever was, so that they hold whatever is given up. An open
// transaction may still need what stands before it.
void ZnDbUndoRecorder::giveUpOldest() {
  if (database_.transactionManager().activeTransactionCount() > 0) return;
  constexpr size_t kMegabyte = size_t{1} << 20;
  const size_t bound =
      static_cast<size_t>(ZnRxVariablesDictionary::get()->getInt16(L"UNDOMEMORY")) * kMegabyte;
  while (bound > 0 && keptBytes() > bound && done_.size() > (done_.back().records.empty() ? 2 : 1)) {
    done_.pop_front();
    gaveUp_ = true;
  }
}

bool ZnDbUndoRecorder::canUndo() { return undoDepth() > 0; }

bool ZnDbUndoRecorder::canRedo() {
  settleNotes();
  return !undone_.empty();
}

size_t ZnDbUndoRecorder::undoDepth() {
  settleNotes();
  return done_.size() - (!done_.empty() && done_.back().records.empty() ? 1 : 0);
}

// Where so many changes go: into the step, the first of which makes redoing impossible unless it is taken
// back; or, as part of an amendment, into the step before, and into none where the drawing came that way.
ZnDbUndoRecorder::Step* ZnDbUndoRecorder::begin(size_t count) {
  if (amending_) {
    if (done_.size() < 2) return nullptr;
    done_.back().before += count;
    return &done_[done_.size() - 2];
  }
  if (done_.empty()) push({});
  if (!undone_.empty()) {
    dropped_ = std::exchange(undone_, {});
    droppedAt_ = recordCount();
  }
  return &done_.back();
}

void ZnDbUndoRecorder::keepState(ZnDbObject* object) {
  ZnDbSlot* slot = ZnDbObjectAccess::slot(object);
  if (!recording_ || undoing_) return;
  confirmNotes();
  if (slot->undoStamp == stamp_) return;
  slot->undoStamp = stamp_;
  Step* step = begin();
  if (!step) return;
  scratch_->clear();
  object->bdocOutFields(*scratch_);
  step->addState(object->objectId(), slot->erased, scratch_->bytes());
}

void ZnDbUndoRecorder::keepStateWhileItDiffers(ZnDbObject* object) {
  ZnDbSlot* slot = ZnDbObjectAccess::slot(object);
  if (!recording_ || undoing_ || slot->undoStamp == stamp_) return;
  slot->undoStamp = stamp_;
  scratch_->clear();
  object->bdocOutFields(*scratch_);
  notes_->addState(object->objectId(), slot->erased, scratch_->bytes());
}

// The notes come first: they were taken before what is kept next.
void ZnDbUndoRecorder::confirmNotes() {
  if (notes_->records.empty()) return;
  if (Step* step = begin(notes_->records.size()))
    for (const Record& note : notes_->records) step->addState(note.id, note.erased, notes_->stateOf(note));
  notes_->records.clear();
  notes_->bytes.clear();
}

// A note of what is now as it was is dropped.
void ZnDbUndoRecorder::settleNotes() {
  std::erase_if(notes_->records, [&](const Record& note) {
    ZnDbSlot* slot = note.id.slot();
    scratch_->clear();
    slot->object->bdocOutFields(*scratch_);
    const bool isAsItWas = slot->erased == note.erased && scratch_->bytes() == notes_->stateOf(note);
    if (isAsItWas) slot->undoStamp = 0;
    return isAsItWas;
  });
  confirmNotes();
  notes_->bytes.clear();
}

void ZnDbUndoRecorder::keepCreation(ZnDbObject* object) {
  if (!recording_ || undoing_) return;
  confirmNotes();
  ZnDbObjectAccess::slot(object)->undoStamp = stamp_;
  if (Step* step = begin()) step->addCreation(object->objectId(), true);
}

void ZnDbUndoRecorder::keepHeader(std::function<void()> exchange) {
  if (!recording_ || undoing_) return;
  confirmNotes();
  if (Step* step = begin()) step->addExchange(std::move(exchange));
}

// Notes that wait belong to what was done before.
ZnDbUndoRecorder::Amendment::Amendment(ZnDbUndoRecorder& recorder)
    : recorder_(recorder)
    , amends_(recorder.recording_ && !recorder.amending_ && !recorder.undoing_ &&
              recorder.notes_->records.empty() &&
              (recorder.done_.empty() || recorder.done_.back().records.empty())) {
  if (!amends_) return;
  if (recorder_.done_.empty()) recorder_.push({});
  recorder_.amending_ = true;
  recorder_.newStates();
}

void ZnDbUndoRecorder::Amendment::end() {
  if (!std::exchange(amends_, false)) return;
  recorder_.settleNotes();
  recorder_.amending_ = false;
  if (recorder_.done_.size() > 1) {
    const Step& amended = recorder_.done_[recorder_.done_.size() - 2];
    recorder_.done_.back().bytesBefore = amended.bytesBefore + amended.memory();
  }
  recorder_.newStates();
}

namespace {

// The owner's list of members follows the object's owner id.
void moveMembership(ZnDbObjectId member, ZnDbObjectId from, ZnDbObjectId to) {
  if (from == to) return;
  if (from.isValid()) from.slot()->object->memberRemoved(member);
  if (to.isValid()) to.slot()->object->memberAdded(member);
}

} // namespace

// Puts the record's state in place and keeps what stood there as the inverse.
void ZnDbUndoRecorder::restore(Step& step, const Record& record, Step& inverse) {
  if (record.kind == Record::kHeader) {
    step.exchanges[record.at]();
    inverse.addExchange(step.exchanges[record.at]);
    return;
  }
  ZnDbSlot* slot = record.id.slot();
  ZnDbObject* object = slot->object;
  const bool wasErased = slot->erased;
  if (record.kind == Record::kCreation) {
    inverse.addCreation(record.id, wasErased);
    ZnDbObjectAccess::markErased(object, record.erased);
    ZnDbObjectAccess::tellErased(object);
    return;
  }
  scratch_->clear();
  object->bdocOutFields(*scratch_);
  inverse.addState(record.id, wasErased, scratch_->bytes());
  const ZnDbObjectId ownerBefore = object->ownerId();
  if (!wasErased) object->detachLinks();
  reader_->copyBytes(step.stateOf(record));
  // Reading the old fields is no change of its own: nobody is told of it here.
  ++slot->writers;
  object->modified_ = true;
  const ErrorStatus status = object->bdocInFields(*reader_);
  object->modified_ = object->fieldsChanged_ = false;
  --slot->writers;
  QUORL_ASSERT(status == Quorl::eOk);
  moveMembership(record.id, ownerBefore, object->ownerId());
  if (!wasErased && !record.erased) object->attachLinks();
  ZnDbObjectAccess::markErased(object, record.erased);
  if (wasErased != record.erased)
    ZnDbObjectAccess::tellErased(object);
  else
    ZnDbObjectAccess::tellModified(object, true);
}

// The youngest records, backwards, so that each object meets the world in which its state was kept.
void ZnDbUndoRecorder::apply(Step& step, size_t count, Step& inverse) {
  undoing_ = true;
  for (size_t i = 0; i < count; ++i) restore(step, step.records[step.records.size() - 1 - i], inverse);
  undoing_ = false;
  ++stamp_;
}

ErrorStatus ZnDbUndoRecorder::isFree(const Step& step) {
  for (const Record& record : step.records) {
    if (record.kind == Record::kHeader) continue;
    if (record.id.slot()->writers) return Quorl::eWasOpenForWrite;
    if (record.id.slot()->readers) return Quorl::eWasOpenForRead;
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbUndoRecorder::undo() {
  settleNotes();
  while (!done_.empty() && done_.back().records.empty()) done_.pop_back();
  if (done_.empty()) return Quorl::eNothingToUndo;
  if (const ErrorStatus status = isFree(done_.back()); status != Quorl::eOk) return status;
  dropped_.clear();
  Step step = std::move(done_.back());
  done_.pop_back();
  Step back{step.label, {}, {}, {}};
  apply(step, step.records.size(), back);
  undone_.push_back(std::move(back));
  startStep();
  return Quorl::eOk;
}

ErrorStatus ZnDbUndoRecorder::redo() {
  settleNotes();
  if (undone_.empty()) return Quorl::eNothingToUndo;
  if (const ErrorStatus status = isFree(undone_.back()); status != Quorl::eOk) return status;
  while (!done_.empty() && done_.back().records.empty()) done_.pop_back();
  Step step = std::move(undone_.back());
  undone_.pop_back();
  Step back{step.label, {}, {}, {}};
  apply(step, step.records.size(), back);
  push(std::move(back));
  startStep();
  return Quorl::eOk;
}

size_t ZnDbUndoRecorder::mark() {
  settleNotes();
  return recordCount();
}

size_t ZnDbUndoRecorder::recordCount() const {
  return done_.empty() ? 0 : done_.back().before + done_.back().records.size();
}

void ZnDbUndoRecorder::rollBackTo(size_t mark) {
  size_t count = this->mark();
  while (count > mark && !done_.empty()) {
    Step& step = done_.back();
    const size_t take = std::min(step.records.size(), count - mark);
    Step dropped;
    apply(step, take, dropped);
    step.records.resize(step.records.size() - take);
    count -= take;
    if (step.records.empty() && count > mark) done_.pop_back();
  }
  if (recordCount() == droppedAt_ && !dropped_.empty()) undone_ = std::exchange(dropped_, {});
}

void ZnDbUndoRecorder::setRecording(bool on) {
  if (recording_ == on) return;
  recording_ = on;
  clear();
}

void ZnDbUndoRecorder::clear() {
  *notes_ = {};
  done_.clear();
  undone_.clear();
  dropped_.clear();
  gaveUp_ = false;
  ++stamp_;
}
