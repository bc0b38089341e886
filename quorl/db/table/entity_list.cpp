#include "quorl/db/table/entity_list.h"

#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/properties_overrule.h"
#include "quorl/rx/print.h"
#include "quorl/rx/real_format.h"

namespace {

ZnString colorText(const ZnCmColor& color) {
  ZnString text;
  switch (color.method()) {
  case ZnCmColor::kByLayer:
    return L"BYLAYER";
  case ZnCmColor::kByBlock:
    return L"BYBLOCK";
  case ZnCmColor::kIndex:
    text.format(L"%d", color.colorIndex());
    break;
  case ZnCmColor::kTrueColor:
    text.format(L"#%06X", static_cast<unsigned>(color.rgb()));
    break;
  }
  return text;
}

ZnString weightText(ZnDb::LineWeight weight) {
  if (weight == ZnDb::kLineWeightByLayer) return L"BYLAYER";
  if (weight == ZnDb::kLineWeightByBlock) return L"BYBLOCK";
  if (weight == ZnDb::kLineWeightByDefault) return L"DEFAULT";
  ZnString text;
  return text.format(L"%d.%02d mm", weight / 100, weight % 100);
}

ZnString transparencyText(const ZnCmTransparency& transparency) {
  if (transparency.method() == ZnCmTransparency::kByLayer) return L"BYLAYER";
  if (transparency.method() == ZnCmTransparency::kByBlock) return L"BYBLOCK";
  ZnString text;
  return text.format(L"alpha %d", static_cast<int>(transparency.alpha()));
}

} // namespace

void ShareDB::listEntity(const ZnDbEntity* entity) {
  if (!entity) return;
  if (const auto* first = ZnRxOverrule::firstApplicable<ZnDbPropertiesOverrule>(entity))
    first->list(entity);
  else
    listEntityPlainly(entity);
}

void ShareDB::listEntityPlainly(const ZnDbEntity* entity) {
  if (!entity) return;
  const ZnRxClass* cls = entity->isA();
  znutPrintf(L"%ls\n", (cls->tdocName().isEmpty() ? cls->name() : cls->tdocName()).c_str());
  listCommonEntityAttributes(entity);
}

void ShareDB::listCommonEntityAttributes(const ZnDbEntity* entity) {
  if (!entity) return;
  const struct {
    const wchar_t* label;
    ZnString value;
  } lines[] = {
      {L"Handle", handleText(entity->handle())},
      {L"Layer", entity->layer()},
      {L"Color", colorText(entity->color())},
      {L"Linetype", entity->linetype()},
      {L"Linetype scale", Quorl::shortestReal(entity->linetypeScale())},
      {L"Lineweight", weightText(entity->lineWeight())},
      {L"Transparency", transparencyText(entity->transparency())},
      {L"Visible", entity->visibility() == ZnDb::kVisible ? L"yes" : L"no"},
  };
  for (const auto& line : lines) znutPrintf(L"%ls: %ls\n", line.label, line.value.c_str());
}
