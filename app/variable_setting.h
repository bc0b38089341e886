// Setting a system variable by what a user typed.
#pragma once

#include <string>

namespace app {

// On the working drawing. False with the reason: no such variable, a value that it does not take, or a
// number, also one that is a length of "2.5x", beyond the range of what can be drawn.
bool setVariable(const std::string& name, const std::string& value, std::string& why);

} // namespace app
