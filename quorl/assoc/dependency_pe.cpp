#include "quorl/assoc/dependency_pe.h"

ZNRX_DEFINE_ABSTRACT(ZnDbAssocDependencyPE, ZnRxObject)

Quorl::ErrorStatus ZnDbAssocDependencyPE::redirectToAnotherObject(const ZnDbObject*,
                                                                  const ZnDbCompoundObjectId& wanted,
                                                                  ZnDbAssocDependency*,
                                                                  ZnDbCompoundObjectId& redirected) const {
  redirected = wanted;
  return Quorl::eOk;
}
