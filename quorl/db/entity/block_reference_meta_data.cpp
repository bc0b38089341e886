#include "quorl/db/entity/block_reference_meta_data.h"

#include <algorithm>

#include "quorl/db/entity/block_reference.h"

ZNRX_DEFINE_ABSTRACT(ZnDbBlockReferenceMetaDataExtension, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbBlockReferenceMetaDataPECollection, ZnRxObject)

namespace {

const bool attached = [] {
  static ZnDbBlockReferenceMetaDataPECollection ofReferences;
  ZnDbBlockReference::rxInit();
  ZnDbBlockReferenceMetaDataPECollection::rxInit();
  ZnDbBlockReference::desc()->addX(ZnDbBlockReferenceMetaDataPECollection::desc(), &ofReferences);
  return true;
}();

} // namespace

Quorl::ErrorStatus
ZnDbBlockReferenceMetaDataPECollection::regExtension(ZnDbBlockReferenceMetaDataExtension* extension) {
  if (!extension) return Quorl::eNullObjectPointer;
  if (std::find(extensions_.begin(), extensions_.end(), extension) != extensions_.end())
    return Quorl::eDuplicateKey;
  extensions_.push_back(extension);
  return Quorl::eOk;
}

Quorl::ErrorStatus
ZnDbBlockReferenceMetaDataPECollection::unregExtension(ZnDbBlockReferenceMetaDataExtension* extension) {
  const auto found = std::find(extensions_.begin(), extensions_.end(), extension);
  if (found == extensions_.end()) return Quorl::eKeyNotFound;
  extensions_.erase(found);
  return Quorl::eOk;
}

ZnDbBlockReferenceMetaDataExtension*
ZnDbBlockReferenceMetaDataPECollection::extensionOf(const ZnDbBlockReference* reference) const {
  for (ZnDbBlockReferenceMetaDataExtension* extension : extensions_)
    if (extension->isApplicable(reference)) return extension;
  return nullptr;
}
