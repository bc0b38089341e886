// Makes center marks: first values, and whether the extension lines are shown.
#pragma once

#include "torvi/core/builder.h"

class TORVI_EXPORT ZnCenterMarkBuilder : public ZnTorviBuilder {
public:
  // A null database means the working one.
  ZnCenterMarkBuilder(const ZnArray<ZnDbEdgeRef>& edges, ZnDbDatabase* database);
  explicit ZnCenterMarkBuilder(ZnDbDatabase* database = nullptr);
  ~ZnCenterMarkBuilder() override = default;

  // The class of the bodies, found by name once; the module clears it when it goes.
  static ZnRxClass* gpDesc;

protected:
  ZnDbTorviLayout* getLayout() const override;
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId bodyId) const override;
  // Decides once on the extension lines: with the arc rule on, an arc of less than 240 degrees has none.
  // eInvalidInput for a body of another kind and, when the rule has to look at it, an edge that is no arc.
  Quorl::ErrorStatus subAddInputEdgeToBody(ZnDbTorviActionBody* body, const ZnDbEdgeRef& edge) const override;
};
