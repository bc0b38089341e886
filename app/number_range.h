// The check of an option's number: in words a person reads, and refusing what is no number at all.
#pragma once

#include <CLI/CLI.hpp>

namespace app {

// A finite number from least to largest, both allowed.
CLI::Validator numberFrom(double least, double largest);

} // namespace app
