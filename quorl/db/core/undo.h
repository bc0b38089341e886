// The undo history of a drawing: steps of changes, each change an object's kept state.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "quorl/base/string.h"
#include "quorl/db/core/object_id.h"

class ZnDbObject;

class ZnDbUndoRecorder {
public:
  explicit ZnDbUndoRecorder(ZnDbDatabase& database);
  ~ZnDbUndoRecorder();

  // Steps. A step without a change leaves no trace. Starting one forgets what could be redone as soon as it
  // changes something.
  void startStep(const ZnString& label = ZnString());
  bool canUndo();
  bool canRedo();
  // Takes back the last step, or does it again, and begins a new step; eNothingToUndo when there is none,
  // eWasOpenForWrite or eWasOpenForRead, with nothing done, while an object of the step is open.
  Quorl::ErrorStatus undo();
  Quorl::ErrorStatus redo();
  // A mark within the history, and undoing back to it without a redo (an aborted transaction). What could be
  // redone at the mark can be redone again.
  size_t mark();
  void rollBackTo(size_t mark);
  // From here on states are kept anew although the step has them: a transaction begins within a step.
  void newStates() { ++stamp_; }
  size_t undoDepth();

  // The memory that the steps may take before the oldest are given up, whenever a step begins: UNDOMEMORY
  // megabytes, 0 for no bound. The last step stays whatever its size.
  size_t keptBytes() const;
  bool gaveUpSteps() const { return gaveUp_; } // there was more to undo once

  // For the time of an evaluation: where the step has no change of its own yet, what the evaluation does
  // finishes what the last step began, so it is undone with that, is no step, and leaves alone what can be
  // redone.
  class Amendment {
  public:
    explicit Amendment(ZnDbUndoRecorder& recorder);
    ~Amendment() { end(); }
    Amendment(const Amendment&) = delete;
    void end();

  private:
    ZnDbUndoRecorder& recorder_;
    bool amends_;
  };

  // While off, changes are not kept; the history so far is forgotten, since it would not fit any more.
  void setRecording(bool on);
  bool isRecording() const { return recording_; }
  bool isUndoing() const { return undoing_; }
  void clear();

  // Called by the database. keepState is a no-op for an object whose state the step has already.
  void keepState(ZnDbObject* object);
  // As keepState, for a note that may be taken back: if nothing else is kept before the step ends or is asked
  // about, and the object is then what it was, nothing has changed.
  void keepStateWhileItDiffers(ZnDbObject* object);
  void keepCreation(ZnDbObject* object);
  // A change outside of objects, as an exchange of two values that is its own inverse.
  void keepHeader(std::function<void()> exchange);

private:
  struct Record;
  struct Step;
  Step* begin(size_t count = 1); // null where nothing is to be kept
  static Quorl::ErrorStatus isFree(const Step& step);
  void settleNotes();
  void confirmNotes();
  size_t recordCount() const;
  void push(Step step);
  void giveUpOldest();
  void apply(Step& step, size_t count, Step& inverse);
  void restore(Step& step, const Record& record, Step& inverse);

  ZnDbDatabase& database_;
  std::unique_ptr<class ZnDbMemoryFiler> scratch_, reader_; // which keep their memory from object to object
  std::deque<Step> done_;
  std::vector<Step> undone_;
  // What could be redone before the youngest step changed something, and the mark at which that was.
  std::vector<Step> dropped_;
  size_t droppedAt_ = 0;
  bool amending_ = false;
  std::unique_ptr<Step> notes_; // states that are not known yet to have been changed
  std::uint32_t stamp_ = 1;
  bool recording_ = true, undoing_ = false, gaveUp_ = false;
};
