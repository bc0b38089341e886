// The action body of an associative diametric dimension.
#pragma once

#include "quorl/assoc/dim_action_body.h"

class ZnDbAssocDiametricDimActionBody : public ZnDbAssocDimActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocDiametricDimActionBody)

public:
  // Binds the dimension, which stands in a space, to a circle or an arc and brings it up to date.
  static Quorl::ErrorStatus createAndPostToDatabase(const ZnDbEdgeRef& edge, ZnDbObjectId dimension,
                                                    ZnDbObjectId& bodyId);

protected:
  Quorl::ErrorStatus follow(ZnDbDimension& dimension, const ZnGeCircArc3d& circle) const override;
};
