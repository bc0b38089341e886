// Faults of text files that somebody edited: each is told with its line and what was expected there.
#include <gtest/gtest.h>

#include <algorithm>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/file/tdoc_items.h"

#include <xxhash.h>

using namespace fileTest;

namespace {

constexpr ZnDrawingFormat kText = ZnDrawingFormat::kText;

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t at = 0; at < text.size();) {
    const size_t end = text.find('\n', at);
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// With the right checksum where the line of one says "?".
std::string join(const std::vector<std::string>& lines) {
  std::string text;
  size_t begin = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] == "?") {
      Quorl::appendHex(
          text, XXH64(text.data() + begin, text.size() - begin - std::string_view("1001\n").size(), 0));
      text += '\n';
      continue;
    }
    text += lines[i] + '\n';
    if (i > 0 && lines[i - 1] == "1000") begin = text.size();
  }
  return text;
}

// The value's line of the pair that comes at or after the line.
size_t pairAfter(const std::vector<std::string>& lines, size_t from, const std::string& code,
                 const std::string& value) {
  for (size_t i = from - from % 2; i + 1 < lines.size(); i += 2)
    if (lines[i] == code && lines[i + 1] == value) return i + 1;
  ADD_FAILURE() << "no " << code << " " << value;
  return 1;
}

struct Edit {
  const char* name;
  void (*edit)(std::vector<std::string>& lines);
  const char* place;
  const char* told;
  Quorl::ErrorStatus status = Quorl::eFileDamaged;
};

using Lines = std::vector<std::string>;

void replaceValue(Lines& lines, const char* code, const char* value, const char* by) {
  lines[pairAfter(lines, 0, code, value)] = by;
}
void replaceAfter(Lines& lines, const char* name, size_t lineCount, const char* by) {
  const size_t at = pairAfter(lines, 0, "2", name) + lineCount;
  lines[at] = by;
}
// Of the first line entity in the objects section.
size_t lineEntity(const Lines& lines) { return pairAfter(lines, 0, "0", "LINE"); }

TEST(TdocFaults, AreToldWithTheirPlace) {
  const Edit edits[] = {
      {"other file", [](Lines& l) { l[1] = "SOMETHING 1"; }, "byte 0", "no drawing file"},
      {"newer", [](Lines& l) { l[1] = "QUORL-TDOC 2"; }, "line 1", "version 2", Quorl::eNewerVersion},
      {"no version", [](Lines& l) { l[1] = "QUORL-TDOC x"; }, "line 1", "version"},
      {"section", [](Lines& l) { l[3] = "HEAD"; }, "line 3", "section HEADER"},
      {"header name", [](Lines& l) { replaceValue(l, "2", "ucs", "usc"); }, "line", "expected ucs"},
      {"header handle", [](Lines& l) { replaceAfter(l, "layer-table", 2, "xyz"); }, "line", "hexadecimal"},
      {"table missing", [](Lines& l) { replaceAfter(l, "layer-table", 2, "0"); }, "line 3: section header",
       "layer-table"},
      {"table is no table", [](Lines& l) { replaceAfter(l, "layer-table", 2, "1"); },
       "line 3: section header", "a ZnDbLayerTable"},
      {"variable's type", [](Lines& l) { l[pairAfter(l, 0, "3", "SAMPLEREAL") + 1] = "310"; }, "line",
       "hexadecimal"},
      {"object count", [](Lines& l) { replaceAfter(l, "objects", 2, "3"); }, "line", "a count of 3 objects"},
      {"negative count", [](Lines& l) { replaceAfter(l, "objects", 2, "-1"); }, "line", "count"},
      {"next handle too low", [](Lines& l) { replaceAfter(l, "next-handle", 2, "9"); }, "line",
       "next-handle"},
      {"absurd next handle", [](Lines& l) { replaceAfter(l, "next-handle", 2, "FFFFFFFFFFFFFFFF"); }, "line",
       "handle"},
      {"class twice", [](Lines& l) { replaceValue(l, "1", "ZnDbLayerTable", "ZnDbBlockTable"); }, "line",
       "no other class"},
      {"class version", [](Lines& l) { l[pairAfter(l, 0, "1", "ZnDbLayerTable") + 8] = "x"; }, "line",
       "integer"},
      {"unknown label", [](Lines& l) { l[lineEntity(l)] = "LYNE"; }, "line", "section CLASSES"},
      {"handle 0", [](Lines& l) { l[lineEntity(l) + 2] = "0"; }, "line", "handle 0"},
      {"handle twice", [](Lines& l) { l[lineEntity(l) + 2] = l[pairAfter(l, 0, "0", "LAYER") + 2]; }, "line",
       "twice"},
      {"no handle", [](Lines& l) { l[lineEntity(l) + 1] = "6"; }, "line", "expected 5"},
      {"owner", [](Lines& l) { l[lineEntity(l) + 4] = "ABCDEF"; }, "(ZnDbLine)", "ABCDEF",
       Quorl::eInvalidOwner},
      {"code", [](Lines& l) { l[lineEntity(l) + 3] = "3x0"; }, "line", "no number"},
      {"field", [](Lines& l) { l[pairAfter(l, lineEntity(l), "100", "ZnDbLine") + 2] = "?!"; }, "(ZnDbLine)",
       "coordinate"},
      {"section of another class",
       [](Lines& l) {
         const size_t next = pairAfter(l, lineEntity(l) + 1, "0", "LINE") - 1;
         const char* more[] = {"100", "ZnDbFlourish", "40", "7"};
         l.insert(l.begin() + static_cast<std::ptrdiff_t>(next), std::begin(more), std::end(more));
       },
       "(ZnDbLine)", "\"ZnDbFlourish\" behind the fields of its class", Quorl::eUnexpectedGroupCode},
      {"block in itself",
       [](Lines& l) {
         const size_t reference = pairAfter(l, 0, "0", "BLOCKREFERENCE");
         l[pairAfter(l, reference, "100", "ZnDbBlockReference") + 2] = l[reference + 4];
       },
       "(ZnDbBlockTableRecord)", "contains itself, expected"},
      {"infinite axis", [](Lines& l) { l[pairAfter(l, 0, "2", "ucs") + 2] = "inf"; }, "line",
       "finite number"},
      {"value lost", [](Lines& l) { l.erase(l.begin() + static_cast<std::ptrdiff_t>(lineEntity(l)) + 4); },
       "line", ""},
      {"checksum", [](Lines& l) { *std::find(l.begin(), l.end(), "?") = "123"; }, "line", "HEADER is"},
      {"no checksum", [](Lines& l) { *std::find(l.begin(), l.end(), "?") = "zz"; }, "line", "checksum"},
      {"end",
       [](Lines& l) {
         l.pop_back();
         l.pop_back();
       },
       "line", "early"},
      {"value of the end", [](Lines& l) { l.pop_back(); }, "line", "missing"},
      {"after the end",
       [](Lines& l) {
         l.push_back("1");
         l.push_back("x");
       },
       "line", "after the end"}};
  Lines whole = split(zndbDrawingText(*sampleDrawing()));
  for (size_t i = 0; i + 1 < whole.size(); i += 2)
    if (whole[i] == "1001") whole[i + 1] = "?";
  opened(join(whole));
  for (const Edit& edit : edits) {
    Lines lines = whole;
    edit.edit(lines);
    ZnFileError error;
    EXPECT_EQ(zndbDrawingFromBytes(join(lines), error), nullptr) << edit.name;
    EXPECT_EQ(error.status, edit.status) << edit.name << ": " << error.text();
    EXPECT_NE(error.text().find(edit.place), std::string::npos) << edit.name << ": " << error.text();
    EXPECT_NE(error.expected, "") << edit.name << ": " << error.text();
    EXPECT_NE(error.text().find(edit.told), std::string::npos) << edit.name << ": " << error.text();
  }
}

TEST(TdocFaults, TheLineIsThatOfTheFault) {
  Lines lines = split(zndbDrawingText(*sampleDrawing()));
  for (size_t i = 0; i + 1 < lines.size(); i += 2)
    if (lines[i] == "1001") lines[i + 1] = "?";
  const size_t at = pairAfter(lines, lineEntity(lines), "100", "ZnDbLine") + 1;
  lines[at] = "888";
  ZnFileError error;
  EXPECT_EQ(zndbDrawingFromBytes(join(lines), error), nullptr);
  EXPECT_EQ(error.line, at + 1) << error.text();
  error.file = "a.tdoc";
  EXPECT_TRUE(error.text().starts_with("a.tdoc:" + std::to_string(at + 1) + ": object ")) << error.text();
}

// Blocks in blocks, each showing the one before so many times.
TEST(ObjectFaults, BlocksThatNestBeyondMeasureAreRefused) {
  const struct {
    int levels, copies;
    const char* told; // empty for a drawing that can be read
  } cases[] = {{900, 1, ""}, {1001, 1, "1000 levels at most"}, {20, 2, ""}, {30, 2, "a hundred million"}};
  for (const auto& row : cases) {
    ZnDbDatabase drawing;
    std::vector<ZnDbObjectId> blocks(static_cast<size_t>(row.levels));
    for (ZnDbObjectId& id : blocks) {
      auto* block = new ZnDbBlockTableRecord;
      block->setName(ZnString((L"level " + std::to_wstring(&id - blocks.data())).c_str()));
      ZnDbHolder<ZnDbBlockTable> table;
      ASSERT_EQ(table.openForWrite(drawing.blockTableId()), Quorl::eOk);
      ASSERT_EQ(table->add(id, block), Quorl::eOk);
      block->close();
    }
    // From the outermost inwards, so that no reference is placed above many others.
    for (size_t outer = blocks.size(); --outer > 0;)
      for (int copy = 0; copy < row.copies; ++copy)
        append(blocks[outer], new ZnDbBlockReference(ZnGePoint3d(copy, 0, 0), blocks[outer - 1]));
    for (const ZnDrawingFormat format : {ZnDrawingFormat::kBinary, kText}) {
      ZnFileError error;
      const auto read = zndbDrawingFromBytes(written(drawing, format), error);
      EXPECT_EQ(read != nullptr, row.told[0] == '\0') << error.text();
      EXPECT_NE(error.text().find(row.told), std::string::npos) << error.text();
      EXPECT_EQ(error.line > 0, !read && format == kText) << error.text();
    }
  }
}

// An object whose class can't read it stops the reading of either format, named with status, handle and
// class.
TEST(ObjectFaults, NameStatusHandleAndClass) {
  const TestClasses loaded;
  ZnDbDatabase drawing;
  const ZnDbObjectId note = addNamed(drawing, L"NOTE", new Note);
  for (const ZnDrawingFormat format : {ZnDrawingFormat::kBinary, kText}) {
    const std::string bytes = written(drawing, format);
    Note::readStatus = Quorl::eNewerVersion;
    ZnFileError error;
    EXPECT_EQ(zndbDrawingFromBytes(bytes, error), nullptr);
    Note::readStatus = Quorl::eOk;
    EXPECT_EQ(error.status, Quorl::eNewerVersion);
    EXPECT_NE(error.place.find("object " + handleText(note.handle()).utf8() + " (Note)"), std::string::npos)
        << error.text();
    EXPECT_NE(error.what.find(Quorl::errorStatusText(Quorl::eNewerVersion)), std::string::npos)
        << error.text();
  }
}

} // namespace
