// Files that appear together or not at all.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/failure.h"
#include "quorl/file/atomic_file.h"

namespace app {

// What is not committed leaves nothing behind.
class OutputBatch {
public:
  // What is to become the target. A target that is given again replaces what was written for it.
  ZnAtomicFile& fileFor(const std::string& target);
  // All are on the disk before the first takes its place. False, with the failure filled in, when one could
  // not be put in place; those before it are.
  bool commit(Failure& failure);

private:
  struct Pending {
    std::string target;
    std::unique_ptr<ZnAtomicFile> file;
  };
  std::vector<Pending> pending_;
};

// False, with the failure filled in for the target, when the file does not take them.
bool writeBytes(std::string_view bytes, ZnAtomicFile& file, const std::string& target, Failure& failure);

} // namespace app
