#include "app/variable_setting.h"

#include <charconv>
#include <cmath>

#include <fmt/format.h>

#include "app/tolerance.h"
#include "quorl/rx/variables_dictionary.h"

namespace app {

namespace {

bool isBeyondRange(const std::string& text) {
  double number = 0.0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool isFactor = stop + 1 == end && (*stop == 'x' || *stop == 'X');
  if (stop != end && !isFactor) return false;
  return error == std::errc::result_out_of_range ||
         (error == std::errc() && !(std::abs(number) <= kLargestNumber));
}

} // namespace

bool setVariable(const std::string& name, const std::string& value, std::string& why) {
  if (isBeyondRange(value)) {
    why = fmt::format("{} is out of range, expected numbers from {:g} to {:g}", value, -kLargestNumber,
                      kLargestNumber);
    return false;
  }
  ZnString error;
  const Quorl::ErrorStatus status =
      ZnRxVariablesDictionary::get()->set(ZnString::fromUtf8(name).view(), ZnString::fromUtf8(value), error);
  if (status != Quorl::eOk) why = error.trimRight(L". \r\n").utf8();
  return status == Quorl::eOk;
}

} // namespace app
