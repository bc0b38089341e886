#include "interchange/draw/picture_draw.h"

#include "interchange/draw/contour_measure.h"
#include "interchange/draw/curve_contour.h"
#include "interchange/recognize/limits.h"
#include "interchange/tolerance.h"

#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/block_table.h"

#include <algorithm>

namespace interchange {

namespace {

constexpr double kPointDiameter = 0.5; // of a point entity, millimetres on the paper
constexpr double kLeastDot = 0.1;      // of a dot in a hairline linetype

} // namespace

PictureDraw::PictureDraw(TraitResolver& resolver, StrokeTarget& target, double chordHeight,
                         double lineWeightFactor)
    : resolver_(resolver)
    , target_(target)
    , chordHeight_(chordHeight)
    , lineWeightFactor_(lineWeightFactor) {}

void PictureDraw::drawSpace(ZnDbObjectId blockRecord, ZnDbObjectId modelSpace) {
  const ZnDbHolder<ZnDbBlockTableRecord> block(blockRecord);
  if (!block.isOpen()) return;
  for (const ZnDbObjectId id : block->entityIds()) {
    if (id.isErased()) continue;
    const ZnDbHolder<ZnDbEntity> entity(id);
    if (!entity.isOpen()) continue;
    drawEntity(*entity);
    if (!id.isDerivedFrom(ZnDbViewport::desc()) || blockRecord == modelSpace) continue;
    drawThroughViewport(static_cast<const ZnDbViewport&>(*entity), modelSpace);
  }
}

void PictureDraw::drawEntity(const ZnDbEntity& entity) {
  if (isLayerShown(entity.layerId())) entity.worldDraw(*this);
}

// What is seen does not depend on whether the frame's layer shows: frames are often hidden on purpose.
void PictureDraw::drawThroughViewport(const ZnDbViewport& viewport, ZnDbObjectId modelSpace) {
  if (!viewport.isOn() || viewport.visibility() != ZnDb::kVisible) return;
  const ZnGePoint2d center = seenFromAbove(viewport.centerPoint());
  const ZnGeVector2d half{viewport.width() / 2, viewport.height() / 2};
  target_.pushWindow(center - half, center + half);
  levels_.push_back({viewport.modelToPaperTransform(), {}, false});
  viewport_ = &viewport;
  drawSpace(modelSpace, modelSpace);
  viewport_ = nullptr;
  levels_.pop_back();
  target_.popWindow();
}

const ResolvedTraits* PictureDraw::reference() const {
  return levels_.empty() || !levels_.back().isReference ? nullptr : &levels_.back().reference;
}

bool PictureDraw::isLayerShown(ZnDbObjectId layerId) const {
  const ZnDbObjectId deciding = resolver_.effectiveLayer(layerId, reference());
  return resolver_.isShown(deciding) && !(viewport_ && viewport_->isLayerFrozen(deciding));
}

void PictureDraw::setTraits(const ZnGiSubEntityTraits& traits) {
  traits_ = traits;
  const ResolvedTraits resolved = resolver_.resolve(traits, reference());
  ink_ = resolver_.inkOf(resolved, lineWeightFactor_);
  pattern_ = resolver_.patternOf(resolved, traits.linetypeScale);
}

void PictureDraw::pushReference(const ZnGeMatrix3d& transform, const ZnGiSubEntityTraits& reference) {
  // Made first: both values are read from the levels that stand.
  const Level level{toSpace() * transform, resolver_.resolve(reference, this->reference()), true};
  levels_.push_back(level);
}

void PictureDraw::popReference() { levels_.pop_back(); }

void PictureDraw::curve(const ZnGeCurve3d& curve) {
  Contour contour;
  appendCurve(curve, toSpace(), chordHeight_, contour);
  contour.closed = curve.isClosed();
  draw(contour);
}

void PictureDraw::polyline(const std::vector<ZnGePoint3d>& points, bool closed) {
  Contour contour;
  contour.closed = closed;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i + 1 == points.size() && !closed) break;
    contour.segments.push_back(Segment::line(seenFromAbove(toSpace() * points[i]),
                                             seenFromAbove(toSpace() * points[(i + 1) % points.size()])));
  }
  draw(contour);
}

void PictureDraw::chain(const std::vector<const ZnGeCurve3d*>& pieces, bool closed) {
  Contour contour;
  for (const ZnGeCurve3d* piece : pieces) appendCurve(*piece, toSpace(), chordHeight_, contour);
  contour.closed = closed;
  draw(contour);
}

void PictureDraw::draw(const Contour& contour) {
  // Damaged coordinates must not spoil the picture of all others.
  if (contour.segments.empty() || !contour.isUsable()) return;
  if (traits_.filled) return target_.area(contour, ink_);
  const ContourMeasure measure(contour);
  if (!(measure.length() > tolerance::kZeroLength)) return;
  if (pattern_.lengths.empty()) return target_.stroke({contour}, ink_, LineEnds::Round);

  const std::vector<DashSpan> spans = layOutDashes(pattern_, measure.length(), contour.closed);
  if (spans.size() == 1 && !(spans[0].end - spans[0].start < measure.length()))
    return target_.stroke({contour}, ink_, LineEnds::Round);
  std::vector<Contour> dashes;
  for (const DashSpan& span : spans) {
    if (span.isDot())
      target_.dot(measure.pointAt(std::min(span.start, measure.length())), std::max(ink_.width, kLeastDot),
                  ink_);
    else
      dashes.push_back(measure.part(span.start, span.end));
  }
  if (!dashes.empty()) target_.stroke(dashes, ink_, LineEnds::Cut);
}

void PictureDraw::text(const ZnGePoint3d& position, const ZnGeVector3d& normal, const ZnGeVector3d& direction,
                       double height, double widthFactor, const ZnString& text, int horizontalAlign) {
  static constexpr Alignment kAlignments[] = {Alignment::Left, Alignment::Center, Alignment::Right};
  if (text.isEmpty()) return;
  Lettering lettering;
  lettering.position = seenFromAbove(toSpace() * position);
  lettering.along = seenFromAbove(toSpace() * (direction * (height * widthFactor)));
  lettering.up = seenFromAbove(toSpace() * (normal.crossProduct(direction) * height));
  lettering.alignment = kAlignments[std::clamp(horizontalAlign, 0, 2)];
  lettering.text = text.utf8();
  const bool isUsable = interchange::isUsable(lettering.position) && interchange::isUsable(lettering.along) &&
                        interchange::isUsable(lettering.up);
  // Letters seen edge on have no area to ink.
  if (isUsable && lettering.along.crossProduct(lettering.up) != 0) target_.lettering(lettering, ink_);
}

void PictureDraw::point(const ZnGePoint3d& position) {
  const ZnGePoint2d center = seenFromAbove(toSpace() * position);
  if (isUsable(center)) target_.dot(center, std::max(ink_.width, kPointDiameter), ink_);
}

} // namespace interchange
