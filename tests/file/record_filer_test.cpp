// The binary filer of files, and the bytes below it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstring>
#include <limits>

#include "quorl/db/database.h"
#include "quorl/file/handle_index.h"
#include "quorl/file/record_filer.h"

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

TEST(ByteCodec, ATextLongerThanWhatIsLeftIsRefused) {
  std::string bytes;
  ZnByteWriter(bytes).putCount(1ull << 60);
  bytes += "abc";
  ZnByteReader reader(bytes);
  EXPECT_EQ(reader.takeText(), "");
  EXPECT_FALSE(reader.isGood());
}

RC_GTEST_PROP(RecordFiler, EveryTypeComesBack,
              (bool flag, std::int8_t a, std::int16_t b, std::int32_t c, std::int64_t d, std::uint64_t bits,
               std::string blob)) {
  double real;
  std::memcpy(&real, &bits, sizeof real);
  ZnDbDatabase database;
  ZnDbObjectRecord record;
  ZnDbRecordFiler out(record);
  out.wrBool(flag);
  out.wrInt8(a);
  out.wrSoftPointerId(database.layerZero());
  out.wrInt16(b);
  out.wrAtom(ZnAtom::of(L"name"));
  out.wrInt32(c);
  out.wrHardOwnershipId({});
  out.wrInt64(d);
  out.wrDouble(real);
  out.wrAtom({});
  out.wrString(L"te\u00dft\U0001F4D0");
  out.wrBytes(blob.data(), blob.size());
  ZnDbRecordFiler in(record);
  RC_ASSERT(in.rdBool() == flag);
  RC_ASSERT(in.rdInt8() == a);
  RC_ASSERT(in.rdSoftPointerId() == database.layerZero());
  RC_ASSERT(in.rdInt16() == b);
  RC_ASSERT(in.rdAtom() == ZnAtom::of(L"name"));
  RC_ASSERT(in.rdInt32() == c);
  RC_ASSERT(in.rdHardOwnershipId().isNull());
  RC_ASSERT(in.rdInt64() == d);
  const double back = in.rdDouble();
  RC_ASSERT(std::memcmp(&back, &real, sizeof real) == 0);
  RC_ASSERT(in.rdAtom().isNull());
  RC_ASSERT(in.rdString() == ZnString(L"te\u00dft\U0001F4D0"));
  RC_ASSERT(!in.atEnd());
  RC_ASSERT(in.rdBytes() == blob);
  RC_ASSERT(in.atEnd());
  RC_ASSERT(in.status() == Quorl::eOk);
}

TEST(RecordFiler, FailsPastTheEndOfEachOfItsListsAndStaysFailed) {
  const struct {
    const char* name;
    void (*read)(ZnDbRecordFiler&);
    Quorl::ErrorStatus status;
  } cases[] = {{"number",
                [](ZnDbRecordFiler& f) {
                  f.rdInt64();
                  f.rdInt8();
                },
                Quorl::eFilerError},
               {"text",
                [](ZnDbRecordFiler& f) {
                  f.rdInt32();
                  f.rdString();
                },
                Quorl::eFilerError},
               {"atom",
                [](ZnDbRecordFiler& f) {
                  f.rdAtom();
                  f.rdAtom();
                },
                Quorl::eFilerError},
               {"id",
                [](ZnDbRecordFiler& f) {
                  f.rdHardPointerId();
                  f.rdHardPointerId();
                },
                Quorl::eFilerError},
               {"id of another kind", [](ZnDbRecordFiler& f) { f.rdSoftPointerId(); }, Quorl::eFileDamaged}};
  for (const auto& [name, read, status] : cases) {
    ZnDbObjectRecord record;
    ZnDbRecordFiler out(record);
    out.wrInt64(-1);
    out.wrAtom(ZnAtom::of(L"x"));
    out.wrHardPointerId({});
    ZnDbRecordFiler in(record);
    read(in);
    EXPECT_EQ(in.status(), status) << name;
    in.rdInt8();
    EXPECT_EQ(in.status(), status) << name;
    in.restart();
    EXPECT_EQ(in.status(), Quorl::eOk) << name;
    EXPECT_EQ(in.rdInt64(), -1) << name;
  }
}

TEST(RecordFiler, CountsOfIdsAreCheckedAgainstTheListOfIds) {
  for (const int said : {0, 3, 4, 24, 25, 1000000000, -1}) {
    ZnDbObjectRecord record;
    ZnDbRecordFiler out(record);
    out.wrInt32(said);
    for (int i = 0; i < 3; ++i) out.wrSoftPointerId({});
    ZnDbRecordFiler in(record);
    // Three ids may be as many as 24 things of a byte; what reads the ids then meets their end.
    const bool possible = said >= 0 && said <= 24;
    EXPECT_EQ(in.rdCount(), possible ? said : 0);
    EXPECT_EQ(in.status(), possible ? Quorl::eOk : Quorl::eFileDamaged) << said;
  }
}

TEST(RecordFiler, TheRestIsWhatWasNotRead) {
  ZnDbObjectRecord record, rest;
  ZnDbRecordFiler out(record);
  out.wrInt32(1);
  out.wrSoftPointerId({});
  out.wrAtom(ZnAtom::of(L"first"));
  out.wrInt8(7);
  out.wrHardOwnershipId({});
  out.wrAtom(ZnAtom::of(L"second"));
  ZnDbRecordFiler in(record);
  in.rdInt32();
  in.rdSoftPointerId();
  in.rdAtom();
  in.takeRest(rest);
  EXPECT_EQ(rest, (ZnDbObjectRecord{"\x07", {{ZnReferenceKind::kHardOwner, {}}}, {ZnAtom::of(L"second")}}));
}

TEST(HandleIndex, FindsWhatIsThereDenseOrNot) {
  for (const std::vector<std::uint64_t>& handles :
       {std::vector<std::uint64_t>{}, {1}, {1, 2, 3, 9}, {5, 1ull << 40, (1ull << 62) + 1}}) {
    ZnDbDatabase database(false);
    ZnHandleIndex index;
    for (const std::uint64_t handle : handles) {
      ZnDbObjectId id;
      database.getZnDbObjectId(id, true, ZnDbHandle(handle));
      index.add(handle, id);
    }
    index.finish();
    EXPECT_EQ(index.size(), handles.size());
    for (const std::uint64_t handle : handles) EXPECT_EQ(index.find(handle).handle().value, handle);
    for (const std::uint64_t absent : {0ull, 4ull, 10ull, (1ull << 40) - 1, ~0ull})
      EXPECT_TRUE(index.find(absent).isNull()) << absent;
  }
}

} // namespace
