#include "torvi/centermark/size_calculator.h"

#include <cmath>

#include "torvi/core/tolerance.h"
#include "torvi/style/length_expression.h"

using Quorl::ErrorStatus;

namespace {

constexpr double kSizeFromLinetype = 0.1; // start value, for a linetype that can't be read
constexpr int kMostFittingPasses = 32;

// The element of that sign nearest to the pattern's end; absent without one.
double lastElement(const ZnDbLinetypeTableRecord& record, bool dash, double absent) {
  for (int i = record.numDashes() - 1; i >= 0; --i) {
    const double length = record.dashLengthAt(i);
    if (dash ? length > 0.0 : length < 0.0) return std::fabs(length);
  }
  return absent;
}

double repeatsFor(double rest, double total) {
  const double repeats = std::ceil(rest / total);
  return repeats <= 1.0 ? 2.0 : repeats;
}

double averageFit(const IZnDbCenterMarkPropsProvider& provider, double cross, double gap, double total) {
  const double radius = provider.refCircleRadius();
  double sum = 0.0;
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines) {
    const double length = provider.extension(line) + provider.overshoot(line) + radius;
    sum += fitPatternRepeat(length, total, cross * 0.5, gap);
  }
  return sum / 4.0;
}

} // namespace

ErrorStatus ZnDbCenterMarkSizeCalculator::calculateSizes(double radius) {
  if (radius == 0.0) radius = provider.refCircleRadius();
  const double diameter = radius + radius;
  double cross = kSizeFromLinetype, gap = kSizeFromLinetype;
  ZnString lengthExpression = provider.crossHairLengthExpression();
  ZnString gapExpression = provider.crossHairGapExpression();
  bool lengthByLinetype = isByLinetypeExpression(lengthExpression);
  bool gapByLinetype = isByLinetypeExpression(gapExpression);
  if ((lengthByLinetype || gapByLinetype) && getLinetypeCrossSizes(cross, gap, provider) != Quorl::eOk) {
    if (lengthByLinetype) lengthExpression = kDefaultCrossLengthExpression;
    if (gapByLinetype) gapExpression = kDefaultCrossGapExpression;
    lengthByLinetype = gapByLinetype = false;
  }
  crossLength = lengthByLinetype ? cross : sizeConvertor(diameter, lengthExpression);
  crossGap = gapByLinetype ? gap : sizeConvertor(diameter, gapExpression);
  return Quorl::eOk;
}

ErrorStatus getCrossLengthAndGapFromProvider(const IZnDbCenterMarkPropsProvider& provider, double& length,
                                             double& gap, double radius) {
  ZnDbCenterMarkSizeCalculator calculator(provider);
  const ErrorStatus status = calculator.calculateSizes(radius);
  if (status != Quorl::eOk) return status;
  length = calculator.crossLength;
  gap = calculator.crossGap;
  return Quorl::eOk;
}

ErrorStatus getLinetypeCrossSizes(double& cross, double& gap, const IZnDbCenterMarkPropsProvider& provider) {
  double total = 1.0;
  bool scaledToFit = false;
  const ErrorStatus status =
      readLinetypePattern(cross, gap, total, scaledToFit, getEffectiveLinetypeId(provider));
  const ZnDbDatabase* database = provider.database();
  const double scale = provider.linetypeScale() * (database ? database->ltscale() : 1.0);
  cross *= scale;
  gap *= scale;
  total *= scale;
  if (status != Quorl::eOk || !scaledToFit) return status;
  const double fit = averageFit(provider, cross, gap, total);
  cross *= fit;
  gap *= fit;
  return Quorl::eOk;
}

ErrorStatus readLinetypePattern(double& dash, double& gap, double& total, bool& scaledToFit,
                                ZnDbObjectId linetype) {
  dash = 0.5;
  gap = 0.5;
  total = 1.0;
  scaledToFit = false;
  ZnDbHolder<ZnDbLinetypeTableRecord> record(linetype);
  if (!record.isOpen()) return record.status();
  if (!isPlainDashLinetype(*record)) return Quorl::eNothingToDo;
  scaledToFit = record->isScaledToFit();
  dash = lastElement(*record, true, -1.0);
  gap = lastElement(*record, false, 0.0);
  total = record->patternLength();
  return dash < 0.0 ? Quorl::eNothingToDo : Quorl::eOk;
}

bool isPlainDashLinetype(const ZnDbLinetypeTableRecord& record) {
  if (record.numDashes() < 2) return false;
  for (int i = 0; i < record.numDashes(); ++i) {
    const bool isDot = record.dashLengthAt(i) == 0.0;
    if (isDot || !record.shapeStyleAt(i).isNull() || !record.textAt(i).isEmpty()) return false;
  }
  return true;
}

// Cross and gap are drawn at the same scale as the pattern, so the rest that the repeats have to fill depends
// on the scale that is sought: each pass works it out with the scale of the pass before.
double fitPatternRepeat(double length, double total, double halfCross, double gap) {
  const double unscaledStart = halfCross + gap;
  double rest = length - unscaledStart;
  if (rest <= 0.0) return 1.0;
  double span = repeatsFor(rest, total) * total;
  double scale = rest / span;
  double start = unscaledStart * scale;
  const double slack = ZnGeContext::gTol.equalPoint() + kCoordinateRounding * length;
  for (int pass = 0; pass < kMostFittingPasses; ++pass) {
    if (std::fabs(span * scale + start - length) < slack) break;
    rest = length - start;
    span = repeatsFor(rest, total) * total;
    scale = rest / span;
    start = unscaledStart * scale;
  }
  return scale;
}

ZnDbObjectId getEffectiveLinetypeId(const IZnDbCenterMarkPropsProvider& provider) {
  const ZnDbObjectId linetype = provider.linetypeId();
  const ZnDbDatabase* database = provider.database();
  if (!database) database = zndbHostApplicationServices()->workingDatabase();
  if (!database || linetype != database->byLayerLinetype()) return linetype;
  ZnDbHolder<ZnDbLayerTableRecord> layer(provider.layerId());
  return layer.isOpen() ? layer->linetypeObjectId() : linetype;
}
