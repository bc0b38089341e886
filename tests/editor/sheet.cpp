#include "editor/sheet.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <sstream>

#include "assoc/check_links.h"
#include "quorl/assoc/manager.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/core/undo.h"
#include "quorl/file/drawing_file.h"

namespace {

void evaluate(ZnDbDatabase& database) {
  ZnDbDatabase* const usual = zndbHostApplicationServices()->workingDatabase();
  if (usual != &database) zndbHostApplicationServices()->setWorkingDatabase(&database);
  ZnDbAssocManager::evaluateTopLevelNetwork(&database);
  if (usual != &database) zndbHostApplicationServices()->setWorkingDatabase(usual);
}

void markAll(ZnDbDatabase& database) {
  for (const ZnDbObjectId id : database.allObjectIds()) {
    if (id.isErased() || !id.isDerivedFrom(ZnDbAssocAction::desc())) continue;
    auto* action = static_cast<ZnDbAssocAction*>(id.slot()->object);
    if (ZnDbAssocNetwork::cast(action) || action->status() != kIsUpToDateAssocStatus) continue;
    action->setStatus(kChangedDirectlyAssocStatus);
  }
}

// Numbers that are never given twice, and the sums over them.
bool isGivenOnce(const std::string& code, const std::string& value) {
  return code == "1001" || value.empty();
}

// Reals that differ by rounding: the radius of a pattern's pitch circle is found from its members anew, and
// has been met to differ in the last digit.
bool differByRounding(const std::string& a, const std::string& b) {
  constexpr double kRounding = 1e-12;
  const int code = std::atoi(a.c_str());
  const size_t at = a.find(' ');
  if (code < 10 || code > 59 || a.substr(0, at) != b.substr(0, at)) return false;
  const double one = std::atof(a.c_str() + at), other = std::atof(b.c_str() + at);
  return std::abs(one - other) <= kRounding * std::max(1.0, std::abs(one));
}

} // namespace

Sheet::Sheet()
    : db_(std::make_unique<ZnDbDatabase>()) {
  states_.push_back(look(*db_));
}

std::string Sheet::look(const ZnDbDatabase& database) {
  std::istringstream text(zndbDrawingText(database));
  std::string code, value, kept, object;
  while (std::getline(text, code) && std::getline(text, value)) {
    if (code == "0") object = value;
    const bool isNumberToCome = code == "160" && object.ends_with("TABLE");
    if (value == "next-handle") {
      std::getline(text, code) && std::getline(text, value);
      continue;
    }
    if (!isGivenOnce(code, "x") && !isNumberToCome) kept += code + ' ' + value + '\n';
  }
  return kept;
}

std::string Sheet::difference(const std::string& is, const std::string& was, bool tolerant) {
  if (is == was) return {};
  std::istringstream one(is), other(was);
  std::string a, b, object, handle, name;
  do {
    if (a.starts_with("1 ") || a.starts_with("3 ")) name = a;
    if (a.starts_with("0 ")) object = a;
    if (a.starts_with("5 ")) handle = a;
    a.clear(), b.clear();
    std::getline(one, a);
    std::getline(other, b);
  } while ((a == b || (tolerant && differByRounding(a, b))) && (one || other));
  if (a == b) return {};
  return fmt::format("[{} / {}]: \"{}\" instead of \"{}\" under \"{}\"", object, handle, a, b, name);
}

void Sheet::begin() { db_->undoRecorder().startStep(); }

std::string Sheet::end(bool asText) {
  evaluate(*db_);
  const std::string now = look(*db_);
  const size_t depth = db_->undoRecorder().undoDepth();
  if (depth == at_)
    return now == states_[at_] ? std::string() : "a change was kept nowhere " + difference(now, states_[at_]);
  if (depth != at_ + 1) return fmt::format("{} steps can be undone instead of {}", depth, at_ + 1);
  for (const std::string& fault : {checkSound(), checkHistory(now), checkRebuilt(*db_), checkFile(asText)})
    if (!fault.empty()) return fault;
  states_.resize(++at_);
  states_.push_back(now);
  return {};
}

std::string Sheet::checkSound() {
  for (const auto& faults : {db_->audit(false), linkFaults(*db_)})
    if (!faults.empty()) return "audit: " + faults.front().utf8();
  return {};
}

// The step that was just made, undone and done again.
std::string Sheet::checkHistory(const std::string& now) {
  ZnDbUndoRecorder& history = db_->undoRecorder();
  if (const auto status = history.undo(); status != Quorl::eOk) return fmt::format("undo: {}", int(status));
  if (const std::string fault = difference(look(*db_), states_[at_]); !fault.empty())
    return "after undo " + fault;
  if (const std::string fault = checkSound(); !fault.empty()) return "after undo " + fault;
  evaluate(*db_);
  if (const std::string fault = difference(look(*db_), states_[at_]); !fault.empty())
    return "evaluated after undo " + fault;
  if (const auto status = history.redo(); status != Quorl::eOk) return fmt::format("redo: {}", int(status));
  if (const std::string fault = difference(look(*db_), now); !fault.empty()) return "after redo " + fault;
  if (const std::string fault = checkSound(); !fault.empty()) return "after redo " + fault;
  return {};
}

// All that is derived, derived anew, is what it was, and no step.
std::string Sheet::checkRebuilt(ZnDbDatabase& database) {
  const std::string before = look(database);
  database.undoRecorder().startStep();
  const size_t depth = database.undoRecorder().undoDepth();
  const ZnDbTransaction passing(database);
  markAll(database);
  evaluate(database);
  const std::string rebuilt = look(database);
  if (const std::string fault = difference(rebuilt, before, true); !fault.empty()) return "rebuilt " + fault;
  if (rebuilt != before) return {};
  return database.undoRecorder().undoDepth() == depth ? std::string() : "rebuilding was a step";
}

std::string Sheet::checkFile(bool asText) {
  std::string bytes;
  ZnFileError error;
  if (zndbDrawingToBytes(*db_, asText ? ZnDrawingFormat::kText : ZnDrawingFormat::kBinary, bytes, error) !=
      Quorl::eOk)
    return "save: " + error.text();
  const auto opened = zndbDrawingFromBytes(bytes, error);
  if (!opened) return "open: " + error.text();
  if (const std::string fault = difference(zndbDrawingText(*opened), zndbDrawingText(*db_)); !fault.empty())
    return "opened " + fault;
  if (const auto faults = opened->audit(false); !faults.empty()) return "opened: " + faults.front().utf8();
  const std::string fault = checkRebuilt(*opened);
  return fault.empty() ? fault : "opened and " + fault;
}

std::string Sheet::reopen(bool asText) {
  std::string bytes;
  ZnFileError error;
  if (zndbDrawingToBytes(*db_, asText ? ZnDrawingFormat::kText : ZnDrawingFormat::kBinary, bytes, error) !=
      Quorl::eOk)
    return "save: " + error.text();
  auto opened = zndbDrawingFromBytes(bytes, error);
  if (!opened) return "open: " + error.text();
  zndbHostApplicationServices()->setWorkingDatabase(opened.get());
  db_ = std::move(opened);
  const std::string fault = difference(look(*db_), states_[at_]);
  states_ = {look(*db_)};
  at_ = 0;
  return fault.empty() ? fault : "reopened " + fault;
}

std::string Sheet::oneStep(bool back) {
  ZnDbUndoRecorder& history = db_->undoRecorder();
  if (back ? at_ == 0 : at_ + 1 == states_.size()) {
    const bool can = back ? history.canUndo() : history.canRedo();
    return can ? "there is more to undo or redo than was done" : "";
  }
  const auto status = back ? history.undo() : history.redo();
  if (status != Quorl::eOk) return fmt::format("{}: {}", back ? "undo" : "redo", int(status));
  at_ = back ? at_ - 1 : at_ + 1;
  evaluate(*db_);
  const std::string fault = difference(look(*db_), states_[at_]);
  return fault.empty() ? fault : (back ? "undone further " : "redone further ") + fault;
}

std::string Sheet::wander(size_t back, size_t forth) {
  for (size_t i = 0; i < back + forth; ++i)
    if (const std::string fault = oneStep(i < back); !fault.empty()) return fault;
  return checkSound();
}
