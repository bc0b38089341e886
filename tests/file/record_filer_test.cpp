// The binary filer of files, and the bytes below it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

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
