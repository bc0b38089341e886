// The binary filer of files, and the bytes below it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstring>
#include <limits>

#include "quorl/db/core/database.h"
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
  out.writeBool(flag);
  out.writeInt8(a);
  out.writeSoftPointerId(database.layerZero());
  out.writeInt16(b);
  out.writeAtom(ZnAtom::of(L"name"));
  out.writeInt32(c);
  out.writeHardOwnershipId({});
  out.writeInt64(d);
  out.writeDouble(real);
  out.writeAtom({});
  out.writeString(L"te\u00dft\U0001F4D0");
  out.writeBytes(blob.data(), blob.size());
  ZnDbRecordFiler in(record);
  RC_ASSERT(in.readBool() == flag);
  RC_ASSERT(in.readInt8() == a);
  RC_ASSERT(in.readSoftPointerId() == database.layerZero());
  RC_ASSERT(in.readInt16() == b);
  RC_ASSERT(in.readAtom() == ZnAtom::of(L"name"));
  RC_ASSERT(in.readInt32() == c);
  RC_ASSERT(in.readHardOwnershipId().isNull());
  RC_ASSERT(in.readInt64() == d);
  const double back = in.readDouble();
  RC_ASSERT(std::memcmp(&back, &real, sizeof real) == 0);
  RC_ASSERT(in.readAtom().isNull());
  RC_ASSERT(in.readString() == ZnString(L"te\u00dft\U0001F4D0"));
  RC_ASSERT(!in.atEnd());
  RC_ASSERT(in.readBytes() == blob);
  RC_ASSERT(in.atEnd());
  RC_ASSERT(in.status() == Quorl::eOk);
}

TEST(RecordFiler, FailsPastTheEndOfEachOfItsListsAndStaysFailed) {
  const struct {
    const char* name;
    void (*read)(ZnDbRecordFiler&);
    Quorl::ErrorStatus status;
  } cases[] = {
      {"number",
       [](ZnDbRecordFiler& f) {
         f.readInt64();
         f.readInt8();
       },
       Quorl::eFilerError},
      {"text",
       [](ZnDbRecordFiler& f) {
         f.readInt32();
         f.readString();
       },
       Quorl::eFilerError},
      {"atom",
       [](ZnDbRecordFiler& f) {
         f.readAtom();
         f.readAtom();
       },
       Quorl::eFilerError},
      {"id",
       [](ZnDbRecordFiler& f) {
         f.readHardPointerId();
         f.readHardPointerId();
       },
       Quorl::eFilerError},
      {"id of another kind", [](ZnDbRecordFiler& f) { f.readSoftPointerId(); }, Quorl::eFileDamaged}};
  for (const auto& [name, read, status] : cases) {
    ZnDbObjectRecord record;
    ZnDbRecordFiler out(record);
    out.writeInt64(-1);
    out.writeAtom(ZnAtom::of(L"x"));
    out.writeHardPointerId({});
    ZnDbRecordFiler in(record);
    read(in);
    EXPECT_EQ(in.status(), status) << name;
    in.readInt8();
    EXPECT_EQ(in.status(), status) << name;
    in.restart();
    EXPECT_EQ(in.status(), Quorl::eOk) << name;
    EXPECT_EQ(in.readInt64(), -1) << name;
  }
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

TEST(RecordFiler, TheRestIsWhatWasNotRead) {
  ZnDbObjectRecord record, rest;
  ZnDbRecordFiler out(record);
  out.writeInt32(1);
  out.writeSoftPointerId({});
  out.writeAtom(ZnAtom::of(L"first"));
  out.writeInt8(7);
  out.writeHardOwnershipId({});
  out.writeAtom(ZnAtom::of(L"second"));
  ZnDbRecordFiler in(record);
  in.readInt32();
  in.readSoftPointerId();
  in.readAtom();
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
