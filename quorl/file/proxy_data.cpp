#include "quorl/file/proxy_data.h"

#include "quorl/file/proxy_entity.h"
#include "quorl/file/proxy_object.h"

using Quorl::ErrorStatus;

namespace {

void writeReference(ZnDbFiler& filer, const ZnDbReference& reference) {
  switch (reference.kind) {
  case ZnReferenceKind::kSoftPointer:
    return filer.wrSoftPointerId(reference.id);
  case ZnReferenceKind::kHardPointer:
    return filer.wrHardPointerId(reference.id);
  case ZnReferenceKind::kSoftOwner:
    return filer.wrSoftOwnershipId(reference.id);
  case ZnReferenceKind::kHardOwner:
    return filer.wrHardOwnershipId(reference.id);
  }
}

ZnDbObjectId readReference(ZnDbFiler& filer, ZnReferenceKind kind) {
  switch (kind) {
  case ZnReferenceKind::kSoftPointer:
    return filer.rdSoftPointerId();
  case ZnReferenceKind::kHardPointer:
    return filer.rdHardPointerId();
  case ZnReferenceKind::kSoftOwner:
    return filer.rdSoftOwnershipId();
  case ZnReferenceKind::kHardOwner:
    return filer.rdHardOwnershipId();
  }
  return {};
}

} // namespace

const ZnDbProxy* zndbProxy(const ZnDbObject* object) {
  const ZnRxClass* cls = object->isA();
  if (cls == ZnDbProxyObject::desc()) return static_cast<const ZnDbProxyObject*>(object);
  if (cls == ZnDbProxyEntity::desc()) return static_cast<const ZnDbProxyEntity*>(object);
  return nullptr;
}

ErrorStatus zndbWriteProxyData(ZnDbFiler& filer, const ZnDbProxyData& data) {
  filer.wrInt32(data.cls ? data.cls->number() : -1);
  filer.wrBool(data.isText);
  filer.wrBytes(data.rest.bytes.data(), data.rest.bytes.size());
  filer.wrInt32(static_cast<std::int32_t>(data.rest.references.size()));
  for (const ZnDbReference& reference : data.rest.references) {
    filer.wrInt8(static_cast<std::int8_t>(reference.kind));
    writeReference(filer, reference);
  }
  filer.wrInt32(static_cast<std::int32_t>(data.rest.atoms.size()));
  for (const ZnAtom atom : data.rest.atoms) filer.wrAtom(atom);
  return filer.status();
}

ErrorStatus zndbReadProxyData(ZnDbFiler& filer, ZnDbProxyData& data) {
  ZnDbProxyData read;
  read.cls = ZnDbProxyClass::byNumber(filer.rdInt32());
  read.isText = filer.rdBool();
  read.rest.bytes = filer.rdBytes();
  for (int count = filer.rdCount(); count > 0; --count) {
    const std::int8_t kind = filer.rdInt8();
    if (kind < 0 || kind >= kReferenceKinds) filer.setStatus(Quorl::eFileDamaged);
    if (filer.status() != Quorl::eOk) return filer.status();
    const auto known = static_cast<ZnReferenceKind>(kind);
    read.rest.references.push_back({known, readReference(filer, known)});
  }
  for (int count = filer.rdCount(); count > 0; --count) read.rest.atoms.push_back(filer.rdAtom());
  if (!read.cls) filer.setStatus(Quorl::eFileDamaged);
  if (filer.status() == Quorl::eOk) data = std::move(read);
  return filer.status();
}
