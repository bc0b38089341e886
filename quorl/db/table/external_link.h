// What a block that shows an external drawing knows of it; lives in the block's extension dictionary.
#pragma once

#include <vector>

#include "quorl/db/core/object.h"

class ZnDbExternalLink : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbExternalLink)

public:
  // An object of the block as it was last read, and by what it is known in the external drawing: its handle
  // there, behind "name|" for what that drawing shows of another. By the key what watches the object finds
  // its successor.
  struct Source {
    ZnString key;
    ZnDbObjectId id;
    friend bool operator==(const Source&, const Source&) = default;
  };

  static const wchar_t* dictionaryKey() { return L"QUORL_EXTERNAL"; }
  static ZnDbObjectId of(const ZnDbObject& block); // null for a block of the drawing's own
  // Whether the block shows an external drawing, or came with one ("plate|part").
  static bool isShownBy(const class ZnDbBlockTableRecord& block);

  const ZnString& path() const { return path_; } // as it was attached, from the drawing's folder or whole
  void setPath(const ZnString& path);
  // Not shown, although what was last read is kept.
  bool isUnloaded() const { return unloaded_; }
  void setIsUnloaded(bool unloaded);
  const std::vector<Source>& sources() const { return sources_; }
  void setSources(std::vector<Source> sources);

  ZNDB_DECLARE_FIELDS

private:
  ZnString path_;
  bool unloaded_ = false;
  std::vector<Source> sources_;
};
