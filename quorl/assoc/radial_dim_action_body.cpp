#include "quorl/assoc/radial_dim_action_body.h"

#include "quorl/assoc/dim_follow.h"
#include "quorl/db/entity/radial_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocRadialDimActionBody, ZnDbAssocDimActionBody, L"ASSOCRADIALDIMACTIONBODY")

Quorl::ErrorStatus ZnDbAssocRadialDimActionBody::createAndPostToDatabase(const ZnDbEdgeRef& edge,
                                                                         ZnDbObjectId dimension,
                                                                         ZnDbObjectId& bodyId) {
  if (!dimension.isDerivedFrom(ZnDbRadialDimension::desc())) return Quorl::eWrongObjectClass;
  return post(desc(), edge, dimension, bodyId);
}

Quorl::ErrorStatus ZnDbAssocRadialDimActionBody::follow(ZnDbDimension& dimension,
                                                        const ZnGeCircArc3d& circle) const {
  return dimension.isKindOf(ZnDbRadialDimension::desc()) ? zndbFollowCircle(dimension, circle)
                                                         : Quorl::eWrongObjectClass;
}
