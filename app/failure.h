// What the program tells its user when something goes wrong.
#pragma once

#include <string>

#include "quorl/base/error_status.h"
#include "quorl/base/failure.h"

namespace app {

using Failure = Quorl::Failure;

// A status as a person would put it: "it is on a locked layer"; and what would have been right.
std::string statusSentence(Quorl::ErrorStatus status);
std::string statusExpectation(Quorl::ErrorStatus status);

} // namespace app
