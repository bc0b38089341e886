#include "interchange/svg_in/line_index.h"

#include <algorithm>

namespace interchange {

LineIndex::LineIndex(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool loneReturn = text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n');
    if (text[i] == '\n' || loneReturn) starts_.push_back(static_cast<std::ptrdiff_t>(i + 1));
  }
}

int LineIndex::lineOf(std::ptrdiff_t offset) const {
  const auto after = std::upper_bound(starts_.begin(), starts_.end(), std::max<std::ptrdiff_t>(offset, 0));
  return static_cast<int>(after - starts_.begin());
}

} // namespace interchange
