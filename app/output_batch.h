// Files that appear together or not at all.
#pragma once

#include <string>
#include <vector>

#include "app/failure.h"

namespace app {

// Each file is written beside its target under a name of its own and put in place by commit. What is not
// committed is removed. Devices and pipes are written to by commit.
class OutputBatch {
public:
  OutputBatch() = default;
  ~OutputBatch();
  OutputBatch(const OutputBatch&) = delete;
  OutputBatch& operator=(const OutputBatch&) = delete;

  // Where to write what is to become the target: in its folder, with its ending. A target that is given again
  // replaces what was written for it.
  std::string pendingFor(const std::string& target);
  // False, with the failure filled in, when a file could not be put in place; those before it are.
  bool commit(Failure& failure);

private:
  struct Pending {
    std::string target, file;
  };
  std::vector<Pending> pending_;
  int count_ = 0;
};

} // namespace app
