#include "quorl/db/entity/dimension.h"

#include <charconv>

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/entity/curve_snap.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/text_metrics.h"
#include "quorl/db/table/dim_style_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbDimension, ZnDbEntity)

namespace {

// What a style says; a dimension without one is drawn with the values of a new style.
struct Style {
  ZnDbDimensionSizes sizes;
  double lengthFactor = 1.0;
  int decimals = 0;
};

Style styleOf(const ZnDbDimStyleTableRecord& record) {
  const double scale = record.overallScale();
  Style style;
  style.sizes = {record.extensionOffset() * scale, record.extensionBeyond() * scale,
                 record.arrowLength() * scale, record.textHeight() * scale, record.textGap() * scale};
  style.lengthFactor = record.lengthFactor();
  style.decimals = record.decimals();
  return style;
}

Style styleOf(ZnDbObjectId id) {
  const ZnDbHolder<ZnDbDimStyleTableRecord> record(id);
  if (record.isOpen()) return styleOf(*record);
  static const ZnDbDimStyleTableRecord usual;
  return styleOf(usual);
}

// Fixed decimals with a point, whatever the locale.
ZnString numberText(double value, int decimals) {
  char digits[512];
  const std::to_chars_result end =
      std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::fixed, decimals);
  return ZnString::fromUtf8(std::string_view(digits, static_cast<size_t>(end.ptr - digits)));
}

} // namespace

std::vector<const ZnGePoint3d*> ZnDbDimension::definitionPoints() const {
  const std::vector<ZnGePoint3d*> points = const_cast<ZnDbDimension*>(this)->definitionPoints();
  return {points.begin(), points.end()};
}

ErrorStatus ZnDbDimension::setDefinitionPoint(ZnGePoint3d& target, const ZnGePoint3d& point) {
  assertWriteEnabled();
  return ZnDbRule::take(target, point);
}

ErrorStatus ZnDbDimension::setDimensionStyle(ZnDbObjectId style) {
  assertWriteEnabled();
  if (style.isErased() || !style.isDerivedFrom(ZnDbDimStyleTableRecord::desc())) return Quorl::eInvalidInput;
  if (database() && style.database() != database()) return Quorl::eInvalidInput;
  styleUse_.exchange(styleId_, style);
  return Quorl::eOk;
}

ErrorStatus ZnDbDimension::setDimensionText(const ZnString& text) {
  assertWriteEnabled();
  text_ = text;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimension::setTextPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  if (!Quorl::isFinite(position)) return Quorl::eInvalidInput;
  textPosition_ = position;
  textPlaced_ = true;
  return Quorl::eOk;
}

void ZnDbDimension::useDefaultTextPosition() {
  assertWriteEnabled();
  textPlaced_ = false;
}

ErrorStatus ZnDbDimension::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, normal_);
}

ZnGePoint3d ZnDbDimension::textPosition() const {
  return textPlaced_ ? textPosition_ : graphics().textPosition;
}

ZnString ZnDbDimension::formattedText() const {
  const Style style = styleOf(styleId_);
  const ZnString measured = textPrefix() + numberText(measurement() * style.lengthFactor, style.decimals);
  if (text_.isEmpty()) return measured;
  constexpr std::wstring_view placeholder = L"<>";
  const int at = text_.find(placeholder);
  return at < 0 ? text_ : text_.left(at) + measured + text_.mid(at + static_cast<int>(placeholder.size()));
}

ZnDbDimensionGraphics ZnDbDimension::graphics() const {
  ZnDbDimensionGraphics graphics;
  const ZnDbDimensionSizes sizes = styleOf(styleId_).sizes;
  build(sizes, graphics);
  graphics.text = formattedText();
  graphics.textHeight = sizes.textHeight;
  if (textPlaced_) graphics.textPosition = textPosition_;
  return graphics;
}

void ZnDbDimension::setDatabaseDefaults(ZnDbDatabase* database) {
  ZnDbEntity::setDatabaseDefaults(database);
  const ZnDbDatabase* drawing = database           ? database
                                : this->database() ? this->database()
                                                   : zndbHostApplicationServices()->workingDatabase();
  if (drawing) styleUse_.exchange(styleId_, drawing->dimstyle());
}

void ZnDbDimension::completeFor(const ZnDbDatabase& drawing) {
  ZnDbEntity::completeFor(drawing);
  if (styleId_.isNull()) styleUse_.exchange(styleId_, drawing.dimstyle());
}

ErrorStatus ZnDbDimension::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbPlaneImage(normal_, transform, image);
  if (status != Quorl::eOk) return status;
  for (ZnGePoint3d* point : definitionPoints()) *point = transform * *point;
  textPosition_ = transform * textPosition_;
  normal_ = image.normal;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimension::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  const ZnDbDimensionGraphics drawn = graphics();
  ZnGeBoundBlock3d box;
  for (const ZnGeLineSeg3d& line : drawn.lines) box.addBox(line.boundBox());
  for (const auto& head : drawn.arrowHeads)
    for (const ZnGePoint3d& corner : head) box.addPoint(corner);
  for (const ZnGePoint3d& corner :
       zndbTextCorners(drawn.textPosition, normal_, drawn.textDirection, drawn.textHeight, 1.0,
                       drawn.text.view(), ZnDb::kTextCenter))
    box.addPoint(corner);
  extents = box;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimension::getPlane(ZnGePlane& plane) const {
  plane.set(*definitionPoints().front(), normal_);
  return Quorl::eOk;
}

ErrorStatus ZnDbDimension::explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const {
  const ZnDbDimensionGraphics drawn = graphics();
  const auto add = [&](std::unique_ptr<ZnDbEntity> piece) {
    piece->setPropertiesFrom(this);
    pieces.push_back(std::move(piece));
  };
  for (const ZnGeLineSeg3d& line : drawn.lines)
    add(std::make_unique<ZnDbLine>(line.startPoint(), line.endPoint()));
  const ZnGeMatrix3d toPlane = ZnGeMatrix3d::worldToPlane(normal_);
  for (const auto& head : drawn.arrowHeads) {
    auto outline = std::make_unique<ZnDbPolyline>();
    for (const ZnGePoint3d& corner : head) {
      const ZnGePoint3d inPlane = toPlane * corner;
      outline->addVertexAt(outline->vertexCount(), ZnGePoint2d(inPlane.x, inPlane.y));
      outline->setElevation(inPlane.z);
    }
    outline->setNormal(normal_);
    outline->setClosed(true);
    add(std::move(outline));
  }
  auto text = std::make_unique<ZnDbText>(drawn.textPosition, drawn.text, drawn.textHeight);
  text->setNormal(normal_);
  text->setRotation(normal_.perpVector().angleTo(drawn.textDirection, normal_));
  text->setHorizontalAlign(ZnDb::kTextCenter);
  add(std::move(text));
  return Quorl::eOk;
}

bool ZnDbDimension::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible) return false;
  const ZnDbDimensionGraphics drawn = graphics();
  ZnGiSubEntityTraits traits = ownTraits();
  draw.setTraits(traits);
  for (const ZnGeLineSeg3d& line : drawn.lines) draw.curve(line);
  draw.text(drawn.textPosition, normal_, drawn.textDirection, drawn.textHeight, 1.0, drawn.text,
            ZnDb::kTextCenter);
  traits.filled = true;
  draw.setTraits(traits);
  for (const auto& head : drawn.arrowHeads) draw.polyline({head.begin(), head.end()}, true);
  return true;
}

// Curve modes snap to the drawn lines, node to the points that define the dimension.
ErrorStatus ZnDbDimension::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t,
                                             const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                             const ZnGeMatrix3d&, ZnArray<ZnGePoint3d>& snapPoints,
                                             ZnArray<std::int64_t>&, const ZnGeMatrix3d& insertion) const {
  std::vector<std::unique_ptr<ZnGeCurve3d>> lines;
  for (const ZnGeLineSeg3d& line : graphics().lines)
    lines.push_back(
        std::make_unique<ZnGeLineSeg3d>(insertion * line.startPoint(), insertion * line.endPoint()));
  zndbAppendSnapPoints(mode, lines, pickPoint, lastPoint, snapPoints);
  if (mode == ZnDb::kSnapNode)
    for (const ZnGePoint3d* point : definitionPoints()) snapPoints.append(insertion * *point);
  if (mode == ZnDb::kSnapInsertion) snapPoints.append(insertion * textPosition());
  return Quorl::eOk;
}

// The points that define a dimension are filed here for all kinds: who has more fields adds them.
ErrorStatus ZnDbDimension::judgePlace(const ZnDbDatabase& drawing) const {
  if (!styleId_.isNull() && (styleId_.isErased() || styleId_.database() != &drawing))
    return Quorl::eInvalidInput;
  return ZnDbEntity::judgePlace(drawing);
}

void ZnDbDimension::attachLinks() {
  ZnDbEntity::attachLinks();
  if (database() && !isErased()) styleUse_.attach(styleId_);
}

void ZnDbDimension::detachLinks() {
  ZnDbEntity::detachLinks();
  styleUse_.detach(styleId_);
}

template<class Walk> void ZnDbDimension::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kHardPointer, 340, L"dimension style", styleId_,
          {ZnDbDimStyleTableRecord::desc(), &ZnDbDatabase::dimstyle});
  walk.field(1, L"text", text_);
  walk.field(290, L"text is placed", textPlaced_);
  walk.field(10, L"text position", textPosition_);
  walk.field(11, L"normal", normal_, ZnDbRule::unit());
  for (ZnGePoint3d* point : definitionPoints()) walk.field(12, L"definition point", *point);
}

ZNDB_DEFINE_FIELDS(ZnDbDimension, ZnDbEntity)
