// What is saved of a damaged file is a sound drawing, and what the damage did not touch is as it was.
#include <gtest/gtest.h>

#include <random>

#include "file/sample_drawing.h"
#include "file/test_classes.h"
#include "quorl/db/entity/entity.h"
#include "quorl/file/byte_stream.h"
#include "quorl/file/drawing_audit.h"
#include "quorl/file/recovery.h"
#include "quorl/file/tdoc_items.h"

using namespace fileTest;

namespace {

ZnRecovery recovered(const std::string& bytes) { return zndbRecoverDrawing(ZnStringSource(bytes)); }

bool isTold(const ZnRecovery& recovery, const std::string& what) {
  return std::any_of(recovery.findings.begin(), recovery.findings.end(), [&](const ZnFileError& finding) {
    return finding.text().find(what) != std::string::npos;
  });
}

std::vector<std::string> objectsOf(const std::string& text) {
  std::vector<std::string> objects;
  Quorl::TdocLines lines(text);
  size_t begin = 0;
  int code = 0;
  for (std::string_view value; !lines.atEnd();) {
    const size_t at = lines.position();
    EXPECT_TRUE(lines.next(code, value));
    if (code != 0 && code < 1000) continue;
    if (begin > 0) objects.push_back(text.substr(begin - 1, at - begin + 1));
    begin = code == 0 ? at : 0;
  }
  return objects;
}

std::string handleOf(const std::string& object) {
  const size_t at = object.find("\n5\n") + 3;
  return object.substr(at, object.find('\n', at) - at);
}

// The object that was lost, or one that a finding is about.
bool namesAny(const std::string& object, const std::string& lost, const ZnRecovery& recovery) {
  const auto names = [&](const std::string& handle) {
    return object.find("\n" + handle + "\n") != std::string::npos;
  };
  return names(lost) ||
         std::any_of(recovery.findings.begin(), recovery.findings.end(), [&](const auto& finding) {
           return finding.object.value != 0 && names(handleText(finding.object).utf8());
         });
}

class Recovering : public testing::TestWithParam<ZnDrawingFormat> {};
INSTANTIATE_TEST_SUITE_P(BothFormats, Recovering, testing::ValuesIn(kFormats), [](const auto& format) {
  return format.param == ZnDrawingFormat::kBinary ? "binary" : "text";
});

TEST_P(Recovering, AWholeFileGivesTheDrawingAndNoFinding) {
  const std::string bytes = written(*sampleDrawing(), GetParam());
  const ZnRecovery recovery = recovered(bytes);
  ASSERT_NE(recovery.database, nullptr) << recovery.error.text();
  for (const ZnFileError& finding : recovery.findings) ADD_FAILURE() << finding.text();
  EXPECT_TRUE(zndbDrawingText(*recovery.database) == zndbDrawingText(*opened(bytes)));
}

TEST_P(Recovering, AnyDamageGivesASoundDrawingOrAReason) {
  const std::string whole = written(*sampleDrawing(), GetParam());
  int saved = 0, lossless = 0;
  constexpr unsigned kRounds = 600;
  for (unsigned seed = 0; seed < kRounds; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string bytes = whole;
    const size_t at = random() % bytes.size(),
                 length = std::min<size_t>(bytes.size() - at, 1 + random() % 60);
    if (seed % 4 == 0) bytes.erase(at, length);
    if (seed % 4 == 1) bytes.insert(at, length, static_cast<char>(random()));
    if (seed % 4 > 1)
      std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), seed % 4 == 2 ? 1 : length, '7');
    const ZnRecovery recovery = recovered(bytes);
    if (!recovery.database) {
      EXPECT_NE(recovery.error.status, Quorl::eOk);
      continue;
    }
    ++saved;
    lossless += recovery.findings.empty();
    for (const ZnAuditFinding& finding : zndbAuditDrawing(*recovery.database, false))
      ADD_FAILURE() << finding.text();
    ZnFileError error;
    EXPECT_NE(zndbDrawingFromBytes(written(*recovery.database, GetParam()), error), nullptr) << error.text();
  }
  EXPECT_GT(saved, static_cast<int>(kRounds) / 2);
  EXPECT_LT(lossless, saved / 10);
}

TEST(RecoveringText, WhatDoesNotNameTheLostObjectIsAsItWas) {
  const std::string text = zndbDrawingText(*sampleDrawing());
  const std::vector<std::string> objects = objectsOf(text);
  ASSERT_GT(objects.size(), 20u);
  size_t unharmed = 0;
  for (const std::string& lost : objects) {
    const std::string handle = handleOf(lost);
    SCOPED_TRACE(lost.substr(0, 40));
    std::string damaged = text;
    damaged.replace(damaged.find(lost) + lost.find("\n5\n") + 4 + handle.size(), 3, "no code\n");
    const ZnRecovery recovery = recovered(damaged);
    ASSERT_NE(recovery.database, nullptr) << recovery.error.text();
    EXPECT_TRUE(isTold(recovery, "checksum") || isTold(recovery, "group code"));
    const std::string kept = zndbDrawingText(*recovery.database);
    for (const std::string& object : objects) {
      const bool isIn = kept.find(object) != std::string::npos;
      // What hung on the lost one alone may be gone, and then it is told, too.
      EXPECT_TRUE(isIn || namesAny(object, handle, recovery)) << object.substr(0, 40);
      unharmed += isIn;
    }
  }
  EXPECT_GT(unharmed, objects.size() * objects.size() / 2);
}

TEST(Auditing, WhatIsNotWhereItsOwnerSaysIsFoundAndMended) {
  const auto drawing = sampleDrawing();
  ASSERT_TRUE(zndbAuditDrawing(*drawing, false).empty());
  ZnDbObjectId id;
  for (const ZnDbObjectId candidate : drawing->allObjectIds())
    if (id.isNull() && candidate.isDerivedFrom(ZnDbEntity::desc())) id = candidate;
  {
    ZnDbHolder<ZnDbObject> object;
    ASSERT_EQ(object.openForWrite(id, false, true), Quorl::eOk);
    object->setOwnerId(drawing->layerZero());
  }
  const auto findings = zndbAuditDrawing(*drawing, false);
  ASSERT_FALSE(findings.empty());
  EXPECT_EQ(findings.back().object, id.handle());
  EXPECT_EQ(findings.back().className, id.objectClass()->name().utf8());
  EXPECT_FALSE(zndbAuditDrawing(*drawing, true).empty());
  EXPECT_TRUE(zndbAuditDrawing(*drawing, false).empty());
}

} // namespace
