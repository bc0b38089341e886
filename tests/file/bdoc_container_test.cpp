// The box of sections: what it holds, and damage that is built on purpose, with checksums that are right.
#include <gtest/gtest.h>
#include <xxhash.h>

#include <cstring>

#include "quorl/file/bdoc_container.h"
#include "quorl/file/byte_codec.h"

namespace {

using Type = ZnSectionType;

// Where the parts of a file lie, for those who damage it.
constexpr size_t kPrefix = 40, kEntry = 40, kTail = 16;
constexpr size_t kCount = 12, kTableAt = 16, kLengthAt = 24, kHashAt = 32;

std::string container(const std::vector<std::pair<Type, std::string>>& sections) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  EXPECT_TRUE(writer.begin());
  for (const auto& [type, raw] : sections) EXPECT_TRUE(writer.add(type, raw));
  EXPECT_TRUE(writer.finish());
  return bytes;
}

template<class T> void poke(std::string& bytes, size_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

template<class T> T peek(const std::string& bytes, size_t at) {
  T value;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

size_t tableOf(const std::string& bytes) { return peek<std::uint64_t>(bytes, kTableAt); }

// Makes the checksums of prefix and table right again.
void seal(std::string& bytes) {
  const size_t table = tableOf(bytes), count = peek<std::uint32_t>(bytes, kCount);
  if (table + count * kEntry + kTail == bytes.size())
    poke(bytes, table + count * kEntry, XXH64(bytes.data() + table, count * kEntry, 0));
  poke(bytes, kHashAt, XXH64(bytes.data(), kHashAt, 0));
}

bool readsAll(const std::string& bytes, std::vector<std::string>& raws, ZnFileError& error) {
  const ZnStringSource source(bytes);
  ZnBdocContainerReader reader(source);
  if (!reader.open(error)) return false;
  for (const auto& section : reader.sections())
    if (!reader.read(section, raws.emplace_back(), error)) return false;
  return true;
}

TEST(BdocContainer, GivesBackItsSections) {
  const std::string noise = "\x01\x9f\x33z\x7f\xe0q", dense(300000, 'q');
  const std::string bytes =
      container({{Type::kObjects, dense}, {Type::kHeader, noise}, {Type::kObjects, ""}});
  EXPECT_LT(bytes.size(), 1000u) << "what can be made smaller is";
  const ZnStringSource source(bytes);
  ZnBdocContainerReader reader(source);
  ZnFileError error;
  ASSERT_TRUE(reader.open(error)) << error.text();
  ASSERT_EQ(reader.sections().size(), 3u);
  EXPECT_TRUE(reader.sections()[0].compressed);
  EXPECT_FALSE(reader.sections()[1].compressed);
  EXPECT_EQ(reader.sections()[2].number, 2u);
  std::vector<std::string> raws;
  ASSERT_TRUE(readsAll(bytes, raws, error)) << error.text();
  EXPECT_EQ(raws, (std::vector<std::string>{dense, noise, ""}));
}

TEST(BdocContainer, RefusesSectionsThatNoReaderWouldTake) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  ASSERT_TRUE(writer.begin());
  EXPECT_FALSE(writer.add(Type::kObjects, std::string(Quorl::kLargestSection + 1, 'x')));
}

// A value put into the prefix or the table of a whole file, whose checksums are made right afterwards.
struct Lie {
  const char* name;
  enum { kInPrefix, kInTable } where;
  size_t at;
  std::uint64_t value;
  size_t bytes;
  const char* place;
  const char* told; // in what or expected
};

class BdocDamage : public testing::Test {
protected:
  void expectFault(const char* name, const std::string& bytes, Quorl::ErrorStatus status, const char* place,
                   const char* told) {
    std::vector<std::string> raws;
    ZnFileError error;
    EXPECT_FALSE(readsAll(bytes, raws, error)) << name;
    EXPECT_EQ(error.status, status) << name;
    EXPECT_NE(error.place.find(place), std::string::npos) << name << ": " << error.text();
    EXPECT_NE((error.what + error.expected).find(told), std::string::npos) << name << ": " << error.text();
  }
  const std::string whole = container({{Type::kObjects, std::string(300, 'q')}, {Type::kHeader, "header"}});
  const size_t table = tableOf(whole);
};

TEST_F(BdocDamage, LiesUnderRightChecksumsAreFound) {
  constexpr size_t kType = 0, kFlags = 4, kOffset = 8, kStored = 16, kRaw = 24, kVersionAt = 8;
  constexpr auto kPre = Lie::kInPrefix, kTab = Lie::kInTable;
  const Lie lies[] = {
      {"version 0", kPre, kVersionAt, 0, 4, "byte 8", "version 0"},
      {"absurd count", kPre, kCount, ~0u, 4, "byte 16", "table"},
      {"absurd table", kPre, kTableAt, ~0ull - 8, 8, "byte 16", "table"},
      {"table in prefix", kPre, kTableAt, 3, 8, "byte 16", "table"},
      {"length", kPre, kLengthAt, 7, 8, "byte", "7"},
      {"type", kTab, kType, 6, 4, "entry 1", "type 6"},
      {"flags", kTab, kFlags, 2, 4, "entry 1", "flags 2"},
      {"gap", kTab, kOffset, 41, 8, "entry 1", "begin at 40"},
      {"overlap", kTab, kEntry + kOffset, 40, 8, "entry 2", "begin"},
      {"too long", kTab, kStored, ~0ull, 8, "entry 1", "to end before"},
      {"bomb", kTab, kRaw, 1ull << 40, 8, "entry 1", "raw size"},
      {"raw size", kTab, kEntry + kRaw, 1, 8, "entry 2", "raw"},
      {"other size", kTab, kRaw, 299, 8, "objects 1", "expanded"},
  };
  for (const Lie& lie : lies) {
    std::string bytes = whole;
    std::memcpy(bytes.data() + (lie.where == kTab ? table : 0) + lie.at, &lie.value, lie.bytes);
    seal(bytes);
    expectFault(lie.name, bytes, Quorl::eFileDamaged, lie.place, lie.told);
  }
}

TEST_F(BdocDamage, BytesThatAreNoFrameAreFoundUnderTheirChecksum) {
  constexpr size_t kStored = 16, kHash = 32;
  std::string bytes = whole;
  bytes[kPrefix] ^= 1;
  poke(bytes, table + kHash, XXH64(bytes.data() + kPrefix, peek<std::uint64_t>(bytes, table + kStored), 0));
  seal(bytes);
  expectFault("frame", bytes, Quorl::eFileDamaged, "objects 1", "expanded");
}

} // namespace
