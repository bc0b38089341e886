// Damaged files: whatever happens to the bytes, the outcome is an error that says where, or an equal drawing.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/file/bdoc_container.h"

#include <xxhash.h>

using namespace fileTest;

namespace {

using Random = std::mt19937;

size_t below(Random& random, size_t limit) { return limit ? random() % limit : 0; }

void damage(std::string& bytes, Random& random) {
  switch (below(random, 5)) {
  case 0:
    bytes[below(random, bytes.size())] ^= static_cast<char>(1u << below(random, 8));
    break;
  case 1:
    bytes[below(random, bytes.size())] = static_cast<char>(random());
    break;
  case 2:
    bytes.resize(below(random, bytes.size()));
    break;
  case 3:
    bytes.insert(below(random, bytes.size()), 1, static_cast<char>(random()));
    break;
  case 4:
    bytes.erase(below(random, bytes.size()), 1 + below(random, 20));
    break;
  }
}

// True for an error.
bool isErrorOrEqual(const std::string& bytes, const std::string& text, unsigned seed) {
  ZnFileError error;
  const auto read = zndbDrawingFromBytes(bytes, error);
  if (read) {
    EXPECT_EQ(error.status, Quorl::eOk);
    EXPECT_TRUE(zndbDrawingText(*read) == text) << "seed " << seed;
    return false;
  }
  EXPECT_NE(error.status, Quorl::eOk) << "seed " << seed;
  EXPECT_TRUE(error.line > 0 || error.place.starts_with("byte ")) << "seed " << seed << ": " << error.text();
  EXPECT_FALSE(error.expected.empty()) << "seed " << seed << ": " << error.text();
  EXPECT_FALSE(error.what.empty()) << "seed " << seed;
  return true;
}

class Damaged : public testing::TestWithParam<ZnDrawingFormat> {
protected:
  const std::string bytes = written(*opened(written(*sampleDrawing(), ZnDrawingFormat::kBinary)), GetParam());
  const std::string text = zndbDrawingText(*opened(bytes));
};
INSTANTIATE_TEST_SUITE_P(BothFormats, Damaged, testing::ValuesIn(kFormats), [](const auto& format) {
  return format.param == ZnDrawingFormat::kBinary ? "binary" : "text";
});

TEST_P(Damaged, IsRefusedOrHarmless) {
  int errors = 0;
  constexpr unsigned kRounds = 3000;
  for (unsigned seed = 0; seed < kRounds; ++seed) {
    Random random(seed);
    std::string changed = bytes;
    damage(changed, random);
    errors += isErrorOrEqual(changed, text, seed);
  }
  EXPECT_GT(errors, static_cast<int>(kRounds * 9 / 10));
}

TEST_P(Damaged, IsRefusedWhereverItEnds) {
  const size_t step = bytes.size() / 1000 + 1;
  int cut = 0;
  for (size_t size = 0; size < bytes.size(); size += step, ++cut) {
    ZnFileError error;
    EXPECT_EQ(zndbDrawingFromBytes(bytes.substr(0, size), error), nullptr) << size;
    EXPECT_NE(error.status, Quorl::eOk) << size;
  }
  EXPECT_GT(cut, 500);
}

// Behind the checksums: the contents are damaged and the checksums made anew, so that the readers of records
// and fields meet what nobody wrote. Anything may come but a crash, and what comes can be written again.
using Unpacked = std::vector<std::pair<ZnSectionType, std::string>>;

Unpacked unpack(const std::string& bytes) {
  Unpacked unpacked;
  const ZnStringSource source(bytes);
  ZnBdocContainerReader reader(source);
  ZnFileError error;
  EXPECT_TRUE(reader.open(error)) << error.text();
  for (const auto& section : reader.sections()) {
    std::string raw;
    EXPECT_TRUE(reader.read(section, raw, error)) << error.text();
    unpacked.emplace_back(section.type, raw);
  }
  return unpacked;
}

std::string pack(const Unpacked& unpacked) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  EXPECT_TRUE(writer.begin());
  for (const auto& [type, raw] : unpacked) EXPECT_TRUE(writer.add(type, raw));
  EXPECT_TRUE(writer.finish());
  return bytes;
}

// What could be read is a drawing like any other.
void tryOut(const std::string& bytes, int& errors, int& drawings) {
  ZnFileError error;
  const auto read = zndbDrawingFromBytes(bytes, error);
  EXPECT_EQ(read != nullptr, error.status == Quorl::eOk) << error.text();
  read ? ++drawings : ++errors;
  if (!read) return;
  read->audit(false);
  std::string again;
  zndbDrawingToBytes(*read, ZnDrawingFormat::kText, again, error);
}

// Of the classes of the host none keeps names.
std::string drawingWithNames() {
  const auto drawing = sampleDrawing();
  auto* gadget = new Gadget;
  gadget->kind = ZnAtom::of(L"kind");
  gadget->parts = {drawing->layerZero()};
  append(drawing->modelSpaceId(), gadget);
  return written(*drawing, ZnDrawingFormat::kBinary);
}

TEST(DamagedContents, OfBinarySectionsAreNoDanger) {
  const TestClasses loaded;
  const Unpacked whole = unpack(drawingWithNames());
  ASSERT_EQ(whole.size(), 5u);
  int errors = 0, drawings = 0;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    Random random(seed);
    Unpacked changed = whole;
    damage(changed[seed % changed.size()].second, random);
    SCOPED_TRACE(seed);
    tryOut(pack(changed), errors, drawings);
  }
  EXPECT_GT(errors, 1000);
  EXPECT_GT(drawings, 100);
}

TEST(DamagedContents, AMissingOrRepeatedSectionIsAnError) {
  const TestClasses loaded;
  const Unpacked whole = unpack(drawingWithNames());
  for (size_t i = 0; i < whole.size(); ++i) {
    for (const bool twice : {false, true}) {
      Unpacked changed = whole;
      if (twice)
        changed.push_back(whole[i]);
      else
        changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(i));
      ZnFileError error;
      const auto read = zndbDrawingFromBytes(pack(changed), error);
      // Names that nobody uses do no harm.
      const bool harmless = twice && whole[i].first == ZnSectionType::kNames;
      EXPECT_EQ(read != nullptr, harmless) << i << twice;
      EXPECT_EQ(read == nullptr, error.status != Quorl::eOk) << i << twice;
    }
  }
}

TEST(DamagedContents, OfTextSectionsAreNoDanger) {
  const std::string text = zndbDrawingText(*sampleDrawing()), whole = unsealed(text);
  ASSERT_EQ(sealed(whole), text);
  int errors = 0, drawings = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Random random(seed);
    std::string changed = whole;
    damage(changed, random);
    SCOPED_TRACE(seed);
    tryOut(sealed(changed), errors, drawings);
  }
  EXPECT_GT(errors, 500);
  EXPECT_GT(drawings, 100);
}

// Where the parts of a file lie, for those who damage it.
constexpr size_t kEntry = 40, kTail = 16;
constexpr size_t kCount = 12, kTableAt = 16, kLengthAt = 24, kHashAt = 32;

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

TEST(BdocContainer, LiesUnderRightChecksumsAreFound) {
  const std::string whole =
      pack({{ZnSectionType::kObjects, std::string(300, 'q')}, {ZnSectionType::kHeader, "header"}});
  const size_t table = tableOf(whole);
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
    ZnFileError error;
    const ZnStringSource source(bytes);
    ZnBdocContainerReader reader(source);
    bool isRead = reader.open(error);
    std::string raw;
    for (size_t i = 0; isRead && i < reader.sections().size(); ++i)
      isRead = reader.read(reader.sections()[i], raw, error);
    EXPECT_FALSE(isRead) << lie.name;
    EXPECT_EQ(error.status, Quorl::eFileDamaged) << lie.name;
    EXPECT_NE(error.place.find(lie.place), std::string::npos) << lie.name << ": " << error.text();
    EXPECT_NE((error.what + error.expected).find(lie.told), std::string::npos) << error.text();
  }
}

TEST(BdocContainer, RefusesSectionsThatNoReaderWouldTake) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  ASSERT_TRUE(writer.begin());
  EXPECT_FALSE(writer.add(ZnSectionType::kObjects, std::string(Quorl::kLargestSection + 1, 'x')));
}

} // namespace
