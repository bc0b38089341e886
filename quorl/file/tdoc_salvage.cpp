// What the reader of the text format does with a damaged file: it looks for the next thing that it knows.
#include <algorithm>

#include "quorl/file/salvage.h"
#include "quorl/file/tdoc_layout.h"
#include "quorl/file/tdoc_reader.h"

namespace {

// Line by line, whether two make a pair or not.
class Lines {
public:
  Lines(std::string_view text, size_t at, size_t line)
      : text_(text)
      , at_(std::min(at, text.size()))
      , line_(line) {}
  bool atEnd() const { return at_ >= text_.size(); }
  size_t position() const { return at_; }
  size_t line() const { return line_; }
  // The line so many below this one; empty behind the end.
  std::string_view peek(int below) const {
    size_t at = at_;
    for (; below > 0 && at < text_.size(); --below) at = endFrom(at) + 1;
    return at < text_.size() ? text_.substr(at, endFrom(at) - at) : std::string_view();
  }
  void step() {
    at_ = endFrom(at_) + 1;
    ++line_;
  }

private:
  size_t endFrom(size_t at) const { return std::min(text_.find('\n', at), text_.size()); }
  std::string_view text_;
  size_t at_, line_;
};

} // namespace

bool ZnTdocReader::passesOver(bool done, ZnFileError& error) {
  if (!done) salvage_->note(error);
  error = {};
  return done;
}

// To behind the line that names the section; false, and nothing moved, where there is none below.
bool ZnTdocReader::moveToSection(std::string_view name) {
  const std::string code = std::to_string(Quorl::kTdocSection);
  for (Lines lines(text_, lines_.position(), lines_.line()); !lines.atEnd(); lines.step()) {
    if (lines.peek(0) != code || lines.peek(1) != name) continue;
    lines_.moveTo(lines.position(), lines.line());
    return true;
  }
  return false;
}

// To the next start of an object, from here on; false at the end of the file.
bool ZnTdocReader::moveToObject() {
  const std::string object = std::to_string(Quorl::kTdocObject), handle = std::to_string(Quorl::kTdocHandle);
  std::uint64_t number = 0;
  for (Lines lines(text_, lines_.position(), lines_.line()); !lines.atEnd(); lines.step()) {
    if (lines.peek(0) != object || lines.peek(2) != handle || !Quorl::parseHex(lines.peek(3), number) ||
        classes_.numberOfLabel(lines.peek(1)) < 0)
      continue;
    lines_.moveTo(lines.position(), lines.line());
    return true;
  }
  return false;
}

bool ZnTdocReader::salvageSections() {
  ZnFileError error;
  const auto start = lines_;
  if (!passesOver(readMark(error), error)) lines_ = start;
  if (moveToSection("HEADER")) passesOver(readHeader(error), error);
  salvageClasses();
  salvageObjects();
  return true;
}

void ZnTdocReader::salvageClasses() {
  ZnFileError error;
  if (!moveToSection("CLASSES")) return;
  if (passesOver(readClasses(error), error)) return;
  // A class begins with a code that its other texts do not have.
  const std::string first = std::to_string(Quorl::kClassTexts[0]),
                    second = std::to_string(Quorl::kClassTexts[1]);
  const std::string section = std::to_string(Quorl::kTdocSection);
  for (;;) {
    Lines lines(text_, lines_.position(), lines_.line());
    while (!lines.atEnd() && lines.peek(0) != section && (lines.peek(0) != first || lines.peek(2) != second))
      lines.step();
    if (lines.atEnd() || lines.peek(0) == section) return;
    lines_.moveTo(lines.position(), lines.line());
    const auto before = lines_;
    if (passesOver(readClass(error), error)) continue;
    lines_ = before;
    lines.step();
    lines_.moveTo(lines.position(), lines.line());
  }
}

// The damage may have hidden where an object ends, so the search begins anew right behind its start.
void ZnTdocReader::salvageObjects() {
  ZnFileError error;
  const size_t begin = lines_.position();
  if (moveToSection("OBJECTS")) {
    const auto before = lines_;
    if (passesOver(scanObjects(error), error)) return;
    lines_ = before;
  } else {
    lines_.moveTo(begin, lines_.line());
  }
  objects_.clear();
  while (moveToObject()) {
    const auto before = lines_;
    if (passesOver(scanObject(error), error)) continue;
    Lines lines(text_, before.position(), before.line());
    lines.step();
    lines_.moveTo(lines.position(), lines.line());
  }
}

// Each handle once, and those that were lost no more.
void ZnTdocReader::salvageSlots() {
  std::stable_sort(objects_.begin(), objects_.end(),
                   [](const Object& a, const Object& b) { return a.handle < b.handle; });
  constexpr std::uint64_t kLargestHandle = std::uint64_t{1} << 62;
  std::uint64_t last = 0;
  std::erase_if(objects_, [&](const Object& object) {
    if (salvage_->isLost(object.handle)) return true;
    const bool isUsable = object.handle > last && object.handle < kLargestHandle;
    if (isUsable) {
      last = object.handle;
      return false;
    }
    ZnFileError error;
    error.line = object.line - 2;
    error.fail(Quorl::eFileDamaged,
               Quorl::objectPlace(ZnDbHandle(object.handle), classes_.record(object.cls).name.utf8()),
               "its handle is 0, given twice or too large", "a handle of its own");
    salvage_->note(error);
    return true;
  });
  if (header_.nextHandle <= last || header_.nextHandle > kLargestHandle) header_.nextHandle = last + 1;
  header_.objectCount = objects_.size();
}
