// Keeps what is written away from what is read.
#pragma once

#include <string>
#include <vector>

#include "app/failure.h"

namespace app {

// Whether two names lead to one file, over links and roundabout paths; also to one that is yet to be written.
bool isSameFile(const std::string& one, const std::string& other);

// False, with the failure filled in, when a file to be written is one of those to be read.
bool sparesInputs(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
                  Failure& failure);

// False, with the failure filled in, when two of the names lead to one file.
bool areApart(const std::vector<std::string>& outputs, Failure& failure);

} // namespace app
