#include "quorl/file/proxy_conversion.h"

#include <algorithm>

#include "quorl/file/proxy_entity.h"
#include "quorl/file/proxy_object.h"
#include "quorl/file/record_filer.h"
#include "quorl/file/text_in_filer.h"
#include "quorl/file/text_out_filer.h"

using Quorl::ErrorStatus;

namespace {

// The two faces of a new proxy.
struct NewProxy {
  std::unique_ptr<ZnDbObject> object;
  ZnDbProxy* proxy = nullptr;
};

NewProxy newProxy(const ZnDbProxyClass& cls) {
  NewProxy made;
  if (cls.isEntity()) {
    auto* entity = new ZnDbProxyEntity;
    made = {std::unique_ptr<ZnDbObject>(entity), entity};
  } else {
    auto* object = new ZnDbProxyObject;
    made = {std::unique_ptr<ZnDbObject>(object), object};
  }
  made.proxy->data.cls = &cls;
  return made;
}

void append(ZnDbObjectRecord& record, const ZnDbObjectRecord& rest) {
  record.bytes += rest.bytes;
  record.references.insert(record.references.end(), rest.references.begin(), rest.references.end());
  record.atoms.insert(record.atoms.end(), rest.atoms.begin(), rest.atoms.end());
}

constexpr int kBytesCode = 310, kAtomCode = 300;

// Bytes in lines of a width that a reader of differences can follow.
void writeBytesAsText(ZnDbTextOutFiler& filer, const ZnDbObjectRecord& rest) {
  constexpr size_t kBytesEachLine = 32;
  filer.writeSubclassMarker(kProxyDataMarker);
  for (size_t at = 0; at < rest.bytes.size(); at += kBytesEachLine)
    filer.writeBytes(kBytesCode, rest.bytes.data() + at, std::min(kBytesEachLine, rest.bytes.size() - at));
  for (const ZnDbReference& reference : rest.references)
    filer.writeId(Quorl::tdocReferenceCode(reference.kind), reference.id);
  for (const ZnAtom atom : rest.atoms) filer.writeString(kAtomCode, ZnString(atom));
}

ErrorStatus readBytesFromText(ZnDbTextInFiler& filer, ZnDbObjectRecord& rest) {
  if (!filer.atSubclassData(kProxyDataMarker)) return Quorl::eFileDamaged;
  ZnDbTdocItem item;
  while (!filer.atEndOfObject() && filer.readItem(item) == Quorl::eOk) {
    switch (Quorl::tdocType(item.code)) {
    case ZnTdocType::kBytes:
      Quorl::parseHexBytes(item.text.utf8(), rest.bytes);
      break;
    case ZnTdocType::kReference:
      rest.references.push_back({Quorl::tdocReferenceKind(item.code), item.id});
      break;
    case ZnTdocType::kText:
      rest.atoms.push_back(item.text.atom());
      break;
    default:
      filer.setStatus(Quorl::eUnexpectedGroupCode);
    }
  }
  return filer.status();
}

// Through text: the host's level is written anew and the class's own lines follow, references apart all
// along.
ErrorStatus readThroughText(const ZnDbProxy& proxy, ZnDbObject& object, ZnDbDatabase* database) {
  std::string lines;
  std::vector<ZnDbReference> references;
  ZnDbTextOutFiler out(lines, &references);
  if (const ErrorStatus status = proxy.baseTextOut(out); status != Quorl::eOk) return status;
  lines += proxy.data.rest.bytes;
  references.insert(references.end(), proxy.data.rest.references.begin(), proxy.data.rest.references.end());
  ZnDbTextInFiler in(lines, database, references);
  const ErrorStatus status = object.tdocInFields(in);
  return status != Quorl::eOk ? status : in.status();
}

ErrorStatus readThroughRecord(const ZnDbProxy& proxy, ZnDbObject& object, ZnDbDatabase* database) {
  ZnDbObjectRecord record;
  ZnDbRecordFiler filer(record, database);
  if (const ErrorStatus status = proxy.baseOut(filer); status != Quorl::eOk) return status;
  append(record, proxy.data.rest);
  filer.restart();
  if (const ErrorStatus status = object.bdocInFields(filer); status != Quorl::eOk) return status;
  if (filer.status() != Quorl::eOk) return filer.status();
  return filer.atEnd() ? Quorl::eOk : Quorl::eFileDamaged;
}

} // namespace

std::unique_ptr<ZnDbObject> zndbProxyFromRecord(const ZnDbProxyClass& cls, ZnDbRecordFiler& filer,
                                                const std::string_view* text) {
  NewProxy made = newProxy(cls);
  if (made.proxy->baseIn(filer) != Quorl::eOk) return nullptr;
  ZnDbProxyData& data = made.proxy->data;
  filer.takeRest(data.rest);
  if (text) {
    // Text has its names and numbers in its lines.
    if (!data.rest.bytes.empty() || !data.rest.atoms.empty()) {
      filer.setStatus(Quorl::eFileDamaged);
      return nullptr;
    }
    data.isText = true;
    data.rest.bytes = *text;
  }
  return std::move(made.object);
}

std::unique_ptr<ZnDbObject> zndbProxyFromText(const ZnDbProxyClass& cls, ZnDbTextInFiler& filer,
                                              bool bytesMarked) {
  NewProxy made = newProxy(cls);
  ErrorStatus status = made.proxy->baseTextIn(filer);
  ZnDbProxyData& data = made.proxy->data;
  data.isText = !bytesMarked;
  if (status == Quorl::eOk)
    status = bytesMarked ? readBytesFromText(filer, data.rest) : filer.takeRest(data.rest);
  if (filer.status() == Quorl::eOk) filer.setStatus(status);
  return status == Quorl::eOk ? std::move(made.object) : nullptr;
}

std::unique_ptr<ZnDbObject> zndbObjectFromProxy(const ZnDbProxy& proxy, const ZnRxClass& cls,
                                                ZnDbDatabase* database, ErrorStatus& status) {
  std::unique_ptr<ZnDbObject> object(static_cast<ZnDbObject*>(cls.create()));
  status = proxy.data.isText ? readThroughText(proxy, *object, database)
                             : readThroughRecord(proxy, *object, database);
  return status == Quorl::eOk ? std::move(object) : nullptr;
}

ErrorStatus zndbWriteRecord(const ZnDbObject& object, ZnDbObjectRecord& record, ZnDbRecordFiler& filer,
                            std::string_view& text) {
  text = {};
  const ZnDbProxy* proxy = zndbProxy(&object);
  const ErrorStatus status = proxy ? proxy->baseOut(filer) : object.bdocOutFields(filer);
  if (status != Quorl::eOk || !proxy) return status != Quorl::eOk ? status : filer.status();
  if (!proxy->data.isText) {
    append(record, proxy->data.rest);
    return filer.status();
  }
  text = proxy->data.rest.bytes;
  const auto& references = proxy->data.rest.references;
  record.references.insert(record.references.end(), references.begin(), references.end());
  return filer.status();
}

ErrorStatus zndbWriteText(const ZnDbObject& object, ZnDbTextOutFiler& filer) {
  const ZnDbProxy* proxy = zndbProxy(&object);
  const ErrorStatus status = proxy ? proxy->baseTextOut(filer) : object.tdocOutFields(filer);
  if (status != Quorl::eOk || !proxy) return status != Quorl::eOk ? status : filer.status();
  if (proxy->data.isText)
    filer.writeLines(proxy->data.rest.bytes, proxy->data.rest.references);
  else
    writeBytesAsText(filer, proxy->data.rest);
  return filer.status();
}
