// What every fuzz target of a drawing's format does with its input.
#pragma once

#include <string_view>

// Opens the bytes as a drawing, and recovers what can be had of them. What comes is looked over and written
// in both formats; what was recovered must be sound and open again.
void tryDrawing(std::string_view bytes);
