#include "torvi/core/entity_drafts.h"

using Quorl::ErrorStatus;

namespace torvi {

namespace {

// To the last bit: a tolerance would let what it hides add up.
bool isExactly(const ZnGePoint3d& a, const ZnGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

bool haveSameShape(const ZnDbLine& a, const ZnDbLine& b) {
  return isExactly(a.startPoint(), b.startPoint()) && isExactly(a.endPoint(), b.endPoint());
}

bool isExactly(const ZnGeVector3d& a, const ZnGeVector3d& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

// A setter brings a normal to unit length, so that of a draft to which nobody gave another may differ in its
// last digit from the one that it was drafted from.
bool haveSameNormal(const ZnDbArc& entity, const ZnDbArc& draft) {
  if (isExactly(entity.normal(), draft.normal())) return true;
  return isExactly(ZnDbArc(entity.center(), entity.normal(), 0.0, 0.0, 0.0).normal(), draft.normal());
}

bool haveSameShape(const ZnDbArc& entity, const ZnDbArc& draft) {
  return isExactly(entity.center(), draft.center()) && entity.radius() == draft.radius() &&
         haveSameNormal(entity, draft) && entity.startAngle() == draft.startAngle() &&
         entity.endAngle() == draft.endAngle();
}

bool haveSameTraits(const ZnDbEntity& a, const ZnDbEntity& b) {
  return a.layerId() == b.layerId() && a.color() == b.color() && a.linetypeId() == b.linetypeId() &&
         a.lineWeight() == b.lineWeight() && a.linetypeScale() == b.linetypeScale() &&
         a.transparency() == b.transparency() && a.visibility() == b.visibility();
}

// Of what is neither line nor arc the traits alone are drafted.
std::unique_ptr<ZnDbEntity> draftOf(const ZnDbEntity& entity) {
  std::unique_ptr<ZnDbEntity> draft;
  if (const auto* arc = ZnDbArc::cast(&entity))
    draft = std::make_unique<ZnDbArc>(arc->center(), arc->normal(), arc->radius(), arc->startAngle(),
                                      arc->endAngle());
  else if (const auto* line = ZnDbLine::cast(&entity))
    draft = std::make_unique<ZnDbLine>(line->startPoint(), line->endPoint());
  else
    draft = std::make_unique<ZnDbLine>();
  draft->setPropertiesFrom(&entity);
  return draft;
}

} // namespace

EntityDrafts::~EntityDrafts() {
  for (ZnDbEntity* entity : entities_) entity->close();
}

ErrorStatus EntityDrafts::open(const ZnArray<ZnDbObjectId>& ids) {
  entities_.setPhysicalLength(ids.length());
  drafts_.setPhysicalLength(ids.length());
  owned_.reserve(static_cast<size_t>(ids.length()));
  for (const ZnDbObjectId id : ids) {
    ZnDbObject* object = nullptr;
    if (const ErrorStatus status = zndbForceOpenObjectOnLockedLayer(object, id); status != Quorl::eOk)
      return status;
    entities_.append(static_cast<ZnDbEntity*>(object));
    owned_.push_back(draftOf(*entities_.last()));
    drafts_.append(owned_.back().get());
  }
  return Quorl::eOk;
}

bool EntityDrafts::hasShapeOfDraft(int index) const {
  const ZnDbEntity *entity = entities_[index], *draft = drafts_[index];
  if (const auto* line = ZnDbLine::cast(entity))
    return haveSameShape(*line, static_cast<const ZnDbLine&>(*draft));
  if (const auto* arc = ZnDbArc::cast(entity))
    return haveSameShape(*arc, static_cast<const ZnDbArc&>(*draft));
  return true;
}

void EntityDrafts::writeTraits() {
  for (int i = 0; i < entities_.length(); ++i)
    if (!haveSameTraits(*entities_[i], *drafts_[i])) entities_[i]->setPropertiesFrom(drafts_[i]);
}

} // namespace torvi
