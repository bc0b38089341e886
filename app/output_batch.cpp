#include "app/output_batch.h"

#include <algorithm>

namespace app {

namespace {

bool fail(const ZnAtomicFile& file, const std::string& target, Failure& failure) {
  return failure.set(target, 0, file.fault(), "a file in a folder with room, both open to writing");
}

} // namespace

ZnAtomicFile& OutputBatch::fileFor(const std::string& target) {
  std::erase_if(pending_, [&](const Pending& pending) { return pending.target == target; });
  for (const Pending& pending : pending_) pending.file->flush(); // a failure is kept, and told by commit
  return *pending_.emplace_back(Pending{target, std::make_unique<ZnAtomicFile>(target)}).file;
}

bool OutputBatch::commit(Failure& failure) {
  for (const auto& [target, file] : pending_)
    if (!file->flush()) return fail(*file, target, failure);
  // A stream may wait for its reader, so nobody is kept from ending the program there. Files come first, and
  // together.
  {
    const ZnSignalsHeld held;
    for (const auto& [target, file] : pending_)
      if (!file->isStream() && !file->commit()) return fail(*file, target, failure);
  }
  for (const auto& [target, file] : pending_)
    if (file->isStream() && !file->commit()) return fail(*file, target, failure);
  pending_.clear();
  return true;
}

bool writeBytes(std::string_view bytes, ZnAtomicFile& file, const std::string& target, Failure& failure) {
  return file.write(bytes) || fail(file, target, failure);
}

} // namespace app
