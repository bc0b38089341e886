#include "interchange/draw/file_output.h"

#include "quorl/file/atomic_file.h"

namespace interchange {

bool writeWhole(const std::string& path, std::string_view bytes, Quorl::Failure& error) {
  ZnAtomicFile file(path);
  return (file.write(bytes) && file.commit()) ||
         error.set(path, 0, file.fault(), "a file in a folder with room, both open to writing");
}

} // namespace interchange
