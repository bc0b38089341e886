// The run-time classes as a dictionary: a live view on the class registry, with nothing of its own.
#pragma once

#include "quorl/rx/dictionary.h"

class ZnRxClassDictionary : public ZnRxDictionary {
  ZNRX_DECLARE_MEMBERS(ZnRxClassDictionary)

public:
  ZnRxObject* at(std::wstring_view name) const override;
  // Classes register themselves: always eNotProvided.
  Quorl::ErrorStatus put(std::wstring_view name, ZnRxObject* object) override;
  // Unregisters the class; it belongs to the caller.
  ZnRxObject* remove(std::wstring_view name) override;
  std::vector<Entry> entries() const override;
};
