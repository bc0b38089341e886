// Places for files of a test.
#pragma once

#include <string>

namespace interchange_test {

// A path in a fresh folder of the test's own.
std::string scratchPath(const std::string& name);

} // namespace interchange_test
