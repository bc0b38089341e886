// Overrules: objects that step in front of an operation of another class, for as long as they are added.
#pragma once

#include <vector>

#include "quorl/rx/class_members.h"

class ZnRxOverruleBase : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxOverruleBase)
};

class ZnRxOverrule : public ZnRxOverruleBase {
  ZNRX_DECLARE_MEMBERS(ZnRxOverrule)

public:
  // Whether the overrule wants this very object.
  virtual bool isApplicable(const ZnRxObject* object) const = 0;

  // Adds the overrule to the class and so to all that derive from it. With atEnd it comes after those
  // that stand there, else before them; the first applicable one of the object's class, then of its
  // ancestors, is called and may go on by calling the object's own operation. The caller keeps the
  // overrule. eInvalidInput for null arguments, eDuplicateKey when it is there already.
  static Quorl::ErrorStatus addOverrule(ZnRxClass* target, ZnRxOverrule* overrule, bool atEnd = false);
  // eKeyNotFound when it is not there.
  static Quorl::ErrorStatus removeOverrule(ZnRxClass* target, ZnRxOverrule* overrule);
  // Overruling of the whole process can be switched off and on; it starts on.
  static void setIsOverruling(bool on);
  static bool isOverruling();

  // The first overrule of that kind which applies to the object and is not `after` or one before it; null
  // at the end. An overrule that calls the object's operation again is found by its own guard.
  template<class Kind> static Kind* firstApplicable(const ZnRxObject* object, const Kind* after = nullptr);

private:
  static void refreshMarks();
};

template<class Kind> Kind* ZnRxOverrule::firstApplicable(const ZnRxObject* object, const Kind* after) {
  if (!object->isA()->hasOverrules() || !isOverruling()) return nullptr;
  bool searching = after == nullptr;
  for (const ZnRxClass* cls = object->isA(); cls; cls = cls->parent()) {
    for (ZnRxOverrule* overrule : cls->overrules()) {
      Kind* candidate = Kind::cast(overrule);
      if (!candidate) continue;
      if (!searching) {
        searching = candidate == after;
        continue;
      }
      if (candidate->isApplicable(object)) return candidate;
    }
  }
  return nullptr;
}
