#include "quorl/assoc/action_param.h"

#include "quorl/db/core/fields.h"

ZNRX_DEFINE_ABSTRACT(ZnDbAssocActionParam, ZnDbObject)

void ZnDbAssocActionParam::setName(const ZnString& name) {
  assertWriteEnabled();
  name_ = name;
  if (ZnDbAssocAction* action = parentAction()) action->paramsChanged();
}

ZnDbAssocAction* ZnDbAssocActionParam::parentAction() const {
  const ZnDbObjectId id = ownerId();
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) return nullptr;
  return static_cast<ZnDbAssocAction*>(id.slot()->object);
}

// The action groups its parameters by name, and leaves erased ones out.
void ZnDbAssocActionParam::attachLinks() {
  if (ZnDbAssocAction* action = parentAction()) action->paramsChanged();
}

void ZnDbAssocActionParam::detachLinks() { attachLinks(); }

template<class Walk> void ZnDbAssocActionParam::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(1, L"name", ZnDbSharedText{name_});
}

ZNDB_DEFINE_FIELDS(ZnDbAssocActionParam, ZnDbObject)
