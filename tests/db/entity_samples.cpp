#include "db/entity_samples.h"

#include <algorithm>

#include "db/sampling_draw.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/point.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/ge/elliptical_arc3d.h"

namespace dbTest {

namespace {

const ZnGeVector3d kTilted(0.3, -0.5, 0.9);

std::unique_ptr<ZnDbEntity> polyline(const std::vector<std::array<double, 3>>& vertices, bool closed) {
  auto made = std::make_unique<ZnDbPolyline>();
  for (const auto& [x, y, bulge] : vertices) made->addVertexAt(made->vertexCount(), ZnGePoint2d(x, y), bulge);
  made->setClosed(closed);
  made->setElevation(2.5);
  made->setNormal(kTilted);
  return made;
}

std::unique_ptr<ZnDbEntity> spline(std::vector<double> weights) {
  ZnGeNurbCurve3d curve;
  curve.set(3, {0, 0, 0, 0, 1, 2, 2, 2, 2}, {{0, 0, 0}, {4, 6, 1}, {9, -5, 0}, {12, 4, -2}, {15, 1, 0}},
            std::move(weights));
  return std::make_unique<ZnDbSpline>(curve);
}

std::unique_ptr<ZnDbEntity> text(ZnDb::TextAlign align) {
  auto made = std::make_unique<ZnDbText>(ZnGePoint3d(3, 4, 5), L"Wl\u00e4nge 12.5", 3.5, 0.7);
  made->setNormal(kTilted);
  made->setWidthFactor(0.8);
  made->setHorizontalAlign(align);
  return made;
}

std::unique_ptr<ZnDbEntity> viewport() {
  auto made = std::make_unique<ZnDbViewport>();
  made->setCenterPoint({100, 80, 0});
  made->setWidth(60);
  made->setHeight(40);
  made->setViewCenter({-7, 9});
  made->setCustomScale(0.5);
  made->setTwistAngle(0.4);
  made->setOn(false);
  return made;
}

template<class Dimension> std::unique_ptr<ZnDbEntity> dimension(std::unique_ptr<Dimension> made) {
  made->setDimensionText(L"about <> mm");
  return made;
}

std::unique_ptr<ZnDbEntity> reference() {
  auto made = std::make_unique<ZnDbBlockReference>();
  made->setBlockTransform(ZnGeMatrix3d({1, 2, 3}, {2, 0.5, 0}, {-0.25, -1.5, 0}, {0, 0.125, 1}));
  return made;
}

std::vector<EntitySample> makeSamples() {
  return {
      {"line", [] { return std::make_unique<ZnDbLine>(ZnGePoint3d(1, 2, 3), ZnGePoint3d(-4, 7, 0.1)); },
       false, false, false},
      {"line without length",
       [] { return std::make_unique<ZnDbLine>(ZnGePoint3d(1, 2, 3), ZnGePoint3d(1, 2, 3)); }, false, false,
       false},
      {"arc", [] { return std::make_unique<ZnDbArc>(ZnGePoint3d(5, 6, 7), kTilted, 4.0, 5.5, 1.25); }, true,
       false, true},
      {"arc through zero", [] { return std::make_unique<ZnDbArc>(ZnGePoint3d(), 2.0, -1.0, 0.5); }, true,
       false, true},
      {"circle", [] { return std::make_unique<ZnDbCircle>(ZnGePoint3d(5, 6, 7), kTilted, 4.0); }, true, false,
       true},
      {"circle of radius 0",
       [] { return std::make_unique<ZnDbCircle>(ZnGePoint3d(5, 6, 7), ZnGeVector3d::kZAxis, 0.0); }, true,
       false, true},
      {"open polyline",
       [] {
         return polyline({{0, 0, 0}, {6, 0, 0.5}, {9, 4, -1.2}, {2, 8, 0}}, false);
       },
       true, false, true},
      {"closed polyline",
       [] {
         return polyline({{0, 0, 0}, {6, 0, 0}, {6, 4, 0}, {0, 4, 0.3}}, true);
       },
       true, false, true},
      {"rectangle",
       [] {
         return polyline({{0, 0, 0}, {6, 0, 0}, {6, 4, 0}, {0, 4, 0}}, true);
       },
       false, false, true},
      {"ellipse",
       [] {
         return std::make_unique<ZnDbEllipse>(ZnGeEllipticalArc3d({1, 2, 3}, {4, 3, 0}, {-1.5, 2, 0}));
       },
       false, false, true},
      {"elliptic arc",
       [] {
         return std::make_unique<ZnDbEllipse>(
             ZnGeEllipticalArc3d({1, 2, 3}, {4, 3, 1}, {0, -1, 3}, 0.5, 4.0));
       },
       false, false, true},
      {"spline", [] { return spline({}); }, false, false, false},
      {"rational spline",
       [] {
         return spline({1, 2, 0.5, 3, 1});
       },
       false, false, false},
      {"text left", [] { return text(ZnDb::kTextLeft); }, false, false, true},
      {"text right", [] { return text(ZnDb::kTextRight); }, false, false, true},
      {"point", [] { return std::make_unique<ZnDbPoint>(ZnGePoint3d(9, 8, 7)); }, false, false, false},
      {"viewport", viewport, true, true, true},
      {"aligned dimension",
       [] {
         return dimension(std::make_unique<ZnDbAlignedDimension>(ZnGePoint3d(0, 0, 0), ZnGePoint3d(30, 40, 0),
                                                                 ZnGePoint3d(0, 20, 0)));
       },
       false, false, true},
      {"radial dimension",
       [] {
         return dimension(
             std::make_unique<ZnDbRadialDimension>(ZnGePoint3d(1, 2, 0), ZnGePoint3d(7, 10, 0), 6));
       },
       false, false, true},
      {"diametric dimension",
       [] {
         return dimension(
             std::make_unique<ZnDbDiametricDimension>(ZnGePoint3d(7, 10, 0), ZnGePoint3d(-5, -6, 0)));
       },
       false, false, true},
      {"block reference", reference, false, false, true},
  };
}

} // namespace

const std::vector<EntitySample>& entitySamples() {
  static const std::vector<EntitySample> samples = [] {
    std::vector<EntitySample> all = makeSamples();
    // Traits other than those of a new entity, so that a field that is left out shows.
    for (EntitySample& sample : all) {
      sample.make = [make = sample.make] {
        std::unique_ptr<ZnDbEntity> entity = make();
        entity->setColor(ZnCmColor::fromRgb(10, 200, 30));
        entity->setLinetypeScale(0.375);
        entity->setLineWeight(ZnDb::kLineWeight035);
        entity->setTransparency(ZnCmTransparency(90));
        return entity;
      };
    }
    return all;
  }();
  return samples;
}

std::string fieldsOf(const ZnDbEntity& entity) {
  ZnDbMemoryFiler filer(ZnDbFiler::kFile);
  entity.bdocOutFields(filer);
  return filer.takeBytes();
}

std::unique_ptr<ZnDbEntity> readFrom(const ZnDbEntity& like, const std::string& bytes,
                                     Quorl::ErrorStatus& read) {
  std::unique_ptr<ZnDbEntity> entity(static_cast<ZnDbEntity*>(like.isA()->create()));
  ZnDbMemoryFiler filer(ZnDbFiler::kFile);
  filer.setBytes(bytes);
  read = entity->bdocInFields(filer);
  return entity;
}

const std::vector<NamedTransform>& transforms() {
  static const std::vector<NamedTransform> all = {
      {"nothing", ZnGeMatrix3d()},
      {"move", ZnGeMatrix3d::translation({7, -3, 2})},
      {"enlarge", ZnGeMatrix3d::scaling(2.5, {1, 1, 1})},
      {"turn about z", ZnGeMatrix3d::rotation(0.8, ZnGeVector3d::kZAxis, {3, 1, 0}), true},
      {"turn about a slanting axis", ZnGeMatrix3d::rotation(2.1, {1, 2, -1}, {3, 1, 4}), true},
      {"mirror", ZnGeMatrix3d::mirroring(ZnGePlane({1, 0, 2}, {1, -0.5, 0.2})), true},
      {"mirror in a point", ZnGeMatrix3d::mirroring(ZnGePoint3d(1, 2, 3)), true},
      {"stretch", ZnGeMatrix3d::scaling(ZnGeVector3d(2.0, 0.5, 1.5)), false, true},
      {"skew", ZnGeMatrix3d({1, 2, 3}, {1, 0.2, 0.1}, {0.7, 1, 0}, {0.1, 0.3, 1}), false, true},
  };
  return all;
}

std::vector<ZnGePoint3d> drawnPoints(const ZnDbEntity& entity, double chordHeight) {
  SamplingDraw draw(chordHeight);
  entity.worldDraw(draw);
  return draw.points;
}

double farthest(const std::vector<ZnGePoint3d>& points, const std::vector<ZnGePoint3d>& from) {
  double worst = 0.0;
  for (const ZnGePoint3d& point : points) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const ZnGePoint3d& other : from) nearest = std::min(nearest, point.distanceTo(other));
    worst = std::max(worst, nearest);
  }
  return worst;
}

} // namespace dbTest
