#include "companion/pattern_marks.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

#include "companion/command_arguments.h"
#include "companion/object_naming.h"
#include "companion/tolerance.h"
#include "companion/visible_entities.h"
#include "companion/visible_outlines.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/analysis.h"
#include "torvi/pattern/builder.h"

namespace companion {

namespace {

ZnGePoint2d flat(const ZnGePoint3d& p) { return {p.x, p.y}; }

bool isFlat(const RoundEdge& edge, double elevation, double reach) {
  return std::hypot(edge.curve.normal().x, edge.curve.normal().y) <= kSamePlaneSine &&
         std::fabs(edge.curve.center().z - elevation) <= reach;
}

// What stands about a center and counts as another circle there: one drawn twice does not.
bool hasInnerCircle(const Center& center) {
  const double radius = center.hole().curve.radius();
  return std::any_of(center.edges.begin(), center.edges.end(), [radius](const RoundEdge* edge) {
    return edge->curve.radius() < radius * (1.0 - kSameDiscShare);
  });
}

std::vector<Hole> holesOf(const std::vector<Center>& centers, const std::vector<Outline>& outlines) {
  std::vector<Hole> holes;
  std::vector<Disc> discs;
  const double elevation = centers.empty() ? 0.0 : centers.front().outermost().curve.center().z;
  for (const Center& center : centers) {
    const RoundEdge& edge = center.hole();
    const double radius = edge.curve.radius();
    Hole& hole = holes.emplace_back();
    hole.disc = {flat(edge.curve.center()), radius};
    hole.canJoin =
        !center.isMarked && edge.isFullCircle() && isFlat(edge, elevation, radius * kHolePlaceShare);
    hole.hasInner = hasInnerCircle(center);
    discs.push_back(hole.disc);
  }
  const std::vector<PartOfDisc> parts = partsOf(discs, outlines);
  for (size_t i = 0; i < holes.size(); ++i) holes[i].part = parts[i];
  return holes;
}

std::vector<RingWitness> witnessesOf(const std::vector<RoundEdge>& edges) {
  std::vector<RingWitness> witnesses;
  for (size_t i = 0; i < edges.size(); ++i)
    witnesses.push_back(
        {flat(edges[i].curve.center()), edges[i].curve.radius(), edges[i].span(), static_cast<int>(i)});
  return witnesses;
}

// Where each hole would lie if the file had written its place exactly.
std::vector<ZnGePoint2d> exactPlaces(const FoundPattern& found, const std::vector<ZnGePoint2d>& places) {
  std::vector<ZnGePoint2d> exact;
  if (found.isRing) {
    for (const ZnGePoint2d& place : places) {
      const ZnGeVector2d arm = place - found.center;
      exact.push_back(found.center + arm * (found.pitchRadius / arm.length()));
    }
    return exact;
  }
  // The line from which the places depart least, along its larger direction.
  ZnGeVector2d mean, direction = places.back() - places.front();
  for (const ZnGePoint2d& place : places)
    mean += (place - ZnGePoint2d()) / static_cast<double>(places.size());
  double xx = 0.0, xy = 0.0, yy = 0.0;
  for (const ZnGePoint2d& place : places) {
    const ZnGeVector2d p = place - (ZnGePoint2d() + mean);
    xx += p.x * p.x, xy += p.x * p.y, yy += p.y * p.y;
  }
  const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
  direction = {std::cos(angle), std::sin(angle)};
  for (const ZnGePoint2d& place : places) {
    const ZnGePoint2d middle = ZnGePoint2d() + mean;
    exact.push_back(middle + direction * direction.dotProduct(place - middle));
  }
  return exact;
}

// How many edges the block shows, counted through the references in it.
int edgeCountOf(ZnDbObjectId blockId) {
  int count = 0;
  visitVisibleEntities(blockId, [&count](const VisibleEntity& visible) {
    ZnArray<ZnDbSubentId> edges;
    visible.entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
    count += std::max(edges.length(), 1);
  });
  return count;
}

// Whether moving the object moves nothing but these edges of it: it is a circle or an arc, or a reference to
// a block that holds the hole alone.
bool isHoleAlone(const ZnDbEntity& entity, int edgesOfHole) {
  if (const auto* reference = ZnDbBlockReference::cast(&entity))
    return edgeCountOf(reference->blockTableRecord()) == edgesOfHole;
  return ZnDbCircle::cast(&entity) || ZnDbArc::cast(&entity);
}

// Moves the circles about the center; false when one of them belongs to more (the block of a whole part) and
// has to stay. Arcs are left where they are: they shape outlines.
bool moveCenter(const Center& center, const ZnGeVector2d& by) {
  std::map<ZnDbObjectId, int> edgesOf; // of each object of the space
  for (const RoundEdge* edge : center.edges)
    if (edge->isFullCircle()) ++edgesOf[edge->path.objectIds().first()];
  for (const auto& [id, count] : edgesOf) {
    ZnDbHolder<ZnDbEntity> entity;
    if (entity.openForWrite(id) != Quorl::eOk || !isHoleAlone(*entity, count)) return false;
    if (entity->transformBy(ZnGeMatrix3d::translation({by.x, by.y, 0.0})) != Quorl::eOk) return false;
  }
  return true;
}

// Brings the pattern's holes where they would lie exactly; the farthest move in moved.
bool align(const FoundPattern& found, const std::vector<Center>& centers, double share, double& moved) {
  std::vector<ZnGePoint2d> places;
  for (const int i : found.holes)
    places.push_back(flat(centers[static_cast<size_t>(i)].hole().curve.center()));
  const std::vector<ZnGePoint2d> exact = exactPlaces(found, places);
  for (size_t i = 0; i < places.size(); ++i) {
    const Center& center = centers[static_cast<size_t>(found.holes[i])];
    const ZnGeVector2d by = exact[i] - places[i];
    if (by.length() <= kExactPlace) continue;
    if (by.length() > share * center.hole().curve.radius() || !moveCenter(center, by)) return false;
    moved = std::max(moved, by.length());
  }
  return true;
}

class PatternMaker {
public:
  PatternMaker(ZnDbDatabase& database, const std::vector<Center>& centers, const PatternSettings& settings)
      : database_(database)
      , centers_(centers)
      , settings_(settings) {}

  // False, and nothing changed, when the pattern kind does not see the same in the holes.
  bool make(const FoundPattern& found, MadePattern& made);

private:
  bool hasCenterAt(const ZnGePoint2d& point, double reach) const;
  bool build(const FoundPattern& found, MadePattern& made);

  ZnDbDatabase& database_;
  const std::vector<Center>& centers_;
  const PatternSettings& settings_;
};

bool PatternMaker::hasCenterAt(const ZnGePoint2d& point, double reach) const {
  return std::any_of(centers_.begin(), centers_.end(), [&](const Center& center) {
    return flat(center.outermost().curve.center()).distanceTo(point) <= reach;
  });
}

bool PatternMaker::build(const FoundPattern& found, MadePattern& made) {
  ZnArray<ZnDbEdgeRef> edges;
  ZnPatternQuestion question;
  for (const int i : found.holes) {
    ZnDbEdgeRef edge;
    const RoundEdge& hole = centers_[static_cast<size_t>(i)].hole();
    if (ZnTorviLyxUtils::createEdgeRef(hole.path, edge) != Quorl::eOk) return false;
    // Read again: the hole may have been moved.
    const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, false));
    if (!curve || !curve->isKindOf(ZnGe::kCircularArc3d)) return false;
    question.circles.append(static_cast<const ZnGeCircArc3d&>(*curve));
    edges.append(edge);
  }
  const CenterMarkPatternType type = found.isRing ? kCenterPatternPolar : kCenterPatternLinear;
  question.patternType = type;
  question.autoFullPcd = true;
  const ZnPatternAnalysis analysis = analysePattern(question);
  if (!analysis.isPattern || !analysis.hasAllCircles()) return false;

  made.showsCenterMark = found.isRing && !hasCenterAt(found.center, kMiddleShare * found.pitchRadius);
  ZnCenterMarkPatternBuilder builder(&database_);
  builder.suppressAutoFill(true); // the search has seen all of the drawing
  builder.setPatternType(type);
  builder.setInputEdges(edges);
  builder.setPatternType(type); // the edges of a row may read as a ring to the builder
  builder.setIsFullPCD(found.isRing && analysis.fullPcd);
  builder.setShowCentermark(made.showsCenterMark);
  return builder.createTorvi(made.id) == Quorl::eOk && !hasEvaluationFailed(made.id);
}

bool PatternMaker::make(const FoundPattern& found, MadePattern& made) {
  ZnDbTransaction transaction(database_);
  if (settings_.alignShare > 0.0 && !align(found, centers_, settings_.alignShare, made.aligned)) return false;
  if (!build(found, made)) return false;
  made.found = found;
  return transaction.end() == Quorl::eOk;
}

} // namespace

std::vector<MadePattern> makePatterns(ZnDbDatabase& database, const std::vector<RoundEdge>& edges,
                                      const std::vector<Center>& centers, const PatternSettings& settings,
                                      int& refused) {
  const std::vector<Outline> outlines = visibleOutlines(database.currentSpaceId());
  const std::vector<Hole> holes = holesOf(centers, outlines);
  const std::vector<RingWitness> witnesses = witnessesOf(edges);
  PatternMaker maker(database, centers, settings);
  std::vector<MadePattern> made;
  refused = 0;
  for (const FoundPattern& found : findPatterns({holes, witnesses, outlines, settings.alignShare})) {
    if (MadePattern pattern; maker.make(found, pattern))
      made.push_back(std::move(pattern));
    else
      ++refused;
  }
  return made;
}

std::string evidenceText(const FoundPattern& found, const std::vector<RoundEdge>& edges) {
  const int count = static_cast<int>(found.holes.size());
  ZnString text;
  switch (found.evidence) {
  case PatternEvidence::kConcentric: {
    const ZnDbCompoundObjectId witness(edges[static_cast<size_t>(found.witness)].path);
    text.format(L"%d holes around the center of #", count);
    return text.utf8() + pathText(witness);
  }
  case PatternEvidence::kFiveOrMore:
    return text.format(L"%d holes on one circle", count).utf8();
  case PatternEvidence::kEqualSpacing:
    return text.format(L"%d holes equally spaced around the middle of the part", count).utf8();
  case PatternEvidence::kEqualSteps:
    break;
  }
  text.format(L"%d holes in equal steps of %.6g", count, found.step);
  return text.utf8() + (found.hasGap ? ", one place empty" : "");
}

} // namespace companion
