// Puts a whole file in its place, or nothing.
#pragma once

#include "quorl/base/failure.h"

#include <string>
#include <string_view>

namespace interchange {

// A failure leaves what stood there; false with the reason in `error`.
bool writeWhole(const std::string& path, std::string_view bytes, Quorl::Failure& error);

} // namespace interchange
