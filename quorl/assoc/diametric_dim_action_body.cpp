#include "quorl/assoc/diametric_dim_action_body.h"

#include "quorl/assoc/dim_follow.h"
#include "quorl/db/entity/diametric_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocDiametricDimActionBody, ZnDbAssocDimActionBody,
                          L"ASSOCDIAMETRICDIMACTIONBODY")

Quorl::ErrorStatus ZnDbAssocDiametricDimActionBody::createAndPostToDatabase(const ZnDbEdgeRef& edge,
                                                                            ZnDbObjectId dimension,
                                                                            ZnDbObjectId& bodyId) {
  if (!dimension.isDerivedFrom(ZnDbDiametricDimension::desc())) return Quorl::eWrongObjectClass;
  return post(desc(), edge, dimension, bodyId);
}

Quorl::ErrorStatus ZnDbAssocDiametricDimActionBody::follow(ZnDbDimension& dimension,
                                                           const ZnGeCircArc3d& circle) const {
  return dimension.isKindOf(ZnDbDiametricDimension::desc()) ? zndbFollowCircle(dimension, circle)
                                                            : Quorl::eWrongObjectClass;
}
