// What the editor puts into its drawings.
#include <fmt/format.h>

#include <cmath>

#include "db/entity_samples.h"
#include "editor/asking.h"
#include "editor/deeds.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/table/dim_style_table.h"
#include "torvi/core/builder.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

ZnDbObjectId Desk::add(ZnDbEntity* entity, ZnDbObjectId space) {
  ZnDbHolder<ZnDbEntity> owner(entity);
  ZnDbHolder<ZnDbBlockTableRecord> record;
  ZnDbObjectId id;
  if (record.openForWrite(space) == Quorl::eOk) record->appendZnDbEntity(id, entity);
  return id;
}

void Desk::create() {
  const dbTest::EntitySample& sample = one(dbTest::entitySamples());
  std::unique_ptr<ZnDbEntity> entity = sample.make();
  if (auto* reference = ZnDbBlockReference::cast(entity.get())) reference->setBlockTableRecord(one(spaces()));
  entity->transformBy(ZnGeMatrix3d::translation({between(-9, 9), between(-9, 9), 0}));
  const bool isWindow = entity->isA()->name() == L"ZnDbViewport";
  const ZnDbObjectId id = add(entity.release(), isWindow ? db().paperSpaceId() : one(spaces()));
  tell(sample.name + (id.isNull() ? ", refused" : ""));
}

// What center objects are made on: holes in a ring or a row, and lines.
void Desk::addPart(ZnDbObjectId space) {
  const ZnGeMatrix3d place = ZnGeMatrix3d::translation({between(-30, 30), between(-30, 30), 0}) *
                             (pick(2) ? ZnGeMatrix3d::rotation(between(-3, 3), {0, 0, 1}) : ZnGeMatrix3d());
  const auto put = [&](ZnDbCurve* curve) {
    curve->transformBy(place);
    add(curve, space);
  };
  const int count = 3 + pick(3);
  switch (pick(4)) {
  case 0:
    for (int i = 0; i < count; ++i) {
      const double angle = 2.0 * ZnGe::kPi * i / count;
      put(new ZnDbCircle({10 * std::cos(angle), 10 * std::sin(angle), 0}, ZnGeVector3d::kZAxis, 2));
    }
    break;
  case 1:
    for (int i = 0; i < count; ++i) put(new ZnDbArc({7.0 * i, 0, 0}, 2, 0, 4));
    break;
  case 2:
    put(new ZnDbLine({0, 0, 0}, {10, 0, 0}));
    put(new ZnDbLine({0, 4, 0}, {10, 4, 0}));
    break;
  default:
    put(new ZnDbLine({4, 0, 0}, {10, 0, 0}));
    put(new ZnDbLine({0, 3, 0}, {0, 9, 0}));
  }
}

Desk::Ids Desk::edgesIn(ZnDbObjectId space, bool round) {
  Ids found;
  for (const ZnDbObjectId id : recordAt(space)->entityIds())
    if (!id.isErased() && (round ? isRound(id) : id.isDerivedFrom(ZnDbLine::desc()))) found.push_back(id);
  return found;
}

// How what stands in the space is seen: as it is, through windows, and through the references in it.
std::vector<Desk::Ids> Desk::pathsTo(ZnDbObjectId space) {
  std::vector<Ids> paths{{}};
  for (const ZnDbObjectId id : recordAt(space)->entityIds())
    if (!id.isErased() && (id.isDerivedFrom(ZnDbViewport::desc()) || showsDrawn(id))) paths.push_back({id});
  return paths;
}

void Desk::createCenter() {
  const auto kind = torvi::kindOfType(static_cast<ZnDbTorviType>(1 + pick(4)));
  const ZnDbObjectId space = db().currentSpaceId();
  const Ids path = one(pathsTo(space));
  ZnDbObjectId place = space;
  if (!path.empty())
    place = path[0].isDerivedFrom(ZnDbViewport::desc())
                ? db().modelSpaceId()
                : static_cast<ZnDbBlockReference*>(path[0].slot()->object)->blockTableRecord();
  if (pick(2)) addPart(place);
  const bool round = kind->type == kCenterMark || kind->type == kCenterMarkPattern;
  Ids edges = edgesIn(place, round);
  const size_t wanted = kind->type == kCenterMark          ? 1
                        : kind->type == kCenterMarkPattern ? 3 + size_t(pick(3))
                                                           : 2;
  while (edges.size() > wanted) edges.erase(edges.begin() + (pick(2) ? 0 : pick(int(edges.size()))));
  torvi::BuilderInput input{{}, nullptr, &db()};
  std::vector<ZnGePoint3d> picks;
  for (const ZnDbObjectId id : edges) {
    ZnArray<ZnDbObjectId> full;
    for (const ZnDbObjectId step : path) full.append(step);
    full.append(id);
    input.edges.append(ZnDbEdgeRef(ZnDbFullSubentPath(full, ZnDbSubentId(ZnDb::kEdgeSubentType, 0))));
    const std::unique_ptr<ZnGeCurve3d> curve(
        ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(input.edges.last(), true));
    ZnGeInterval range;
    if (curve) curve->getInterval(range);
    picks.push_back(curve ? curve->evalPoint(0.3 * range.lowerBound() + 0.7 * range.upperBound())
                          : ZnGePoint3d());
  }
  input.pickPoints = picks.data();
  ZnDbObjectId id;
  ZnDbTransaction transaction(db());
  const ErrorStatus status =
      edges.size() < wanted ? Quorl::eInvalidInput : kind->makeBuilder(input)->createTorvi(id);
  if (status == Quorl::eOk) transaction.end();
  tell(fmt::format("{} on {} edges{}{}", ZnString(kind->name).utf8(), edges.size(),
                   path.empty() ? "" : " through " + path[0].objectClass()->name().utf8(), word(status)));
}

void Desk::createDimension() {
  const ZnDbObjectId space = one(spaces());
  const bool round = pick(2);
  const Ids edges = edgesIn(space, round);
  if (edges.empty()) return;
  const ZnDbCompoundObjectId path(one(edges));
  ZnDbObjectId id, dimension;
  const ZnDbSubentId edge(ZnDb::kEdgeSubentType, 0);
  const ZnDbSubentId start(ZnDb::kVertexSubentType, 0), end(ZnDb::kVertexSubentType, 1);
  if (!round)
    dimension = add(new ZnDbAlignedDimension({0, 0, 0}, {20, 0, 0}, {4, 3, 0}), space);
  else if (pick(2))
    dimension = add(new ZnDbRadialDimension({0, 0, 0}, {1, 0, 0}), space);
  else
    dimension = add(new ZnDbDiametricDimension({0, 0, 0}, {1, 0, 0}), space);
  std::vector<ZnDbDimAssoc::Reference> references{{0, path, round ? edge : start}};
  if (!round) references.push_back({1, path, end});
  tell(fmt::format("dimension{}", word(ZnDbDimAssoc::post(dimension, references, id))));
}

namespace {

template<class Record> ErrorStatus addRecordTo(ZnDbObjectId tableId, const ZnString& name) {
  ZnDbHolder<Record> record(new Record);
  record->setName(name);
  ZnDbHolder<ZnDbSymbolTable> table;
  ZnDbObjectId id;
  const ErrorStatus status = table.openForWrite(tableId);
  return status == Quorl::eOk ? table->add(id, record.object()) : status;
}

} // namespace

void Desk::createRecord() {
  const ZnString name(L"N" + std::to_wstring(pick(6)));
  ErrorStatus status = Quorl::eOk;
  switch (const int what = pick(4); what) {
  case 0:
    status = addRecordTo<ZnDbLayerTableRecord>(db().layerTableId(), name);
    break;
  case 1:
    status = addRecordTo<ZnDbLinetypeTableRecord>(db().linetypeTableId(), name);
    break;
  case 2:
    status = addRecordTo<ZnDbDimStyleTableRecord>(db().dimStyleTableId(), name);
    break;
  default:
    status = addRecordTo<ZnDbBlockTableRecord>(db().blockTableId(), pick(2) ? name : ZnString(L"*U"));
  }
  tell("record " + name.utf8() + word(status));
}
