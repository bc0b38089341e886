#include "torvi/core/action_body_base.h"

#include "torvi/core/action_body_base_filer.h"
#include "torvi/host/class_registration.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbTorviActionBodyBase, ZnDbAssocActionBody)

namespace {
constexpr int kWholeTextIsHandle = 2;
}

ZnDbTorviActionBodyBase::ZnDbTorviActionBodyBase()
    : ZnDbAssocActionBody(kCreateImplementation)
    , filer_(std::make_unique<ZnDbTorviActionBodyBaseFiler>(this)) {}

ZnDbTorviActionBodyBase::~ZnDbTorviActionBodyBase() = default;

const ZnString& ZnDbTorviActionBodyBase::inputEdgeParamName() {
  static const ZnString name(L"InputEdge");
  return name;
}

const ZnString& ZnDbTorviActionBodyBase::outputEdgeParamName() {
  static const ZnString name(L"OutputEdge");
  return name;
}

ErrorStatus ZnDbTorviActionBodyBase::storeValue(const ZnString& name, const ZnDbEvalVariant& value) {
  ZnString errorMessage;
  return setValueParam(name, value, ZnString(), ZnString(), errorMessage, true, 0);
}

// What stands is not written again: the body would be kept for undo, and an evaluation that finds nothing new
// must leave no trace.
ErrorStatus ZnDbTorviActionBodyBase::changeValue(const ZnString& name, const ZnDbEvalVariant& value) {
  ZnDbEvalVariant standing;
  ZnString expression, evaluatorId;
  if (getValueParam(name, standing) == Quorl::eOk && standing == value &&
      getValueParam(name, standing, expression, evaluatorId) == Quorl::eOk && expression.isEmpty() &&
      evaluatorId.isEmpty())
    return Quorl::eOk;
  assertWriteEnabled(true, true);
  return storeValue(name, value);
}

int ZnDbTorviActionBodyBase::getIntParam(const ZnString& name, int defaultValue) const {
  ZnDbEvalVariant value;
  if (getValueParam(name, value) == Quorl::eOk) value.getValue(defaultValue);
  return defaultValue;
}

ErrorStatus ZnDbTorviActionBodyBase::setIntParam(const ZnString& name, int value) {
  return changeValue(name, ZnDbEvalVariant(value));
}

double ZnDbTorviActionBodyBase::getDoubleParam(const ZnString& name, double defaultValue) const {
  return valueOf(name, defaultValue);
}

ErrorStatus ZnDbTorviActionBodyBase::setDoubleParam(const ZnString& name, double value) {
  return changeValue(name, ZnDbEvalVariant(value));
}

bool ZnDbTorviActionBodyBase::getBoolParam(const ZnString& name, bool defaultValue) const {
  return valueOf(name, defaultValue ? 1.0 : 0.0) != 0.0;
}

ErrorStatus ZnDbTorviActionBodyBase::setBoolParam(const ZnString& name, bool value) {
  return changeValue(name, ZnDbEvalVariant(value ? 1.0 : 0.0));
}

ZnDbObjectId ZnDbTorviActionBodyBase::getObjectIdParam(const ZnString& name) const {
  ZnDbEvalVariant value;
  if (getValueParam(name, value) != Quorl::eOk) return {};
  // The way through the text of the handle ends at this same id; this one makes no text.
  ZnDbObjectId id;
  if (value.getValue(id) == Quorl::eOk && id.isValid() && id.database() == database()) return id;
  ZnString text;
  if (value.getValue(text) != Quorl::eOk || !database()) return {};
  if (database()->getZnDbObjectId(id, false, text.asZnDbHandle(kWholeTextIsHandle), 0) != Quorl::eOk)
    return {};
  return id;
}

ErrorStatus ZnDbTorviActionBodyBase::setObjectIdParam(const ZnString& name, ZnDbObjectId value) {
  return storeValue(name, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbTorviActionBodyBase::getPoint3dParam(const ZnString& name, ZnGePoint3d& value) const {
  ZnDbEvalVariant held;
  const ErrorStatus status = getValueParam(name, held);
  return status == Quorl::eOk ? held.getValue(value) : status;
}

ErrorStatus ZnDbTorviActionBodyBase::setPoint3dParam(const ZnString& name, const ZnGePoint3d& value) {
  return changeValue(name, ZnDbEvalVariant(value));
}

int ZnDbTorviActionBodyBase::edgeRefCount() const { return paramCountAtName(inputEdgeParamName()); }

ZnDbEdgeRef ZnDbTorviActionBodyBase::getEdgeRef(ZnDbObjectId edgeParamId) const {
  ZnDbHolder<ZnDbAssocEdgeActionParam> param(edgeParamId);
  // What is gone is saved as no edge, and must be none before it is saved.
  if (!param.isOpen() || !param->hasLiveEdge()) return {};
  // Asked several times in each evaluation: the array keeps its memory.
  static ZnArray<ZnDbEdgeRef> edges;
  if (param->edgeRefs(edges) != Quorl::eOk || edges.length() != 1) return {};
  return std::move(edges[0]);
}

ErrorStatus ZnDbTorviActionBodyBase::getEdgeRefs(ZnArray<ZnDbEdgeRef>& edges) const {
  edges.removeAll();
  const int count = edgeRefCount();
  if (count == 0) return Quorl::eNothingToDo;
  edges.setPhysicalLength(count);
  for (int i = 0; i < count; ++i) edges.append(getInputEdge(i));
  return Quorl::eOk;
}

ZnDbEdgeRef ZnDbTorviActionBodyBase::getInputEdge(int index) const {
  return getEdgeRef(paramAtName(inputEdgeParamName(), index));
}

ErrorStatus ZnDbTorviActionBodyBase::setEdgeRef(int index, const ZnDbEdgeRef& edge) {
  ZnDbHolder<ZnDbAssocEdgeActionParam> param;
  if (const ErrorStatus status = param.openForWrite(paramAtIndex(index)); status != Quorl::eOk) return status;
  return param->setEdgeRef(edge, true, false, 0);
}

ZnDbObjectId ZnDbTorviActionBodyBase::getOutputEdge(const ZnString& key) const {
  return getObjectIdParam(outputEdgeParamName() + key);
}

ErrorStatus ZnDbTorviActionBodyBase::setOutputEdge(const ZnString& key, ZnDbObjectId id) {
  return setObjectIdParam(outputEdgeParamName() + key, id);
}

ErrorStatus ZnDbTorviActionBodyBase::renameOutputEdgeKey(const ZnString& oldKey, const ZnString& newKey) {
  if (oldKey == newKey) return Quorl::eOk;
  const ZnDbObjectId id = getOutputEdge(oldKey);
  if (id.isNull()) return Quorl::eInvalidInput;
  const ErrorStatus status = removeValueParam(outputEdgeParamName() + oldKey);
  if (status != Quorl::eOk || newKey.isEmpty()) return status;
  return setOutputEdge(newKey, id);
}

void ZnDbTorviActionBodyBase::getOutputEdgeKeys(ZnArray<ZnString>& keys) const {
  ZnArray<ZnString> names;
  ownedValueParamNames(names);
  for (const ZnString& name : names) {
    if (name.find(outputEdgeParamName()) != 0) continue;
    ZnString key(name);
    keys.append(key.trimLeft(outputEdgeParamName()));
  }
}

ErrorStatus ZnDbTorviActionBodyBase::bdocOutFields(ZnDbFiler& filer) const {
  return filer_->bdocOutFields(filer);
}

ErrorStatus ZnDbTorviActionBodyBase::bdocInFields(ZnDbFiler& filer) { return filer_->bdocInFields(filer); }

ErrorStatus ZnDbTorviActionBodyBase::tdocOutFields(ZnDbTdocFiler& filer) const {
  return filer_->tdocOutFields(filer);
}

ErrorStatus ZnDbTorviActionBodyBase::tdocInFields(ZnDbTdocFiler& filer) {
  return filer_->tdocInFields(filer);
}
