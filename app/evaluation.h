// Brings what follows other objects up to date.
#pragma once

#include <string>
#include <vector>

class ZnDbDatabase;

namespace app {

// Evaluates what is marked. Each action that failed is one line of the answer; the others are evaluated.
std::vector<std::string> evaluate(ZnDbDatabase& database);

} // namespace app
