// A drawing that the program has open, whatever it was read from.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/failure.h"
#include "app/formats.h"
#include "interchange/import/import_report.h"
#include "interchange/svg_in/read_options.h"
#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"

class ZnAtomicFile;

namespace app {

// While it lives it is the working drawing; there is one at a time.
class Drawing {
public:
  Drawing();
  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  // Replaces the empty drawing by that of a file. False with the reason for a file that can't be read.
  bool open(const std::string& path, const interchange::ReadOptions& options, Failure& failure);
  // What is whole in a damaged drawing of our own, and what was lost. False with the reason where that is
  // nothing.
  bool recover(const std::string& path, std::vector<Failure>& findings, Failure& failure);
  // Reads the external drawings that it shows again, and brings up to date what follows them; there is
  // nothing to undo. What can't be read is shown as it was last read; the answer says why.
  std::vector<Failure> readExternals();
  // In the format that the ending of the target says; the file is to take the target's place. A picture also
  // shows the extra entities, which are in no drawing; other formats can have none.
  bool write(ZnAtomicFile& file, const std::string& target, Failure& failure,
             const std::vector<const ZnDbEntity*>& extra = {}) const;
  // The same for a drawing that is not the open one.
  static bool write(ZnDbDatabase& database, ZnAtomicFile& file, const std::string& target, Failure& failure,
                    const std::vector<const ZnDbEntity*>& extra = {});
  // The SVG document that the drawing was read from, with these entities on top and nothing else changed.
  bool writeOntoSource(const std::vector<ZnDbObjectId>& annotation, ZnAtomicFile& file,
                       const std::string& target, Failure& failure) const;

  ZnDbDatabase& database() const { return *database_; }
  const std::string& path() const { return path_; } // empty for a new drawing
  // Of a drawing that was imported; null for others.
  const interchange::ImportReport* import() const { return import_ ? &*import_ : nullptr; }

private:
  void take(std::unique_ptr<ZnDbDatabase> database);

  std::unique_ptr<ZnDbDatabase> database_;
  std::string path_;
  std::optional<interchange::ImportReport> import_;
};

} // namespace app
