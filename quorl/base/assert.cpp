#include "quorl/base/assert.h"

#include <cstdio>
#include <cstdlib>

namespace Quorl {

void assertionFailed(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: this should never happen: %s\n", file, line, condition);
  std::abort();
}

} // namespace Quorl
