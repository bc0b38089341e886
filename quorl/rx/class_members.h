// The members that every run-time class declares, and how a host class registers itself.
#pragma once

#include "quorl/rx/class.h"

// In the class body. rxInit is written by one of the definitions below, or by a module itself.
#define ZNRX_DECLARE_MEMBERS(CLASS)                                                                          \
public:                                                                                                      \
  static ZnRxClass* gpDesc;                                                                                  \
  static ZnRxClass* desc() { return gpDesc; }                                                                \
  static const wchar_t* className() { return L## #CLASS; }                                                   \
  ZnRxClass* isA() const override { return gpDesc; }                                                         \
  static CLASS* cast(ZnRxObject* object) {                                                                   \
    return object && object->isKindOf(gpDesc) ? static_cast<CLASS*>(object) : nullptr;                       \
  }                                                                                                          \
  static const CLASS* cast(const ZnRxObject* object) {                                                       \
    return object && object->isKindOf(gpDesc) ? static_cast<const CLASS*>(object) : nullptr;                 \
  }                                                                                                          \
  static void rxInit();

// In the class's source: a host class without objects of its own, one that programs make, and one that
// drawings hold under the text name.
#define ZNRX_DEFINE_ABSTRACT(CLASS, PARENT) ZNRX_DEFINE_HOST_CLASS(CLASS, PARENT, nullptr, nullptr)
#define ZNRX_DEFINE_CLASS(CLASS, PARENT)                                                                     \
  ZNRX_DEFINE_HOST_CLASS(                                                                                    \
      CLASS, PARENT, []() -> ZnRxObject* { return new CLASS; }, nullptr)
#define ZNRX_DEFINE_DRAWING_CLASS(CLASS, PARENT, TDOC_NAME)                                                  \
  ZNRX_DEFINE_HOST_CLASS(                                                                                    \
      CLASS, PARENT, []() -> ZnRxObject* { return new CLASS; }, TDOC_NAME)

// A class initialises its parent first, so that the order of static objects does not matter.
#define ZNRX_DEFINE_HOST_CLASS(CLASS, PARENT, CONSTRUCTOR, TDOC_NAME)                                        \
  ZnRxClass* CLASS::gpDesc = nullptr;                                                                        \
  void CLASS::rxInit() {                                                                                     \
    if (gpDesc) return;                                                                                      \
    PARENT::rxInit();                                                                                        \
    gpDesc = newZnRxClass(L## #CLASS, L## #PARENT, 0, 0, 0, CONSTRUCTOR, TDOC_NAME, L"Quorl");               \
  }                                                                                                          \
  static const bool registered##CLASS = (CLASS::rxInit(), true);
