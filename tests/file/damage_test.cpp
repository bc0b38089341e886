// Damaged files: whatever happens to the bytes, the outcome is an error that says where, or an equal drawing.
#include <gtest/gtest.h>

#include <random>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/file/bdoc_container.h"
#include "quorl/file/tdoc_items.h"

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
INSTANTIATE_TEST_SUITE_P(BothFormats, Damaged,
                         testing::Values(ZnDrawingFormat::kBinary, ZnDrawingFormat::kText),
                         [](const auto& format) {
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
struct Unpacked {
  std::vector<std::pair<ZnSectionType, std::string>> sections;
};

Unpacked unpack(const std::string& bytes) {
  Unpacked unpacked;
  const ZnStringSource source(bytes);
  ZnBdocContainerReader reader(source);
  ZnFileError error;
  EXPECT_TRUE(reader.open(error)) << error.text();
  for (const auto& section : reader.sections()) {
    std::string raw;
    EXPECT_TRUE(reader.read(section, raw, error)) << error.text();
    unpacked.sections.emplace_back(section.type, raw);
  }
  return unpacked;
}

std::string pack(const Unpacked& unpacked) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  writer.begin();
  for (const auto& [type, raw] : unpacked.sections) writer.add(type, raw);
  writer.finish();
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
  ASSERT_EQ(whole.sections.size(), 5u);
  int errors = 0, drawings = 0;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    Random random(seed);
    Unpacked changed = whole;
    damage(changed.sections[seed % changed.sections.size()].second, random);
    SCOPED_TRACE(seed);
    tryOut(pack(changed), errors, drawings);
  }
  EXPECT_GT(errors, 1000);
  EXPECT_GT(drawings, 100);
}

TEST(DamagedContents, AMissingOrRepeatedSectionIsAnError) {
  const TestClasses loaded;
  const Unpacked whole = unpack(drawingWithNames());
  for (size_t i = 0; i < whole.sections.size(); ++i) {
    for (const bool twice : {false, true}) {
      Unpacked changed = whole;
      if (twice)
        changed.sections.push_back(whole.sections[i]);
      else
        changed.sections.erase(changed.sections.begin() + static_cast<std::ptrdiff_t>(i));
      ZnFileError error;
      const auto read = zndbDrawingFromBytes(pack(changed), error);
      // Names that nobody uses do no harm.
      const bool harmless = twice && whole.sections[i].first == ZnSectionType::kNames;
      EXPECT_EQ(read != nullptr, harmless) << i << twice;
      EXPECT_EQ(read == nullptr, error.status != Quorl::eOk) << i << twice;
    }
  }
}

std::string withChecksums(const std::string& text) {
  std::string sealed;
  size_t begin = 0, at = 0;
  while (at < text.size()) {
    const size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string line = text.substr(at, end - at);
    // A text may say so too, but no section comes after it.
    const size_t after = std::min(text.find('\n', end), text.size() - 1) + 1;
    if (line == "1001\n" && text.compare(after, 5, "1000\n") == 0) {
      std::string hash;
      Quorl::appendHex(hash, XXH64(sealed.data() + begin, sealed.size() - begin, 0));
      sealed += line + hash + "\n";
      at = after;
      continue;
    }
    sealed += line;
    at = end;
    if (line == "HEADER\n" || line == "CLASSES\n" || line == "OBJECTS\n") begin = sealed.size();
  }
  return sealed;
}

TEST(DamagedContents, OfTextSectionsAreNoDanger) {
  const std::string whole = zndbDrawingText(*sampleDrawing());
  ASSERT_EQ(withChecksums(whole), whole);
  int errors = 0, drawings = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Random random(seed);
    std::string changed = whole;
    damage(changed, random);
    SCOPED_TRACE(seed);
    tryOut(withChecksums(changed), errors, drawings);
  }
  EXPECT_GT(errors, 500);
  EXPECT_GT(drawings, 100);
}

} // namespace
