// The two text filers: what one writes the other reads, and what neither takes.
#include <gtest/gtest.h>

#include "quorl/db/core/database.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/text_in_filer.h"
#include "quorl/file/text_out_filer.h"

namespace {

class TextFilers : public testing::Test {
protected:
  void SetUp() override {
    for (const ZnDbObjectId id : database.allObjectIds()) index.add(id.handle().value, id);
    index.finish();
  }
  ZnDbDatabase database;
  ZnHandleIndex index;
};

TEST_F(TextFilers, ACodeOfAnotherTypeIsNotWritten) {
  const std::pair<const char*, void (*)(ZnDbTextOutFiler&)> cases[] = {
      {"bool", [](ZnDbTextOutFiler& f) { f.writeBool(60, true); }},
      {"integer", [](ZnDbTextOutFiler& f) { f.writeInteger(40, 1); }},
      {"double", [](ZnDbTextOutFiler& f) { f.writeDouble(10, 1); }},
      {"text under the handle's code", [](ZnDbTextOutFiler& f) { f.writeString(5, L"1"); }},
      {"point", [](ZnDbTextOutFiler& f) { f.writePoint3d(20, {}); }},
      {"vector", [](ZnDbTextOutFiler& f) { f.writeVector3d(210, {}); }},
      {"bytes", [](ZnDbTextOutFiler& f) { f.writeBytes(300, "", 0); }},
      {"id", [](ZnDbTextOutFiler& f) { f.writeId(5, {}); }}};
  for (const auto& [name, write] : cases) {
    std::string text;
    ZnDbTextOutFiler out(text);
    write(out);
    out.writeBool(290, true);
    EXPECT_EQ(out.status(), Quorl::eUnexpectedGroupCode) << name;
    EXPECT_EQ(text, "") << name;
  }
}

TEST_F(TextFilers, NumbersTooWideForTheirCodeAreNotWritten) {
  for (const auto& [code, value] : {std::pair<int, std::int64_t>{60, 32768}, {60, -32769}, {90, 1ll << 31}}) {
    std::string text;
    ZnDbTextOutFiler out(text);
    out.writeInteger(code, value);
    EXPECT_EQ(out.status(), Quorl::eOutOfRange) << value;
  }
}

TEST_F(TextFilers, ItemsThatCantBeReadAreNamed) {
  const struct {
    const char* lines;
    Quorl::ErrorStatus status;
    size_t line;
    const char* fault;
  } cases[] = {{"290\n2\n", Quorl::eFileDamaged, 7, "integer"},
               {"60\n32768\n", Quorl::eFileDamaged, 7, "integer"},
               {"90\n1.5\n", Quorl::eFileDamaged, 7, "integer"},
               {"40\none\n", Quorl::eFileDamaged, 7, "number"},
               {"1\na\\b\n", Quorl::eFileDamaged, 7, "backslash"},
               {"310\nABC\n", Quorl::eFileDamaged, 7, "hexadecimal"},
               {"340\nxyz\n", Quorl::eFileDamaged, 7, "handle"},
               {"80\n1\n", Quorl::eUnexpectedGroupCode, 7, "80"},
               {"10\n1\n20\n2\n", Quorl::eFilerError, 7, "early"},
               {"10\n1\n30\n2\n20\n3\n", Quorl::eUnexpectedGroupCode, 7, "within a point"},
               {"10\n1\n20\nx\n30\n3\n", Quorl::eFileDamaged, 7, "number"},
               {"330\nFFFFFF\n", Quorl::eInvalidOwner, 7, "FFFFFF"},
               {"290\n1\nx\n", Quorl::eFileDamaged, 9, "code"}};
  for (const auto& [lines, status, line, fault] : cases) {
    ZnDbTextInFiler in(lines, &database, index, 7);
    ZnDbTdocItem item;
    while (in.readItem(item) == Quorl::eOk) continue;
    EXPECT_EQ(in.status(), status) << lines;
    EXPECT_EQ(in.faultLine(), line) << lines;
    EXPECT_NE(in.fault().find(fault), std::string::npos) << in.fault();
    EXPECT_TRUE(in.atEndOfObject()) << "a reader's loop ends";
    EXPECT_EQ(in.readItem(item), status) << "the status stays";
  }
}

TEST_F(TextFilers, AMissingTargetIsNullWhereItIsNotTheOwner) {
  for (const char* lines : {"340\nFFFFFF\n", "290\n1\n330\nFFFFFF\n", "330\n0\n"}) {
    ZnDbTextInFiler in(lines, &database, index, 1);
    ZnDbTdocItem item;
    item.id = database.layerZero();
    while (!in.atEndOfObject()) ASSERT_EQ(in.readItem(item), Quorl::eOk) << lines;
    EXPECT_TRUE(item.id.isNull()) << lines;
  }
}

TEST_F(TextFilers, ReferencesApartOutliveTheirTargets) {
  std::string text;
  std::vector<ZnDbReference> references;
  ZnDbTextOutFiler out(text, &references);
  out.writeId(350, database.layerZero());
  out.writeId(330, {});
  EXPECT_EQ(text, "350\n\n330\n\n");
  ZnDbTextInFiler in(text, &database, references);
  ZnDbObjectRecord rest;
  EXPECT_EQ(in.takeRest(rest), Quorl::eOk);
  EXPECT_EQ(rest, (ZnDbObjectRecord{text, references, {}}));
  references.pop_back();
  ZnDbTextInFiler tooFew(text, &database, references);
  EXPECT_EQ(tooFew.takeRest(rest), Quorl::eFilerError);
  std::string spelled;
  ZnDbTextOutFiler lines(spelled);
  lines.writeLines(text, references);
  EXPECT_TRUE(spelled.starts_with("350\n" + handleText(database.layerZero().handle()).utf8() + "\n"))
      << spelled;
}

} // namespace
