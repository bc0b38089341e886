#include "quorl/rx/member_query_engine.h"

#include <algorithm>
#include <unordered_set>

#include "quorl/rx/member_collection.h"

ZnRxMemberQueryEngine* ZnRxMemberQueryEngine::theEngine() {
  static auto* engine = new ZnRxMemberQueryEngine;
  return engine;
}

Quorl::ErrorStatus ZnRxMemberQueryEngine::addFacetProvider(ZnRxFacetProvider* provider) {
  if (!provider) return Quorl::eInvalidInput;
  if (std::find(providers_.begin(), providers_.end(), provider) != providers_.end())
    return Quorl::eDuplicateKey;
  providers_.push_back(provider);
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxMemberQueryEngine::removeFacetProvider(ZnRxFacetProvider* provider) {
  if (!provider) return Quorl::eInvalidInput;
  return std::erase(providers_, provider) > 0 ? Quorl::eOk : Quorl::eKeyNotFound;
}

ZnRxMember* ZnRxMemberQueryEngine::find(const ZnRxObject* object, std::wstring_view name,
                                        const ZnRxMemberQueryContext* context) const {
  for (const ZnRxClass* cls : classesOf(object, context))
    if (ZnRxMember* member = findInClass(cls, name)) return member;
  return nullptr;
}

ZnRxMember* ZnRxMemberQueryEngine::findInClass(const ZnRxClass* cls, std::wstring_view name) const {
  for (; cls; cls = cls->parent())
    if (ZnRxMember* member = cls->members().find(name)) return member;
  return nullptr;
}

std::vector<ZnRxMember*> ZnRxMemberQueryEngine::members(const ZnRxObject* object,
                                                        const ZnRxMemberQueryContext* context) const {
  std::vector<ZnRxMember*> found;
  std::unordered_set<std::wstring_view> names;
  for (const ZnRxClass* cls : classesOf(object, context))
    for (; cls; cls = cls->parent())
      for (int i = 0; i < cls->members().count(); ++i) {
        ZnRxMember* member = cls->members().at(i);
        if (names.insert(member->name().view()).second) found.push_back(member);
      }
  return found;
}

// The object's class and its facets in the order in which they are searched.
std::vector<const ZnRxClass*> ZnRxMemberQueryEngine::classesOf(const ZnRxObject* object,
                                                               const ZnRxMemberQueryContext* context) const {
  if (!object) return {};
  if (!context) context = defaultContext();
  ZnArray<ZnRxClass*> facets;
  for (ZnRxFacetProvider* provider : std::vector(providers_)) provider->getFacets(object, context, facets);
  std::vector<const ZnRxClass*> classes(facets.begin(), facets.end());
  classes.insert(context->promotesFacets() ? classes.end() : classes.begin(), object->isA());
  return classes;
}
