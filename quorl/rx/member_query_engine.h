// Finds the members of objects: those of their class and its ancestors, and those of facets.
#pragma once

#include <string_view>
#include <vector>

#include "quorl/rx/facet_provider.h"
#include "quorl/rx/member.h"

class ZnRxMemberQueryEngine {
public:
  static ZnRxMemberQueryEngine* theEngine();

  // The caller keeps the provider. eInvalidInput, eDuplicateKey, eKeyNotFound.
  Quorl::ErrorStatus addFacetProvider(ZnRxFacetProvider* provider);
  Quorl::ErrorStatus removeFacetProvider(ZnRxFacetProvider* provider);

  const ZnRxMemberQueryContext* defaultContext() const { return &default_; }
  const ZnRxMemberQueryContext* promotingContext() const { return &promoting_; }

  // The first member of that name in the order of the context (null: the default context), or null.
  ZnRxMember* find(const ZnRxObject* object, std::wstring_view name,
                   const ZnRxMemberQueryContext* context = nullptr) const;
  // In the class and its ancestors, without facets.
  ZnRxMember* findInClass(const ZnRxClass* cls, std::wstring_view name) const;
  // All members in that order, each class before its ancestors; of members of one name the first only.
  std::vector<ZnRxMember*> members(const ZnRxObject* object,
                                   const ZnRxMemberQueryContext* context = nullptr) const;

private:
  ZnRxMemberQueryEngine() = default;
  std::vector<const ZnRxClass*> classesOf(const ZnRxObject* object,
                                          const ZnRxMemberQueryContext* context) const;

  ZnRxMemberQueryContext default_{false}, promoting_{true};
  std::vector<ZnRxFacetProvider*> providers_;
};
