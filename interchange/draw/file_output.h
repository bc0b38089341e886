// Puts a whole file in its place, or nothing.
#pragma once

#include "quorl/base/failure.h"

#include <string>
#include <string_view>

namespace interchange {

// Writes beside the path and renames, so that a failure leaves what stood there. False with the reason in
// `error`.
bool writeWhole(const std::string& path, std::string_view bytes, Quorl::Failure& error);

// False with the reason in `error`.
bool readWhole(const std::string& path, std::string& bytes, Quorl::Failure& error);

} // namespace interchange
