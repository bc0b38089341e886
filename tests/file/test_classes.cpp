#include "file/test_classes.h"

using Quorl::ErrorStatus;

namespace fileTest {

ZnRxClass* Gadget::gpDesc = nullptr;
ZnRxClass* Note::gpDesc = nullptr;
ErrorStatus Note::readStatus = Quorl::eOk;

ErrorStatus Gadget::bdocOutFields(ZnDbFiler& filer) const {
  ZnDbEntity::bdocOutFields(filer);
  filer.writeString(name);
  filer.writeAtom(kind);
  filer.writeBytes(blob.data(), blob.size());
  filer.writeDouble(size);
  filer.writeInt32(static_cast<std::int32_t>(parts.size()));
  for (const ZnDbObjectId part : parts) filer.writeHardPointerId(part);
  return filer.status();
}

ErrorStatus Gadget::bdocInFields(ZnDbFiler& filer) {
  ZnDbEntity::bdocInFields(filer);
  name = filer.readString();
  kind = filer.readAtom();
  blob = filer.readBytes();
  size = filer.readDouble();
  parts.clear();
  for (int count = filer.readCount(); count > 0; --count) parts.push_back(filer.readHardPointerId());
  return filer.status();
}

ErrorStatus Gadget::tdocOutFields(ZnDbTdocFiler& filer) const {
  ZnDbEntity::tdocOutFields(filer);
  filer.writeSubclassMarker(L"Gadget");
  filer.writeString(1, name);
  filer.writeString(2, ZnString(kind));
  filer.writeBytes(310, blob.data(), blob.size());
  filer.writeDouble(40, size);
  for (const ZnDbObjectId part : parts) filer.writeId(340, part);
  return filer.status();
}

ErrorStatus Gadget::tdocInFields(ZnDbTdocFiler& filer) {
  ZnDbEntity::tdocInFields(filer);
  if (!filer.atSubclassData(L"Gadget")) return filer.status();
  parts.clear();
  ZnDbTdocItem item;
  while (!filer.atEndOfObject() && filer.readItem(item) == Quorl::eOk) {
    if (item.code == 1) name = item.text;
    if (item.code == 2) kind = item.text.atom();
    if (item.code == 40) size = item.real;
    if (item.code == 340) parts.push_back(item.id);
    if (item.code != 310) continue;
    blob.clear();
    const std::string hex = item.text.utf8();
    for (size_t i = 0; i < hex.size(); i += 2)
      blob += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return filer.status();
}

ErrorStatus Note::bdocOutFields(ZnDbFiler& filer) const {
  ZnDbObject::bdocOutFields(filer);
  filer.writeSoftPointerId(watched);
  return filer.status();
}

ErrorStatus Note::bdocInFields(ZnDbFiler& filer) {
  ZnDbObject::bdocInFields(filer);
  watched = filer.readSoftPointerId();
  return readStatus != Quorl::eOk ? readStatus : filer.status();
}

ErrorStatus Note::tdocOutFields(ZnDbTdocFiler& filer) const {
  ZnDbObject::tdocOutFields(filer);
  filer.writeSubclassMarker(L"Note");
  filer.writeId(330, watched);
  return filer.status();
}

ErrorStatus Note::tdocInFields(ZnDbTdocFiler& filer) {
  ZnDbObject::tdocInFields(filer);
  ZnDbTdocItem item;
  if (filer.atSubclassData(L"Note") && filer.readItem(item) == Quorl::eOk) watched = item.id;
  return readStatus != Quorl::eOk ? readStatus : filer.status();
}

void Note::attachLinks() {
  if (!link_ && watched.isValid()) link_ = std::make_unique<ZnDbWatchLink>(objectId(), watched);
}

void registerTestClasses() {
  Gadget::gpDesc = newZnRxClass(
      L"Gadget", L"ZnDbEntity", kVersion, kMaintenance, kProxyFlags,
      []() -> ZnRxObject* { return new Gadget; }, L"GADGET", L"Tests");
  Note::gpDesc = newZnRxClass(
      L"Note", L"ZnDbObject", kVersion, kMaintenance, kProxyFlags, []() -> ZnRxObject* { return new Note; },
      nullptr, L"Tests");
  znrxBuildClassHierarchy();
}

void deleteTestClasses() {
  for (ZnRxClass** cls : {&Gadget::gpDesc, &Note::gpDesc}) {
    deleteZnRxClass(*cls);
    *cls = nullptr;
  }
}

} // namespace fileTest
