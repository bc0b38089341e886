#include "torvi/edgeextension/action_body.h"

#include "torvi/edgeextension/layout.h"
#include "torvi/host/class_registration.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbEdgeExtensionActionBody, ZnDbTorviActionBody)

namespace {

constexpr int kEdges = 2;

// Names of values, built once for the edges that there are: a name that keeps its buffer is looked up without
// making text.
const ZnString kCachedStarts[kEdges] = {L"CachedStartPoint0", L"CachedStartPoint1"};
const ZnString kCachedEnds[kEdges] = {L"CachedEndPoint0", L"CachedEndPoint1"};

ZnString nameAt(const ZnString (&names)[kEdges], const wchar_t* prefix, int index) {
  if (index >= 0 && index < kEdges) return names[index];
  return ZnString(prefix) + ZnString(std::to_wstring(index).c_str());
}

ZnString startName(int index) { return nameAt(kCachedStarts, L"CachedStartPoint", index); }
ZnString endName(int index) { return nameAt(kCachedEnds, L"CachedEndPoint", index); }

} // namespace

const ZnString& ZnDbEdgeExtensionActionBody::anchorVertexParamName() {
  static const ZnString name(L"AnchorVertex");
  return name;
}

ZnDbTorviLayout* ZnDbEdgeExtensionActionBody::getLayout() const {
  return new ZnDbEdgeExtensionLayout(centerObjectId());
}

ErrorStatus ZnDbEdgeExtensionActionBody::breakAssociativity() {
  const ErrorStatus status = ZnDbTorviActionBody::breakAssociativity();
  if (status != Quorl::eOk) return status;
  for (const ZnDbObjectId id : paramsAtName(anchorVertexParamName())) {
    ZnDbHolder<ZnDbAssocVertexActionParam> param;
    if (param.openForWrite(id) == Quorl::eOk) param->emptyVertex(true);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbEdgeExtensionActionBody::addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& idMap,
                                                                           ZnArray<ZnDbObjectId>& ids) const {
  const ErrorStatus status = ZnDbTorviActionBody::addMoreObjectsToDeepCloneOverride(idMap, ids);
  const ZnDbObjectId style = dimStyleDepId();
  if (idMap.destDb() != database() && style.isValid()) ids.append(style);
  return status;
}

ErrorStatus ZnDbEdgeExtensionActionBody::getCachedRefEdgePoints(int index,
                                                                ZnArray<ZnGePoint3d>& points) const {
  points.setLogicalLength(2);
  const ErrorStatus status = getPoint3dParam(startName(index), points[0]);
  return status == Quorl::eOk ? getPoint3dParam(endName(index), points[1]) : status;
}

ErrorStatus ZnDbEdgeExtensionActionBody::setCachedRefEdgePoints(int index,
                                                                const ZnArray<ZnGePoint3d>& points) {
  if (points.length() < 2) return Quorl::eInvalidInput;
  const ErrorStatus status = setPoint3dParam(startName(index), points[0]);
  return status == Quorl::eOk ? setPoint3dParam(endName(index), points[1]) : status;
}

void ZnDbEdgeExtensionActionBody::removeCachedRefEdgePoints() {
  for (int i = 0; i < kEdges; ++i) {
    removeValueParam(kCachedStarts[i]);
    removeValueParam(kCachedEnds[i]);
  }
}

ErrorStatus ZnDbEdgeExtensionActionBody::getAnchorVertex(int index, ZnDbVertexRef& vertex) const {
  vertex = ZnDbVertexRef();
  ZnDbHolder<ZnDbAssocVertexActionParam> param;
  if (const ErrorStatus status = param.open(paramAtName(anchorVertexParamName(), index));
      status != Quorl::eOk)
    return status;
  ZnDbObjectId topId;
  if (!param->dependentTopId(topId) || !topId.isValid() || topId.isErased()) return Quorl::eNothingToDo;
  ZnArray<ZnDbVertexRef> vertices;
  if (param->vertexRefs(vertices) != Quorl::eOk || vertices.isEmpty()) return Quorl::eNothingToDo;
  vertex = std::move(vertices[0]);
  return Quorl::eOk;
}

ErrorStatus ZnDbEdgeExtensionActionBody::setAnchorVertex(int index, const ZnDbVertexRef& vertex) {
  ZnDbHolder<ZnDbAssocVertexActionParam> param;
  const ErrorStatus status = param.openForWrite(paramAtName(anchorVertexParamName(), index));
  return status == Quorl::eOk ? param->setVertexRef(vertex, true, false, 0) : status;
}
