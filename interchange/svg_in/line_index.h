// Finds the line of a byte offset in a text.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace interchange {

class LineIndex {
public:
  explicit LineIndex(std::string_view text);
  // Counted from 1; offsets beyond the end belong to the last line. Logarithmic.
  int lineOf(std::ptrdiff_t offset) const;

private:
  std::vector<std::ptrdiff_t> starts_{0};
};

} // namespace interchange
