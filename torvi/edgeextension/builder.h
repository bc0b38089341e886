// Makes edge extensions: an empty anchor for each edge, and the dimension style of the moment, whose lengths
// the lines are drawn with.
#pragma once

#include "torvi/core/builder.h"

class TORVI_EXPORT ZnEdgeExtensionBuilder : public ZnTorviBuilder {
public:
  // Two edges. A null database means the working one.
  ZnEdgeExtensionBuilder(const ZnArray<ZnDbEdgeRef>& edges, ZnDbDatabase* database);
  explicit ZnEdgeExtensionBuilder(ZnDbDatabase* database = nullptr);
  ~ZnEdgeExtensionBuilder() override = default;

  // The class of the bodies, found by name once; the module clears it when it goes.
  static ZnRxClass* gpDesc;

protected:
  ZnDbTorviLayout* getLayout() const override;
  // The style is that of the working database: eNoDatabase without one. eNotOpenedYet without a body.
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId bodyId) const override;
  Quorl::ErrorStatus subAddInputEdgeToBody(ZnDbTorviActionBody* body, const ZnDbEdgeRef& edge) const override;
  // No memory of the edges stays: anchors and remembered edges go, for the next evaluation to set anew.
  // eInvalidInput for a body of another kind.
  Quorl::ErrorStatus subClearInputEdgesFromBody(ZnDbTorviActionBody* body) const override;
};
