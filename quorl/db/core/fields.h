// One description of a class's fields, and what follows from it: both formats, undo, cloning, comparison, the
// audit and the walk over names and values. For the sources of the classes; see declare_fields.h for the
// form.
#pragma once

#include "quorl/db/core/field_walks.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/object.h"

// In the class's source, after its describe.
#define ZNDB_DEFINE_FIELDS(CLASS, BASE)                                                                      \
  template<class Walk> void CLASS::describeAll(Walk& walk) {                                                 \
    BASE::describeAll(walk);                                                                                 \
    if (walk.isGood()) describe(walk);                                                                       \
  }                                                                                                          \
  ZNDB_DEFINE_FILING(CLASS)

// The walks are made here once, so that classes above find those of their bases ready.
#define ZNDB_DEFINE_FILING(CLASS)                                                                            \
  template void CLASS::describeAll(ZnDbFieldsOut<ZnDbMemoryFiler>&);                                         \
  template void CLASS::describeAll(ZnDbFieldsOut<ZnDbFiler>&);                                               \
  template void CLASS::describeAll(ZnDbFieldsIn<ZnDbMemoryFiler>&);                                          \
  template void CLASS::describeAll(ZnDbFieldsIn<ZnDbFiler>&);                                                \
  template void CLASS::describeAll(ZnDbFieldsTextOut&);                                                      \
  template void CLASS::describeAll(ZnDbFieldsTextIn&);                                                       \
  template void CLASS::describeAll(ZnDbFieldsVisit&);                                                        \
  Quorl::ErrorStatus CLASS::bdocOutFields(ZnDbFiler& filer) const {                                          \
    return Quorl::writeFields(const_cast<CLASS&>(*this), filer);                                             \
  }                                                                                                          \
  Quorl::ErrorStatus CLASS::bdocInFields(ZnDbFiler& filer) { return Quorl::readFields(*this, filer); }       \
  Quorl::ErrorStatus CLASS::tdocOutFields(ZnDbTdocFiler& filer) const {                                      \
    return Quorl::walkText<ZnDbFieldsTextOut>(const_cast<CLASS&>(*this), filer);                             \
  }                                                                                                          \
  Quorl::ErrorStatus CLASS::tdocInFields(ZnDbTdocFiler& filer) {                                             \
    assertWriteEnabled();                                                                                    \
    return Quorl::walkText<ZnDbFieldsTextIn>(*this, filer);                                                  \
  }                                                                                                          \
  void CLASS::walkFields(ZnDbFieldVisitor& visitor) {                                                        \
    ZnDbFieldsVisit walk(visitor, database());                                                               \
    CLASS::describeAll(walk);                                                                                \
  }

namespace Quorl {

// What the filer is, is asked once an object. A walk that does not read leaves the object as it is, which a
// description cannot say of its members.
template<class Class> ErrorStatus writeFields(Class& object, ZnDbFiler& filer) {
  if (ZnDbMemoryFiler* memory = filer.inMemory()) {
    ZnDbFieldsOut<ZnDbMemoryFiler> walk(*memory);
    object.Class::describeAll(walk);
  } else {
    ZnDbFieldsOut<ZnDbFiler> walk(filer);
    object.Class::describeAll(walk);
  }
  return filer.status();
}

template<class Class> ErrorStatus readFields(Class& object, ZnDbFiler& filer) {
  object.assertWriteEnabled();
  if (ZnDbMemoryFiler* memory = filer.inMemory()) {
    ZnDbFieldsIn<ZnDbMemoryFiler> walk(*memory);
    object.Class::describeAll(walk);
  } else {
    ZnDbFieldsIn<ZnDbFiler> walk(filer);
    object.Class::describeAll(walk);
  }
  return filer.status();
}

template<class Walk, class Class> ErrorStatus walkText(Class& object, ZnDbTdocFiler& filer) {
  Walk walk(filer);
  object.Class::describeAll(walk);
  return filer.status();
}

} // namespace Quorl
