#include "editor/deeds.h"

#include <fmt/format.h>

#include <cmath>

#include "editor/asking.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/text.h"
#include "torvi/core/action_body.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

Desk::Desk() {
  for (auto& sheet : sheets_) sheet = std::make_unique<Sheet>();
  zndbHostApplicationServices()->setWorkingDatabase(&db());
}

Desk::~Desk() { zndbHostApplicationServices()->setWorkingDatabase(nullptr); }

double Desk::between(double low, double high) {
  return low + (high - low) * (static_cast<double>(random_()) / 4294967295.0);
}

Desk::Ids Desk::live(const ZnRxClass* cls) {
  Ids found;
  for (const ZnDbObjectId id : db().allObjectIds())
    if (!id.isErased() && id.isDerivedFrom(cls)) found.push_back(id);
  return found;
}

// Where entities stand that a user draws: not the blocks that center objects keep for themselves.
Desk::Ids Desk::spaces() {
  Ids found;
  for (const ZnDbObjectId id : live(ZnDbBlockTableRecord::desc()))
    if (!recordAt(id)->isAnonymous()) found.push_back(id);
  return found;
}

Desk::Ids Desk::drawn() {
  Ids found;
  for (const ZnDbObjectId id : live(ZnDbEntity::desc()))
    if (!ownerOf(id)->isAnonymous()) found.push_back(id);
  return found;
}

ZnGeMatrix3d Desk::someTransform() {
  const ZnGePoint3d about(between(-20, 20), between(-20, 20), 0.0);
  const double angle = pick(2) ? pick(8) * ZnGe::kPi / 4.0 : between(-3, 3);
  switch (pick(7)) {
  case 0:
    return ZnGeMatrix3d::rotation(angle, {0, 0, 1}, about);
  case 1:
    return ZnGeMatrix3d::mirroring(ZnGePlane(about, ZnGeVector3d(std::cos(angle), std::sin(angle), 0.0)));
  case 2:
    return ZnGeMatrix3d::scaling(between(0.3, 3.0), about);
  case 3:
    return ZnGeMatrix3d::rotation(angle, ZnGeVector3d(between(-1, 1), between(-1, 1), 1.5).normalize(),
                                  about);
  case 4:
    return ZnGeMatrix3d::scaling(ZnGeVector3d(between(0.5, 2.0), 1.0, 1.0));
  default:
    return ZnGeMatrix3d::translation({about.x, about.y, pick(3) ? 0.0 : between(-5, 5)});
  }
}

void Desk::transform() {
  const Ids entities = drawn();
  if (entities.empty()) return;
  const ZnGeMatrix3d by = someTransform();
  for (int count = 1 + pick(3); count > 0; --count) {
    const ZnDbObjectId id = one(entities);
    ZnDbHolder<ZnDbEntity> entity;
    const ErrorStatus opened = entity.openForWrite(id);
    tell(fmt::format("transform {}{}", handleText(id.handle()).utf8(),
                     word(opened == Quorl::eOk ? entity->transformBy(by) : opened)));
  }
}

void Desk::changeTraits() {
  const Ids entities = drawn();
  if (entities.empty()) return;
  const ZnDbObjectId id = one(entities);
  ZnDbHolder<ZnDbEntity> entity;
  if (entity.openForWrite(id) != Quorl::eOk) return;
  const int what = pick(7);
  switch (what) {
  case 0:
    entity->setLayer(one(live(ZnDbLayerTableRecord::desc())), pick(2) != 0);
    break;
  case 1:
    entity->setLinetype(one(live(ZnDbLinetypeTableRecord::desc())), pick(2) != 0);
    break;
  case 2:
    entity->setColorIndex(pick(260), pick(2) != 0);
    break;
  case 3:
    entity->setLineWeight(ZnDbDatabase::getNearestLineWeight(pick(200)), pick(2) != 0);
    break;
  case 4:
    entity->setLinetypeScale(between(-0.5, 3.0), pick(2) != 0);
    break;
  case 5:
    entity->setTransparency(ZnCmTransparency(static_cast<std::uint8_t>(pick(256))), pick(2) != 0);
    break;
  default:
    entity->setVisibility(pick(2) ? ZnDb::kVisible : ZnDb::kInvisible);
  }
  tell(fmt::format("trait {} of {}", what, handleText(id.handle()).utf8()));
}

void Desk::changeShape() {
  const Ids entities = drawn();
  if (entities.empty()) return;
  const ZnDbObjectId id = one(entities);
  ZnDbHolder<ZnDbEntity> entity;
  if (entity.openForWrite(id) != Quorl::eOk) return;
  const ZnGePoint3d point(between(-20, 20), between(-20, 20), 0.0);
  const double size = between(-1.0, 9.0);
  if (auto* circle = ZnDbCircle::cast(entity.object()))
    pick(2) ? circle->setRadius(size) : circle->setCenter(point);
  else if (auto* arc = ZnDbArc::cast(entity.object()))
    pick(2) ? arc->setRadius(size) : arc->setEndAngle(size);
  else if (auto* line = ZnDbLine::cast(entity.object()))
    pick(2) ? line->setStartPoint(point) : line->setEndPoint(point);
  else if (auto* text = ZnDbText::cast(entity.object()))
    text->setTextString(L"text " + std::to_wstring(pick(9)));
  else if (auto* dimension = ZnDbDimension::cast(entity.object()))
    pick(2) ? dimension->setTextPosition(point) : dimension->setDimensionText(L"<> mm");
  else if (auto* window = ZnDbViewport::cast(entity.object()))
    pick(2) ? window->setCustomScale(size) : window->setTwistAngle(size);
  else if (auto* reference = ZnDbBlockReference::cast(entity.object()))
    pick(3)                      ? reference->setRotation(size)
    : pick(2) || !showsDrawn(id) ? reference->setPosition(point)
                                 : reference->setBlockTableRecord(one(spaces()));
  tell(fmt::format("shape of {}", handleText(id.handle()).utf8()));
}

void Desk::changeCenter() {
  Ids centers;
  for (const ZnDbObjectId id : live(ZnDbBlockReference::desc()))
    if (ZnDbTorviObjectWrapper::isCenterObject(id)) centers.push_back(id);
  if (centers.empty()) return;
  const ZnDbObjectId id = one(centers);
  ZnDbTorviObjectWrapper wrapper(id);
  const int what = pick(8);
  switch (what) {
  case 0:
    wrapper.breakAssociativity();
    wrapper.setIsExplicitlyDeassociatived(true);
    break;
  case 1:
    wrapper.resetExtensions();
    break;
  case 2:
    wrapper.resetOvershoots();
    break;
  case 3:
    wrapper.setSubentLinetypeScale(between(0.1, 3.0));
    break;
  case 4:
    wrapper.isCenterEvaluationSupressed() ? wrapper.unSupressCenterEvaluation()
                                          : wrapper.supressCenterEvaluation();
    break;
  case 5:
    wrapper.setSubentLineWeight(30);
    break;
  default: {
    ZnDbHolder<ZnDbTorviActionBody> body;
    if (body.openForWrite(wrapper.actionBody()) != Quorl::eOk) return;
    ZnArray<ZnString> names;
    body->ownedValueParamNames(names);
    for (const ZnString& name : names)
      if (name.utf8().find("Extension") != std::string::npos && pick(2))
        body->setDoubleParam(name, between(0.5, 5.0));
  }
  }
  ZnTorviLyxUtils::explicitlyEvaluateActionBody(wrapper.actionBody());
  tell(fmt::format("center {} of {}", what, handleText(id.handle()).utf8()));
}

void Desk::changeRecord() {
  const ZnDbObjectId id = one(live(ZnDbSymbolTableRecord::desc()));
  ZnDbHolder<ZnDbSymbolTableRecord> record;
  if (record.openForWrite(id) != Quorl::eOk) return;
  const ZnString name(L"N" + std::to_wstring(pick(6)));
  auto* layer = ZnDbLayerTableRecord::cast(record.object());
  ErrorStatus status = Quorl::eOk;
  // Center objects note the names of their linetypes, and nothing tells them of a new one.
  if (id.isDerivedFrom(ZnDbLinetypeTableRecord::desc()) || record->name().view().starts_with(L"*")) return;
  if (!layer || pick(2))
    status = record->setName(name);
  else if (pick(2))
    layer->setIsLocked(pick(3) == 0);
  else
    status = layer->setLinetypeObjectId(one(live(ZnDbLinetypeTableRecord::desc())));
  tell(fmt::format("record {} changed{}", handleText(id.handle()).utf8(), word(status)));
}

void Desk::changeHeader() {
  const int what = pick(5);
  switch (what) {
  case 0:
    db().setCurrentLayer(one(live(ZnDbLayerTableRecord::desc())));
    break;
  case 1:
    db().setCurrentLinetype(one(live(ZnDbLinetypeTableRecord::desc())));
    break;
  case 2:
    db().setLtscale(between(0.2, 3.0));
    break;
  default:
    db().setCurrentSpaceId(pick(2) ? db().modelSpaceId() : db().paperSpaceId());
  }
  tell(fmt::format("header {}", what));
}

void Desk::erase() {
  const ZnRxClass* const classes[] = {ZnDbSymbolTableRecord::desc(), ZnDbDictionary::desc(),
                                      ZnDbAssocAction::desc()};
  const Ids all = pick(2) ? drawn() : live(one(classes));
  for (int count = 1 + pick(3); count > 0 && !all.empty(); --count) {
    const ZnDbObjectId id = one(all);
    ZnDbHolder<ZnDbObject> object;
    const ErrorStatus opened = object.openForWrite(id);
    const ErrorStatus status = opened == Quorl::eOk ? object->erase() : opened;
    tell(fmt::format("erase {} {}{}", id.objectClass()->name().utf8(), handleText(id.handle()).utf8(),
                     word(status)));
  }
}

void Desk::unerase() {
  Ids erased;
  for (const ZnDbObjectId id : db().allObjectIds())
    if (id.isErased() && (id.isDerivedFrom(ZnDbSymbolTableRecord::desc()) ||
                          (id.isDerivedFrom(ZnDbEntity::desc()) && !ownerOf(id)->isAnonymous())))
      erased.push_back(id);
  if (erased.empty()) return;
  const ZnDbObjectId id = one(erased);
  ZnDbHolder<ZnDbObject> object;
  if (object.openForWrite(id, true) != Quorl::eOk) return;
  tell(fmt::format("unerase {} {}{}", id.objectClass()->name().utf8(), handleText(id.handle()).utf8(),
                   word(object->erase(false))));
}

void Desk::erasedAndChanged() {
  const Ids entities = drawn();
  if (entities.empty()) return;
  const ZnDbObjectId id = one(entities);
  ZnDbHolder<ZnDbEntity> entity;
  if (entity.openForWrite(id) != Quorl::eOk) return;
  entity->erase();
  entity->transformBy(ZnGeMatrix3d::translation({1, 0, 0}));
  if (pick(2)) entity->erase(false);
  tell(fmt::format("erase and change {}", handleText(id.handle()).utf8()));
}

void Desk::makeBlock() {
  const ZnDbObjectId space = one(spaces());
  Ids all;
  for (const ZnDbObjectId id : recordAt(space)->entityIds())
    if (!id.isErased()) all.push_back(id);
  if (all.empty()) return;
  ZnArray<ZnDbObjectId> chosen;
  for (int count = 1 + pick(3); count > 0; --count)
    if (const ZnDbObjectId id = one(all); !chosen.contains(id)) chosen.append(id);
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  record->setName(L"B" + std::to_wstring(pick(9)));
  ZnDbHolder<ZnDbBlockTable> table;
  ZnDbObjectId block;
  ErrorStatus status = table.openForWrite(db().blockTableId());
  if (status == Quorl::eOk) status = table->add(block, record.object());
  if (status == Quorl::eOk) status = record->assumeOwnershipOf(chosen);
  record.close();
  if (status == Quorl::eOk) add(new ZnDbBlockReference({0, 0, 0}, block), space);
  tell(fmt::format("block of {}{}", chosen.length(), word(status)));
}

void Desk::insert() {
  auto* reference = new ZnDbBlockReference({0, 0, 0}, one(spaces()));
  reference->setBlockTransform(someTransform());
  const ZnDbObjectId id = add(reference, one(spaces()));
  tell(id.isNull() ? "insert, refused" : "insert");
}

void Desk::explode() {
  const Ids references = drawn();
  if (references.empty()) return;
  const ZnDbObjectId id = one(references);
  std::vector<std::unique_ptr<ZnDbEntity>> pieces;
  ZnDbHolder<ZnDbEntity> entity;
  ErrorStatus status = entity.openForWrite(id);
  if (status == Quorl::eOk) status = entity->explode(pieces);
  const ZnDbObjectId space = id.slot()->object->ownerId();
  if (pieces.size() > 50) return;
  if (status == Quorl::eOk) entity->erase();
  entity.close();
  for (auto& piece : pieces) add(piece.release(), space);
  tell(fmt::format("explode {}{}", handleText(id.handle()).utf8(), word(status)));
}

ErrorStatus Desk::clone(const Ids& ids, ZnDbDatabase& to, ZnDbObjectId owner) {
  ZnArray<ZnDbObjectId> list;
  for (const ZnDbObjectId id : ids)
    if (!list.contains(id)) list.append(id);
  static constexpr int kContexts[] = {ZnDb::kCopyContext, ZnDb::kCopyContext, ZnDb::kExplodeContext};
  ZnDbIdMapping mapping(one(kContexts), &db(), &to);
  return db().deepCloneObjects(list, owner, mapping);
}

void Desk::copy() {
  const Ids entities = live(pick(6) ? ZnDbEntity::desc() : ZnDbSymbolTableRecord::desc());
  if (entities.empty()) return;
  Ids chosen;
  for (int count = 1 + pick(4); count > 0; --count) chosen.push_back(one(entities));
  const ZnDbObjectId owner = pick(8) ? one(spaces()) : db().layerTableId();
  tell(fmt::format("copy {}{}", chosen.size(), word(clone(chosen, db(), owner))));
}

void Desk::copyAcross() {
  const Ids entities = drawn();
  if (entities.empty()) return;
  Ids chosen;
  for (int count = 1 + pick(4); count > 0; --count) chosen.push_back(one(entities));
  ZnDbDatabase& other = sheets_[1 - current_]->db();
  const ErrorStatus status = clone(chosen, other, pick(2) ? other.modelSpaceId() : other.paperSpaceId());
  tell(fmt::format("copy {} across{}", chosen.size(), word(status)));
}

// What an aborted transaction did leaves nothing behind.
std::string Desk::aborted() {
  const std::string before = Sheet::look(db());
  tell("aborted:");
  {
    ZnDbTransaction transaction(db());
    for (int count = 1 + pick(3); count > 0; --count) actOnce();
    if (pick(2)) ZnDbAssocManager::evaluateTopLevelNetwork(&db());
  }
  const std::string fault = Sheet::difference(Sheet::look(db()), before);
  return fault.empty() ? fault : "after an abort " + fault;
}

struct DeedTable {
  using Deed = void (Desk::*)();
  static constexpr Deed kDeeds[] = {
      &Desk::create,       &Desk::create,           &Desk::create,       &Desk::createCenter,
      &Desk::createCenter, &Desk::createCenter,     &Desk::createCenter, &Desk::createDimension,
      &Desk::createRecord, &Desk::transform,        &Desk::transform,    &Desk::transform,
      &Desk::changeTraits, &Desk::changeShape,      &Desk::changeShape,  &Desk::changeCenter,
      &Desk::changeRecord, &Desk::changeHeader,     &Desk::erase,        &Desk::erase,
      &Desk::unerase,      &Desk::makeBlock,        &Desk::insert,       &Desk::explode,
      &Desk::copy,         &Desk::erasedAndChanged,
  };
};

void Desk::actOnce() { (this->*one(DeedTable::kDeeds))(); }

std::string Desk::step(std::uint32_t number) {
  random_.seed(number);
  Sheet& sheet = *sheets_[current_];
  const bool asText = pick(2) != 0;
  const int what = pick(40);
  if (what == 0) {
    current_ = 1 - current_;
    zndbHostApplicationServices()->setWorkingDatabase(&db());
    tell("the other drawing");
    return {};
  }
  if (what == 1) {
    tell(fmt::format("reopen{}", asText ? " as text" : ""));
    return sheet.reopen(asText);
  }
  if (what <= 4) {
    const int back = pick(6), forth = pick(6);
    tell(fmt::format("back {}, forth {}", back, forth));
    return sheet.wander(static_cast<size_t>(back), static_cast<size_t>(forth));
  }
  for (auto& each : sheets_) each->begin();
  std::string fault;
  if (what == 5)
    copyAcross();
  else if (what <= 8)
    fault = aborted();
  else
    actOnce();
  for (auto& each : sheets_)
    if (fault.empty()) fault = each->end(asText);
  return fault;
}
