// What became what in a deep clone.
#pragma once

#include <unordered_map>
#include <vector>

#include "quorl/base/string.h"
#include "quorl/db/core/object_id.h"

class ZnDbIdPair {
public:
  ZnDbIdPair() = default;
  explicit ZnDbIdPair(ZnDbObjectId key)
      : key_(key) {}
  ZnDbIdPair(ZnDbObjectId key, ZnDbObjectId value, bool isCloned, bool isPrimary = false,
             bool isOwnerTranslated = true)
      : key_(key)
      , value_(value)
      , cloned_(isCloned)
      , primary_(isPrimary)
      , ownerTranslated_(isOwnerTranslated) {}

  ZnDbObjectId key() const { return key_; }
  ZnDbObjectId value() const { return value_; }
  bool isCloned() const { return cloned_; }
  bool isPrimary() const { return primary_; } // asked for by the caller, not pulled along
  bool isOwnerTranslated() const { return ownerTranslated_; }

private:
  ZnDbObjectId key_, value_;
  bool cloned_ = false, primary_ = false, ownerTranslated_ = true;
};

class ZnDbIdMapping {
public:
  ZnDbIdMapping(int context, ZnDbDatabase* originals, ZnDbDatabase* destination)
      : context_(context)
      , sourceDatabase_(originals)
      , targetDatabase_(destination) {}

  // Fills in the pair of that key; false and the pair untouched when there is none.
  bool compute(ZnDbIdPair& pair) const;
  // Adds or replaces the pair of its key.
  void assign(const ZnDbIdPair& pair);

  int deepCloneContext() const { return context_; }
  ZnDbDatabase* sourceDatabase() const { return sourceDatabase_; }
  ZnDbDatabase* destDb() const { return targetDatabase_; }

  // What becomes of a named record that goes to another drawing. Without a prefix one of that name there
  // serves for it. With a prefix it comes along under its own name behind that, completed where that is taken
  // too; those that every drawing has are shared all the same.
  // With reuse one that stands there under that very name serves, unless it is a block.
  const ZnString& namePrefix() const { return namePrefix_; }
  bool reusesPrefixed() const { return reusesPrefixed_; }
  void setNamePrefix(const ZnString& prefix, bool reuse = false) {
    namePrefix_ = prefix;
    reusesPrefixed_ = reuse;
  }

  // Pairs in the order in which they were added.
  const std::vector<ZnDbIdPair>& pairs() const { return pairs_; }

private:
  int context_ = 0;
  ZnDbDatabase* sourceDatabase_ = nullptr;
  ZnDbDatabase* targetDatabase_ = nullptr;
  ZnString namePrefix_;
  bool reusesPrefixed_ = false;
  std::vector<ZnDbIdPair> pairs_;
  std::unordered_map<ZnDbObjectId, size_t> index_;
};

// Walks the pairs of a mapping in order; pairs added meanwhile are visited too.
class ZnDbIdMappingIter {
public:
  explicit ZnDbIdMappingIter(const ZnDbIdMapping& mapping)
      : mapping_(mapping) {}
  void start() { at_ = 0; }
  bool done() const { return at_ >= mapping_.pairs().size(); }
  void next() { ++at_; }
  bool getMap(ZnDbIdPair& pair) const;

private:
  const ZnDbIdMapping& mapping_;
  size_t at_ = 0;
};
