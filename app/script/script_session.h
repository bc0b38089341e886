// The state of a running script: its drawing, the names it has given, and what it is to save.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/console.h"
#include "app/script/space_index.h"
#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"

namespace app {

class ScriptSession {
public:
  // Writes the drawing as it is now, to be put in place under that name once the whole script has worked. The
  // extra entities, in no drawing, are shown on top; only pictures can have some.
  using Saver = std::function<bool(ZnDbDatabase& drawing, const std::string& target,
                                   const std::vector<const ZnDbEntity*>& extra, Failure& failure)>;

  ScriptSession(ZnDbDatabase& database, Console& console, Saver saver)
      : database_(database)
      , console_(console)
      , saver_(std::move(saver))
      , index_(database) {}

  ZnDbDatabase& database() { return database_; }
  Console& console() const { return console_; }
  bool save(const std::string& target, Failure& failure) { return saver_(database_, target, {}, failure); }
  // A drawing beside the one that is worked on.
  bool saveOther(ZnDbDatabase& drawing, const std::string& target, Failure& failure) {
    return saver_(drawing, target, {}, failure);
  }
  bool savePicture(const std::string& target, const std::vector<const ZnDbEntity*>& extra, Failure& failure) {
    return saver_(database_, target, extra, failure);
  }

  // Whether a block is drawn in, and no space of the drawing: what belongs together comes in several lines.
  bool isBlockEdited() const;
  // Files that lines have read, besides those that the script began with.
  const std::vector<std::string>& filesRead() const { return filesRead_; }
  void noteRead(const std::string& path) { filesRead_.push_back(path); }
  // Where drawing goes on when the block is done.
  ZnDbObjectId spaceAfterEdit() const {
    return spaceAfterEdit_.isErased() ? database_.modelSpaceId() : spaceAfterEdit_;
  }
  void setSpaceAfterEdit(ZnDbObjectId space) { spaceAfterEdit_ = space; }

  // For picks; kept from line to line.
  SpaceIndex& index() { return index_; }

  // Names; null for an unknown one.
  ZnDbObjectId named(const std::string& name) const;
  void setName(const std::string& name, ZnDbObjectId id) { names_[name] = id; }
  void rename(ZnDbObjectId from, ZnDbObjectId to); // what has names has them from here on

  // Appends to the current space, with the drawing's current traits, and notes it as made by the line. The
  // entity is the drawing's afterwards, or gone when it can't be appended; eOutOfRange for one out of range.
  Quorl::ErrorStatus append(ZnDbEntity* entity);
  Quorl::ErrorStatus appendReference(ZnDbObjectId block, const ZnGeMatrix3d& place);
  // Whether readers of drawings could take it in again: neither beyond all measure nor next to nothing.
  static bool isInRange(const ZnDbEntity& entity);
  void noteMade(ZnDbObjectId id) { made_.push_back(id); }
  std::vector<ZnDbObjectId> takeMade();

private:
  ZnDbDatabase& database_;
  Console& console_;
  Saver saver_;
  ZnDbObjectId spaceAfterEdit_;
  std::vector<std::string> filesRead_;
  SpaceIndex index_;
  std::map<std::string, ZnDbObjectId> names_;
  std::vector<ZnDbObjectId> made_;
};

} // namespace app
