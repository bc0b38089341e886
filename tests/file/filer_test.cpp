// The filers of files, binary and text, and the bytes and items below them.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>

#include "quorl/db/core/database.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/record_filer.h"
#include "quorl/file/tdoc_items.h"
#include "quorl/file/text_in_filer.h"
#include "quorl/file/text_out_filer.h"

namespace {

RC_GTEST_PROP(ByteCodec, CountsAndZigzagComeBack, (std::uint64_t count, std::int64_t number)) {
  std::string bytes;
  ZnByteWriter writer(bytes);
  writer.putCount(count);
  writer.putCount(zndbZigzag(number));
  writer.putText("tail");
  ZnByteReader reader(bytes);
  RC_ASSERT(reader.takeCount() == count);
  RC_ASSERT(zndbUnzigzag(reader.takeCount()) == number);
  RC_ASSERT(reader.takeText() == "tail");
  RC_ASSERT(reader.atEnd());
}

TEST(ByteCodec, RefusesCountsThatAreNone) {
  const struct {
    const char* name;
    std::string bytes;
  } cases[] = {{"nothing", ""},
               {"the middle only", "\x80"},
               {"more than 64 bits", std::string(9, '\xFF') + "\x02"},
               {"eleven bytes", std::string(10, '\x80') + "\x01"},
               {"a second spelling of 1", std::string("\x81\x00", 2)}};
  for (const auto& [name, bytes] : cases) {
    ZnByteReader reader(bytes);
    reader.takeCount();
    EXPECT_FALSE(reader.isGood()) << name;
    EXPECT_EQ(reader.take<std::int32_t>(), 0) << name << ": bad for good";
  }
  std::string most;
  ZnByteWriter(most).putCount(~0ull);
  EXPECT_EQ(most.size(), 10u);
  EXPECT_EQ(ZnByteReader(most).takeCount(), ~0ull);
}

TEST(RecordFiler, CountsOfIdsAreCheckedAgainstTheListOfIds) {
  for (const int said : {0, 3, 4, 24, 25, 1000000000, -1}) {
    ZnDbObjectRecord record;
    ZnDbRecordFiler out(record);
    out.writeInt32(said);
    for (int i = 0; i < 3; ++i) out.writeSoftPointerId({});
    ZnDbRecordFiler in(record);
    // Three ids may be as many as 24 things of a byte; what reads the ids then meets their end.
    const bool possible = said >= 0 && said <= 24;
    EXPECT_EQ(in.readCount(), possible ? said : 0);
    EXPECT_EQ(in.status(), possible ? Quorl::eOk : Quorl::eFileDamaged) << said;
  }
}

RC_GTEST_PROP(TdocItems, DoublesComeBackToTheBit, (std::uint64_t bits)) {
  double value, back;
  std::memcpy(&value, &bits, sizeof value);
  RC_PRE(!std::isnan(value));
  std::string text;
  Quorl::appendDouble(text, value);
  RC_ASSERT(Quorl::parseDouble(text, back));
  RC_ASSERT(std::memcmp(&value, &back, sizeof value) == 0);
}

RC_GTEST_PROP(TdocItems, TextsAndBytesComeBack,
              (std::string text, std::int64_t number, std::uint64_t handle)) {
  std::string escaped, plain, hex, bytes, digits, handleDigits;
  Quorl::appendEscaped(escaped, text);
  RC_ASSERT(escaped.find_first_of("\r\n") == std::string::npos);
  RC_ASSERT(Quorl::unescape(escaped, plain));
  RC_ASSERT(plain == text);
  Quorl::appendHexBytes(hex, text);
  RC_ASSERT(Quorl::parseHexBytes(hex, bytes));
  RC_ASSERT(bytes == text);
  std::int64_t numberBack = 0;
  Quorl::appendInteger(digits, number);
  RC_ASSERT(Quorl::parseInteger(digits, numberBack) && numberBack == number);
  std::uint64_t handleBack = 0;
  Quorl::appendHex(handleDigits, handle);
  RC_ASSERT(Quorl::parseHex(handleDigits, handleBack) && handleBack == handle);
}

TEST(TdocItems, WhatIsNoValueIsRefused) {
  double real;
  std::int64_t integer;
  std::uint64_t handle;
  std::string bytes;
  for (const char* text : {"", " 1", "1 ", "1,5", "abc", "1e999", "0x1", "--1", "+1"})
    EXPECT_FALSE(Quorl::parseDouble(text, real)) << text;
  for (const char* text : {"", "1.0", " 7", "9223372036854775808", "1e3", "-"})
    EXPECT_FALSE(Quorl::parseInteger(text, integer)) << text;
  for (const char* text : {"", "-1", "G", "0x10", "10000000000000000", "1 "})
    EXPECT_FALSE(Quorl::parseHex(text, handle)) << text;
  for (const char* text : {"0", "0G", "g0", "00 00", "0-"})
    EXPECT_FALSE(Quorl::parseHexBytes(text, bytes)) << text;
  for (const char* text : {"\\", "a\\x", "\\\\\\"}) EXPECT_FALSE(Quorl::unescape(text, bytes)) << text;
}

TEST(TextFilers, ACodeOfAnotherTypeIsNotWritten) {
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

TEST(TextFilers, NumbersTooWideForTheirCodeAreNotWritten) {
  for (const auto& [code, value] : {std::pair<int, std::int64_t>{60, 32768}, {60, -32769}, {90, 1ll << 31}}) {
    std::string text;
    ZnDbTextOutFiler out(text);
    out.writeInteger(code, value);
    EXPECT_EQ(out.status(), Quorl::eOutOfRange) << value;
  }
}

TEST(TextFilers, AMissingTargetIsNullWhereItIsNotTheOwner) {
  ZnDbDatabase database;
  ZnHandleIndex index;
  index.finish();
  for (const char* lines : {"340\nFFFFFF\n", "290\n1\n330\nFFFFFF\n", "330\n0\n"}) {
    ZnDbTextInFiler in(lines, &database, index, 1);
    ZnDbTdocItem item;
    item.id = database.layerZero();
    while (!in.atEndOfObject()) ASSERT_EQ(in.readItem(item), Quorl::eOk) << lines;
    EXPECT_TRUE(item.id.isNull()) << lines;
  }
}

} // namespace
