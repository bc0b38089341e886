// Faults of text files that somebody edited: each is told with its line and what was expected there.
#include <gtest/gtest.h>

#include <regex>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "support/told_cases.h"

using namespace fileTest;

namespace {

// "FIND | N | BY": the line N behind the lines that are found becomes another, or goes for "(gone)"; "+" sets
// lines behind it. The checksums are made right again. Lines are told as they lie to the edited one.
Lines faultOf(const std::string& edit) {
  const std::string whole = unsealed(zndbDrawingText(*sampleDrawing()));
  const size_t first = edit.find(" | "), second = edit.find(" | ", first + 3);
  const std::string wanted = "\n" + withLineEnds(edit.substr(0, first)) + "\n";
  std::string by = withLineEnds(edit.substr(second + 3));
  size_t begin = whole.find(wanted);
  if (begin == std::string::npos) return {"not found"};
  begin = whole.rfind('\n', begin + wanted.size() - 2) + 1;
  for (int steps = std::stoi(edit.substr(first + 3)); steps > 0; --steps) begin = whole.find('\n', begin) + 1;
  size_t end = whole.find('\n', begin);
  if (by[0] == '+') by = whole.substr(begin, end - begin) + "\n" + by.substr(1);
  if (by == "(gone)") by.clear(), ++end;
  const std::string changed = whole.substr(0, begin) + by + whole.substr(end);
  ZnFileError error;
  EXPECT_EQ(zndbDrawingFromBytes(sealed(changed), error), nullptr);
  EXPECT_NE(error.expected, "");
  const auto edited = std::count(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(begin), '\n') + 1;
  std::string text = error.text();
  if (error.line > 0) {
    const std::string told = "line " + std::to_string(error.line);
    EXPECT_TRUE(text.starts_with(told)) << text;
    const auto off = static_cast<long>(error.line) - edited;
    text = (off == 0  ? "here"
            : off > 0 ? "+" + std::to_string(off)
                      : std::to_string(off)) +
           text.substr(told.size());
  }
  text = std::regex_replace(text, std::regex("object [0-9A-F]+"), "object #");
  text = std::regex_replace(text, std::regex("[0-9A-F]{14,16}"), "#"); // a checksum
  return {text, Quorl::errorStatusText(error.status)};
}

TEST(TdocFaults, AreToldWithTheirPlace) {
  runToldCases("file/tdoc_faults.txt", 40,
               [](const std::string&, const std::string& edit, const Lines&) { return faultOf(edit); });
}

// Blocks in blocks, each showing the one before so many times.
TEST(ObjectFaults, BlocksThatNestBeyondMeasureAreRefused) {
  const struct {
    int levels, copies;
    const char* told; // empty for a drawing that can be read
  } cases[] = {{900, 1, ""}, {1001, 1, "1000 levels at most"}, {20, 2, ""}, {30, 2, "a hundred million"}};
  for (const auto& row : cases) {
    HostDrawing drawing;
    std::vector<ZnDbObjectId> blocks;
    for (int i = 0; i < row.levels; ++i)
      blocks.push_back(drawing.addBlock((L"level " + std::to_wstring(i)).c_str()));
    // From the outermost inwards, so that no reference is placed above many others.
    for (size_t outer = blocks.size(); --outer > 0;)
      for (int copy = 0; copy < row.copies; ++copy) drawing.addReference(blocks[outer - 1], blocks[outer]);
    for (const ZnDrawingFormat format : kFormats) {
      ZnFileError error;
      const auto read = zndbDrawingFromBytes(written(drawing.db, format), error);
      EXPECT_EQ(read != nullptr, row.told[0] == '\0') << error.text();
      EXPECT_NE(error.text().find(row.told), std::string::npos) << error.text();
      EXPECT_EQ(error.line > 0, !read && format == ZnDrawingFormat::kText) << error.text();
    }
  }
}

// An object whose class can't read it stops the reading of either format.
TEST(ObjectFaults, NameStatusHandleAndClass) {
  const TestClasses loaded;
  ZnDbDatabase drawing;
  const ZnDbObjectId note = addNamed(drawing, L"NOTE", new Note);
  for (const ZnDrawingFormat format : kFormats) {
    const std::string bytes = written(drawing, format);
    Note::readStatus = Quorl::eNewerVersion;
    ZnFileError error;
    EXPECT_EQ(zndbDrawingFromBytes(bytes, error), nullptr);
    Note::readStatus = Quorl::eOk;
    EXPECT_EQ(error.status, Quorl::eNewerVersion);
    for (const std::string& told : {"object " + handleText(note.handle()).utf8() + " (Note)",
                                    std::string(Quorl::errorStatusText(Quorl::eNewerVersion))})
      EXPECT_NE(error.text().find(told), std::string::npos) << error.text();
  }
}

} // namespace
