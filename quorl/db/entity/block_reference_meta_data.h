// Block references that stand for something else: what the property views should call and show them as.
#pragma once

#include <vector>

#include "quorl/base/string.h"
#include "quorl/rx/class_members.h"

class ZnDbBlockReference;

// One kind of such references. The operations are asked only where isApplicable says yes.
class ZnDbBlockReferenceMetaDataExtension : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbBlockReferenceMetaDataExtension)

public:
  virtual bool isApplicable(const ZnDbBlockReference* reference) const = 0;
  // Name of the run-time class whose members are the reference's properties.
  virtual ZnString runtimeClassName(const ZnDbBlockReference* reference) const = 0;
  // Names of the kind for the user and for programs; a name that the kind does not tell is left alone.
  virtual Quorl::ErrorStatus localizedTypeName(const ZnDbBlockReference* reference, ZnString& name) const = 0;
  virtual Quorl::ErrorStatus globalTypeName(const ZnDbBlockReference* reference, ZnString& name,
                                            int variant) const = 0;
  // Properties of block references by number; eNothingToDo leaves the host's rule.
  virtual Quorl::ErrorStatus isPropertyShown(const ZnDbBlockReference* reference, int property,
                                             bool& shown) const = 0;
  virtual Quorl::ErrorStatus isPropertyReadOnly(const ZnDbBlockReference* reference, int property,
                                                bool& readOnly) const = 0;
  // Whether the kind wants the properties of its block's attributes shown.
  virtual bool showsBlockProperties(const ZnDbBlockReference* reference) const = 0;
  // Names under which selections and filters group the kind.
  virtual Quorl::ErrorStatus selectionTypeName(const ZnDbBlockReference* reference, ZnString& name) const = 0;
  virtual Quorl::ErrorStatus filterTypeName(const ZnDbBlockReference* reference, ZnString& name) const = 0;
};

// The kinds that are registered; an extension of the class of block references from the start.
class ZnDbBlockReferenceMetaDataPECollection : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbBlockReferenceMetaDataPECollection)

public:
  // The caller keeps the extension and takes it out before it dies. eNullObjectPointer, eDuplicateKey.
  Quorl::ErrorStatus regExtension(ZnDbBlockReferenceMetaDataExtension* extension);
  Quorl::ErrorStatus unregExtension(ZnDbBlockReferenceMetaDataExtension* extension); // eKeyNotFound
  // The first that applies, in order of registration; null when the reference is just one.
  ZnDbBlockReferenceMetaDataExtension* extensionOf(const ZnDbBlockReference* reference) const;

private:
  std::vector<ZnDbBlockReferenceMetaDataExtension*> extensions_;
};
