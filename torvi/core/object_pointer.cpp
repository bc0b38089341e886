#include "torvi/core/object_pointer.h"

#include "torvi/dbutils/lyx_utils.h"

namespace {
TorviWrapperMaker makers[kTorviAny] = {};
}

void registerTorviWrapper(ZnDbTorviType kind, TorviWrapperMaker maker) {
  if (kind > kTorviNone && kind < kTorviAny) makers[kind] = maker;
}

ZnDbTorviObjectWrapper* makeTorviWrapper(ZnDbObjectId centerObject) {
  ZnDbTorviObjectWrapper::Found found;
  found.bodyId = ZnTorviLyxUtils::getTorviActionBodyId(centerObject);
  found.kind = ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(found.bodyId);
  const TorviWrapperMaker maker = makers[found.kind];
  if (!maker) return nullptr;
  ZnDbTorviObjectWrapper::found_ = &found;
  ZnDbTorviObjectWrapper* wrapper = maker(centerObject);
  ZnDbTorviObjectWrapper::found_ = nullptr;
  return wrapper;
}
