// A walk over an object's fields by name and value: for listing, checking, and setting one by name.
#pragma once

#include "quorl/db/core/color.h"
#include "quorl/db/core/filer.h"
#include "quorl/ge/matrix3d.h"

// One field of an object as it stands.
struct ZnDbField {
  int code = 0;              // of the text format
  const wchar_t* name = L""; // plain words in lower case
  // Of the value as it stands, under the field's own rule; not eOk for an id says that its target is missing.
  Quorl::ErrorStatus status = Quorl::eOk;
  int entry = -1; // place in the list that the field belongs to; -1 for none
  // Of ids: the class of which the target must be (null for any), and how the object refers to it.
  const ZnRxClass* targetClass = nullptr;
  ZnReferenceKind reference = ZnReferenceKind::kSoftPointer;
};

// Gets each field with its value and says what becomes of it. Whole numbers and enumerations come as 64-bit
// integers, points in a plane with z 0.
class ZnDbFieldVisitor {
public:
  // kRepair puts the rule's usual value in place, or takes an id out of its list. kTake puts the candidate in
  // place, which the visitor has changed, if the field's rule allows it; taken() then hears the status.
  enum Wish { kKeep, kRepair, kTake };

  virtual ~ZnDbFieldVisitor() = default;
  virtual Wish visit(const ZnDbField& field, bool& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, std::int64_t& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, double& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnString& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnGePoint3d& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnGeVector3d& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnGeMatrix3d& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnCmColor& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnCmTransparency& /*candidate*/) { return any(field); }
  virtual Wish visit(const ZnDbField& field, ZnDbObjectId& /*candidate*/) { return any(field); }
  // Fields that together make one shape, after they were visited one by one; kRepair makes it a new one.
  virtual Wish visitWhole(const ZnDbField& field) { return any(field); }
  virtual void taken(Quorl::ErrorStatus) {}

protected:
  // Where a visitor does not care for the type.
  virtual Wish any(const ZnDbField&) { return kKeep; }
};

// Puts the value of one field of that name in place; the object must be open for write. eKeyNotFound where
// no field of the name takes that type, else the status of the field's rule. Ids must be of the class that
// the field asks for (eInvalidInput).
class ZnDbObject;
template<class T> Quorl::ErrorStatus zndbSetField(ZnDbObject& object, const wchar_t* name, const T& value);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const bool&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const std::int64_t&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const double&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnString&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGePoint3d&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGeVector3d&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnGeMatrix3d&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnCmColor&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnCmTransparency&);
extern template Quorl::ErrorStatus zndbSetField(ZnDbObject&, const wchar_t*, const ZnDbObjectId&);
