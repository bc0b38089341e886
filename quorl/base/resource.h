// Message texts by number, held in a library of their own: one file a language.
#pragma once

#include <string_view>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"

// One text of a resource library. A library exports `znrxResourceTable`, which gives the first entry of
// an array that a null text ends.
struct ZnRxResourceText {
  unsigned number;
  const wchar_t* text;
};

struct ZnUtResource {
  using Handle = void*;
  // Loads the library at the path (backslashes count as slashes). Null when it can't be loaded or exports
  // no table; flags and extra are kept for the loader and are 0 and null today.
  static Handle loadDll(const ZnString& path, unsigned flags = 0, void* extra = nullptr);
  static bool freeDll(Handle handle);
};

// A view on a loaded library; a null handle has no texts.
class ZnRxResourceInstance {
public:
  explicit ZnRxResourceInstance(ZnUtResource::Handle handle = nullptr)
      : handle_(handle) {}
  // Null when the library has no such number.
  const wchar_t* text(unsigned number) const;

private:
  ZnUtResource::Handle handle_ = nullptr;
};
