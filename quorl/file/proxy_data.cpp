#include "quorl/file/proxy_data.h"

#include "quorl/file/proxy_entity.h"
#include "quorl/file/proxy_object.h"

using Quorl::ErrorStatus;

const ZnDbProxy* zndbProxy(const ZnDbObject* object) {
  const ZnRxClass* cls = object->isA();
  if (cls == ZnDbProxyObject::desc()) return static_cast<const ZnDbProxyObject*>(object);
  if (cls == ZnDbProxyEntity::desc()) return static_cast<const ZnDbProxyEntity*>(object);
  return nullptr;
}

ErrorStatus zndbWriteProxyData(ZnDbFiler& filer, const ZnDbProxyData& data) {
  filer.writeInt32(data.cls ? data.cls->number() : -1);
  filer.writeBool(data.isText);
  filer.writeBytes(data.rest.bytes.data(), data.rest.bytes.size());
  filer.writeInt32(static_cast<std::int32_t>(data.rest.references.size()));
  for (const ZnDbReference& reference : data.rest.references) {
    filer.writeInt8(static_cast<std::int8_t>(reference.kind));
    filer.writeId(reference.kind, reference.id);
  }
  filer.writeInt32(static_cast<std::int32_t>(data.rest.atoms.size()));
  for (const ZnAtom atom : data.rest.atoms) filer.writeAtom(atom);
  return filer.status();
}

ErrorStatus zndbReadProxyData(ZnDbFiler& filer, ZnDbProxyData& data) {
  ZnDbProxyData read;
  read.cls = ZnDbProxyClass::byNumber(filer.readInt32());
  read.isText = filer.readBool();
  read.rest.bytes = filer.readBytes();
  for (int count = filer.readCount(); count > 0; --count) {
    const std::int8_t kind = filer.readInt8();
    if (kind < 0 || kind >= kReferenceKinds) filer.setStatus(Quorl::eFileDamaged);
    if (filer.status() != Quorl::eOk) return filer.status();
    const auto known = static_cast<ZnReferenceKind>(kind);
    read.rest.references.push_back({known, filer.readId(known)});
  }
  for (int count = filer.readCount(); count > 0; --count) read.rest.atoms.push_back(filer.readAtom());
  if (!read.cls) filer.setStatus(Quorl::eFileDamaged);
  if (filer.status() == Quorl::eOk) data = std::move(read);
  return filer.status();
}
