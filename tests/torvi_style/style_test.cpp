#include "torvi/style/style.h"

#include "support/drawing_fixture.h"
#include "torvi/style/message_numbers.h"
#include "torvi/style/resources.h"

namespace {

using Value = ZnRxVariableValue;
class Style : public DrawingTest {};

TEST_F(Style, TextsComeFromTheVariablesOrFromTheFallback) {
  struct {
    const wchar_t* variable;
    ZnString (*ask)();
    const char* fallback;
  } const rows[] = {{L"CENTERCROSSSIZE", &ZnTorviStyle::getCrossHairLengthExpression, "0.1x"},
                    {L"CENTERCROSSGAP", &ZnTorviStyle::getCrossHairGapExpression, "0.05x"},
                    {L"CENTERLTYPE", &ZnTorviStyle::getCenterLineTypeName, "CENTER"},
                    {L"CENTERLTYPEFILE", &ZnTorviStyle::getLineTypeFileName, "quorl.lin"},
                    {L"CENTERLAYER", &ZnTorviStyle::getCenterlayer, "Annotation"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.variable).utf8());
    put(row.variable, L"");
    EXPECT_EQ(row.ask().utf8(), row.fallback);
    put(row.variable, L"7.5x");
    EXPECT_EQ(row.ask().utf8(), "7.5x");
  }
  EXPECT_EQ(ZnTorviStyle::getCrossHairLineTypeName().utf8(), "CONTINUOUS");
}

TEST_F(Style, ADotMeansTheCurrentLinetype) {
  const ZnDbObjectId dashed = addLinetype(L"MYDASHES", {3.0, -1.0}, false);
  ASSERT_EQ(db_->setCurrentLinetype(dashed), Quorl::eOk);
  put(L"CENTERLTYPE", L".");
  EXPECT_EQ(ZnTorviStyle::getCenterLineTypeName().utf8(), "MYDASHES");
}

} // namespace
