#include "quorl/db/table/external_link.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/open.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbExternalLink, ZnDbObject, L"EXTERNALLINK")

ZnDbObjectId ZnDbExternalLink::of(const ZnDbObject& block) {
  ZnDbObjectId id;
  const ZnDbHolder<ZnDbDictionary> dictionary(block.extensionDictionary());
  if (dictionary.isOpen()) dictionary->getAt(dictionaryKey(), id);
  return id.isDerivedFrom(desc()) ? id : ZnDbObjectId();
}

bool ZnDbExternalLink::isShownBy(const ZnDbBlockTableRecord& block) {
  return block.isFromExternalReference() || block.name().view().find(L'|') != std::wstring_view::npos;
}

void ZnDbExternalLink::setPath(const ZnString& path) {
  assertWriteEnabled();
  path_ = path;
}

void ZnDbExternalLink::setIsUnloaded(bool unloaded) {
  assertWriteEnabled();
  unloaded_ = unloaded;
}

void ZnDbExternalLink::setSources(std::vector<Source> sources) {
  assertWriteEnabled();
  sources_ = std::move(sources);
}

template<class Walk> void ZnDbExternalLink::describe(Walk& walk) {
  // What was erased since needs no successor.
  struct Keep {
    bool isFiled(const Source& source) const { return !source.id.isErased(); }
    bool isKept(const Source& source) const { return !source.id.isNull(); }
  };
  walk.section(className(), 1);
  walk.field(3, L"path", path_);
  walk.field(290, L"unloaded", unloaded_);
  const auto fields = [](auto& inner, Source& source) {
    inner.field(1, L"key", source.key);
    inner.id(ZnReferenceKind::kSoftPointer, 330, L"object", source.id);
  };
  walk.list(1, L"sources", sources_, fields, Keep());
}

ZNDB_DEFINE_FIELDS(ZnDbExternalLink, ZnDbObject)
