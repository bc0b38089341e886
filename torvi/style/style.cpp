#include "torvi/style/style.h"

#include "torvi/host/database.h"
#include "torvi/style/length_expression.h"
#include "torvi/style/message_numbers.h"
#include "torvi/style/resources.h"

namespace {

constexpr double kDefaultOvershoot = 0.5;
constexpr double kDefaultLinetypeScale = 1.0;

const ZnString kCrossHairLinetype(L"CONTINUOUS");
const ZnString kDefaultLinetypeFile(L"quorl.lin");
const ZnString kDefaultLayer(L"Annotation");

ZnString textOf(const wchar_t* variable, const ZnString& fallback) {
  const ZnString text = ZnRxVariablesDictionary::get()->getString(variable);
  return text.isEmpty() ? fallback : text;
}

ZnString defaultLinetypeName() { return ZnTorviResources::text(kTorviMsgDefaultLinetype); }

ZnString currentLinetypeName() {
  const ZnDbDatabase* database = zndbHostApplicationServices()->workingDatabase();
  if (!database) return defaultLinetypeName();
  ZnDbHolder<ZnDbLinetypeTableRecord> record(database->celtype());
  ZnString name;
  if (!record.isOpen() || record->getName(name) != Quorl::eOk) return defaultLinetypeName();
  return name;
}

} // namespace

ZnString ZnTorviStyle::getCrossHairLengthExpression() {
  return textOf(L"CENTERCROSSSIZE", kDefaultCrossLengthExpression);
}

ZnString ZnTorviStyle::getCrossHairGapExpression() {
  return textOf(L"CENTERCROSSGAP", kDefaultCrossGapExpression);
}

double ZnTorviStyle::getCenterOvershoot() {
  return ZnRxVariablesDictionary::get()->getDouble(L"CENTEREXE", kDefaultOvershoot);
}

bool ZnTorviStyle::isCentermarkExeVisible() {
  return ZnRxVariablesDictionary::get()->getBool(L"CENTERMARKEXE", true);
}

ZnString ZnTorviStyle::getCenterLineTypeName() {
  const ZnString name = ZnRxVariablesDictionary::get()->getString(L"CENTERLTYPE");
  if (name.isEmpty()) return defaultLinetypeName();
  return name == L"." ? currentLinetypeName() : name;
}

ZnString ZnTorviStyle::getCrossHairLineTypeName() { return kCrossHairLinetype; }

double ZnTorviStyle::getCenterLinetypeScale() {
  return ZnRxVariablesDictionary::get()->getDouble(L"CENTERLTSCALE", kDefaultLinetypeScale);
}

ZnString ZnTorviStyle::getLineTypeFileName() { return textOf(L"CENTERLTYPEFILE", kDefaultLinetypeFile); }

ZnString ZnTorviStyle::getCenterlayer() { return textOf(L"CENTERLAYER", kDefaultLayer); }

void ZnTorviStyle::getLengthExpressionInfo(const ZnString& expression, bool& isRelative, double& factor,
                                           double& length) {
  factor = 1.0;
  length = 0.0;
  if (isRelativeLengthExpression(expression)) isRelative = true;
  // The scan ends at the "x" by itself, so no shortened copy is made.
  double number = 0.0;
  expression.parseVal(number);
  (isRelative ? factor : length) = number;
}

double ZnTorviStyle::getLengthFromExpression(double base, const ZnString& expression) {
  bool isRelative = false;
  double factor = 1.0, length = 0.0;
  getLengthExpressionInfo(expression, isRelative, factor, length);
  return isRelative ? factor * base : length;
}

bool torvi::isArcSpanChecked() {
  return ZnRxVariablesDictionary::get()->getInt16(L"CENTERMARKCHECKARC", 0) == 1;
}
