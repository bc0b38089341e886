// What a class with fields of its own declares; quorl/db/core/fields.h has the other half.
#pragma once

// In the public part of the class body. The source states the fields once:
//
//   template<class Walk> void ZnDbCircle::describe(Walk& walk) {
//     walk.section(className(), 1);
//     walk.field(10, L"center", center_);
//     walk.field(40, L"radius", radius_, ZnDbRule::atLeast(0.0));
//   }
//   ZNDB_DEFINE_FIELDS(ZnDbCircle, ZnDbCurve)
//
// describe tells the fields of the class alone, describeAll those of its bases first.
#define ZNDB_DECLARE_FIELDS                                                                                  \
  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;                                         \
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;                                                \
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;                                     \
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;                                            \
  void walkFields(ZnDbFieldVisitor& visitor) override;                                                       \
  template<class Walk> void describeAll(Walk& walk);                                                         \
  template<class Walk> void describe(Walk& walk);
