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

TEST_F(Style, NumbersComeFromTheVariables) {
  EXPECT_EQ(ZnTorviStyle::getCenterOvershoot(), 0.5);
  EXPECT_EQ(ZnTorviStyle::getCenterLinetypeScale(), 1.0);
  EXPECT_TRUE(ZnTorviStyle::isCentermarkExeVisible());
  put(L"CENTEREXE", Value::ofDouble(3.5));
  put(L"CENTERLTSCALE", Value::ofDouble(0.25));
  put(L"CENTERMARKEXE", Value::ofBool(false));
  EXPECT_EQ(ZnTorviStyle::getCenterOvershoot(), 3.5);
  EXPECT_EQ(ZnTorviStyle::getCenterLinetypeScale(), 0.25);
  EXPECT_FALSE(ZnTorviStyle::isCentermarkExeVisible());
}

TEST_F(Style, ADotMeansTheCurrentLinetype) {
  const ZnDbObjectId dashed = addLinetype(L"MYDASHES", {3.0, -1.0}, false);
  ASSERT_EQ(db_->setCurrentLinetype(dashed), Quorl::eOk);
  put(L"CENTERLTYPE", L".");
  EXPECT_EQ(ZnTorviStyle::getCenterLineTypeName().utf8(), "MYDASHES");
}

TEST_F(Style, WithoutADrawingTheFallbacksStand) {
  put(L"CENTERLTYPE", L".");
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(ZnTorviStyle::getCenterLineTypeName().utf8(), "CENTER");
  EXPECT_EQ(ZnTorviStyle::getCrossHairLengthExpression().utf8(), "0.1x");
  EXPECT_EQ(ZnTorviStyle::getCenterOvershoot(), 0.5);
}

TEST_F(Style, AnExistingMarkKeepsWhatItCopied) {
  const ZnDbObjectId mark = addMark(addCircle({0.0, 0.0, 0.0}, 10.0));
  put(L"CENTERCROSSSIZE", L"5");
  put(L"CENTEREXE", Value::ofDouble(9.0));
  put(L"CENTERMARKEXE", Value::ofBool(false));
  put(L"CENTERLTSCALE", Value::ofDouble(4.0));
  evaluate(mark);
  EXPECT_EQ(wrap(mark).crossHairLengthExpression().utf8(), "0.1x");
  EXPECT_EQ(wrap(mark).horizontalEndOvershoot(), 0.5);
  EXPECT_TRUE(wrap(mark).getExtensionLinesVisibility());
  EXPECT_EQ(wrap(mark).linetypeScale(), 1.0);
}

} // namespace
