#include "torvi/edgeextension/builder.h"

#include "torvi/edgeextension/action_body.h"
#include "torvi/edgeextension/layout.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnEdgeExtensionBuilder::gpDesc = nullptr;

ZnEdgeExtensionBuilder::ZnEdgeExtensionBuilder(const ZnArray<ZnDbEdgeRef>& edges, ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbEdgeExtensionActionBody", gpDesc), database) {
  setInputEdges(edges);
}

ZnEdgeExtensionBuilder::ZnEdgeExtensionBuilder(ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbEdgeExtensionActionBody", gpDesc), database) {}

ZnDbTorviLayout* ZnEdgeExtensionBuilder::getLayout() const {
  return new ZnDbEdgeExtensionLayout(ZnDbObjectId());
}

ErrorStatus ZnEdgeExtensionBuilder::initValuesInBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbTorviActionBody> body(bodyId);
  if (!body.isOpen()) return Quorl::eNotOpenedYet;
  const ZnDbDatabase* working = zndbHostApplicationServices()->workingDatabase();
  return working ? body->setDimStyleDepId(working->dimstyle()) : Quorl::eNoDatabase;
}

ErrorStatus ZnEdgeExtensionBuilder::subAddInputEdgeToBody(ZnDbTorviActionBody* body,
                                                          const ZnDbEdgeRef&) const {
  ZnDbObjectId paramId;
  int paramIndex = 0;
  return body->addParam(ZnDbEdgeExtensionActionBody::anchorVertexParamName(),
                        ZnDbAssocVertexActionParam::desc(), paramId, paramIndex);
}

ErrorStatus ZnEdgeExtensionBuilder::subClearInputEdgesFromBody(ZnDbTorviActionBody* body) const {
  auto* extension = ZnDbEdgeExtensionActionBody::cast(body);
  if (!extension) return Quorl::eInvalidInput;
  extension->removeCachedRefEdgePoints();
  ErrorStatus status = Quorl::eOk;
  for (const ZnDbObjectId id : extension->paramsAtName(ZnDbEdgeExtensionActionBody::anchorVertexParamName()))
    status = extension->removeParam(id, true);
  return status;
}
