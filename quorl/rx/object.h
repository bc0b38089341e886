// The root of everything with a run-time class.
#pragma once

#include "quorl/base/error_status.h"

class ZnRxClass;

class ZnRxObject {
public:
  ZnRxObject() = default;
  virtual ~ZnRxObject() = default;

  static ZnRxClass* desc() { return gpDesc; }
  static ZnRxObject* cast(ZnRxObject* object) { return object; }
  static const ZnRxObject* cast(const ZnRxObject* object) { return object; }
  static void rxInit();
  static ZnRxClass* gpDesc;

  virtual ZnRxClass* isA() const;
  bool isKindOf(const ZnRxClass* kind) const;

  // The protocol extension of that class for this object, or null. Overrules of the query are asked
  // first; the extension stays the property of its class.
  ZnRxObject* queryX(const ZnRxClass* protocol) const;

  // A new heap object with the same value, owned by the caller; null where a class can't be copied.
  virtual ZnRxObject* clone() const;
  virtual Quorl::ErrorStatus copyFrom(const ZnRxObject* source);
  virtual bool isEqualTo(const ZnRxObject* other) const;
  // Negative, zero or positive in a class's own order; objects without an order compare by address.
  virtual int comparedTo(const ZnRxObject* other) const;

protected:
  ZnRxObject(const ZnRxObject&) = default;
  ZnRxObject& operator=(const ZnRxObject&) = default;
};
