// What is written comes back, through both formats and in any order of them.
#include <gtest/gtest.h>

#include <algorithm>

#include "file/every_class_drawing.h"
#include "quorl/db/core/database_version.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/symbol_table.h"

using namespace fileTest;

namespace {

TEST(RoundTrip, BothFormatsSayTheSameAndEachTheSameBytesAgain) {
  for (const ZnDrawingFormat format : kFormats) {
    const std::string bytes = written(*everyClassDrawing(), format);
    EXPECT_TRUE(bytes == written(*everyClassDrawing(), format)) << "two drawings built alike";
    EXPECT_TRUE(format == ZnDrawingFormat::kText || bytes == written(*opened(bytes), format));
  }
  // What was erased leaves null references, which may be spelled another way the first time only.
  const std::string binary = written(*everyClassDrawing(), ZnDrawingFormat::kBinary);
  const std::string text = zndbDrawingText(*opened(binary));
  const auto fromText = opened(text);
  EXPECT_TRUE(written(*fromText, ZnDrawingFormat::kBinary) == binary);
  EXPECT_EQ(zndbDrawingText(*fromText), text);
}

TEST(RoundTrip, TextMayHaveLinesThatEndInTwoCharactersAndObjectsInAnyOrder) {
  const std::string text =
      written(*opened(written(*sampleDrawing(), ZnDrawingFormat::kBinary)), ZnDrawingFormat::kText);
  std::string wide;
  for (const char c : text) wide += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(zndbDrawingText(*opened(wide)), text);
}

TEST(RoundTrip, ReadingSettlesTheDrawing) {
  const auto drawing = sampleDrawing();
  for (const ZnDrawingFormat format : kFormats) {
    const auto read = opened(written(*drawing, format));
    EXPECT_FALSE(read->undoRecorder().canUndo());
    EXPECT_TRUE(read->undoRecorder().isRecording());
    EXPECT_EQ(read->objectCount(), drawing->objectCount());
    EXPECT_EQ(read->nextHandle(), drawing->nextHandle());
    EXPECT_EQ(read->ltscale(), 2.25);
    EXPECT_EQ(read->insertionUnits(), 1);
    EXPECT_EQ(read->clayer().handle(), drawing->clayer().handle());
    EXPECT_EQ(read->originalFileSavedByVersion(), Quorl::kFileVersion);
    EXPECT_EQ(read->variables().size(), drawing->variables().size());
    for (const auto& [name, value] : drawing->variables()) {
      ASSERT_NE(read->find(name), nullptr);
      EXPECT_EQ(*read->find(name), value);
    }
    // The index of names and the lists of references are made by what runs after reading.
    ZnDbObjectId inner, only;
    ASSERT_EQ(ZnDbHolder<ZnDbSymbolTable>(read->blockTableId())->getIdAt(L"INNER", inner), Quorl::eOk);
    EXPECT_GE(ZnDbHolder<ZnDbBlockTableRecord>(inner)->countReferences(only), 2);
    EXPECT_TRUE(read->audit(false).empty());
  }
}

TEST(RoundTrip, ADrawingWithoutItsStandardObjectsIsNotWritten) {
  for (const ZnDrawingFormat format : kFormats) {
    const auto drawing = sampleDrawing();
    ZnDbHeaderIds ids = drawing->headerIds();
    ids.layerZero.setNull();
    drawing->setHeaderIds(ids);
    std::string bytes = "before";
    ZnFileError error;
    EXPECT_EQ(zndbDrawingToBytes(*drawing, format, bytes, error), Quorl::eInvalidInput);
    EXPECT_NE(error.text().find("layer-zero"), std::string::npos) << error.text();
    EXPECT_TRUE(bytes.empty());
  }
}

// Enough objects for several sections, in a drawing whose handles have wide gaps.
TEST(RoundTrip, LargeDrawingsComeInSeveralSections) {
  ZnDbDatabase drawing;
  for (int i = 0; i < 20000; ++i) {
    if (i == 10000) drawing.setNextHandle(ZnDbHandle(0x123456789ABCDEull));
    append(drawing.modelSpaceId(),
           new ZnDbBlockReference(ZnGePoint3d(i, i / 7.0, -i), drawing.paperSpaceId()));
  }
  const std::string bytes = written(drawing, ZnDrawingFormat::kBinary);
  const auto read = opened(bytes);
  EXPECT_EQ(read->objectCount(), drawing.objectCount());
  EXPECT_TRUE(written(*read, ZnDrawingFormat::kBinary) == bytes);
}

} // namespace
