#include "app/number_range.h"

#include <charconv>

#include <fmt/format.h>

namespace app {

CLI::Validator numberFrom(double least, double largest) {
  const std::string range = fmt::format("{:g} to {:g}", least, largest);
  return CLI::Validator(
      [=](const std::string& text) {
        double value = 0.0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool whole = error == std::errc() && stop == text.data() + text.size();
        // Written so that a text that reads as "not a number" is outside as well.
        if (whole && value >= least && value <= largest) return std::string();
        return fmt::format("{} is no such number, expected {}", text, range);
      },
      range);
}

} // namespace app
