// An assertion that stays on in release builds: it states a bug in our own code, never a
// fact about a file or about what a user said.
#pragma once

namespace Quorl {

[[noreturn]] void assertionFailed(const char* condition, const char* file, int line);

} // namespace Quorl

#define QUORL_ASSERT(condition)                                                                              \
  ((condition) ? static_cast<void>(0) : ::Quorl::assertionFailed(#condition, __FILE__, __LINE__))
