#include "torvi/core/entity_drafts.h"

using Quorl::ErrorStatus;

namespace torvi {

namespace {

// To the last bit: a tolerance would let what it hides add up.
bool isExactly(const ZnGePoint3d& a, const ZnGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

bool haveSameShape(const ZnDbLine& a, const ZnDbLine& b) {
  return isExactly(a.startPoint(), b.startPoint()) && isExactly(a.endPoint(), b.endPoint());
}

bool haveSameShape(const ZnDbArc& a, const ZnDbArc& b) {
  return isExactly(a.center(), b.center()) && a.radius() == b.radius() &&
         isExactly(ZnGePoint3d() + a.normal(), ZnGePoint3d() + b.normal()) &&
         a.startAngle() == b.startAngle() && a.endAngle() == b.endAngle();
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
