// Length expressions such as "0.1x", "2.5" and "ByLinetype".
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "torvi/style/length_expression.h"

namespace {

// No double holds "9e999"; that is said by an exception.
bool isAccepted(const ZnString& text, ZnString& normal, double& number) {
  try {
    return parseLengthExpression(text, normal, number);
  } catch (const std::out_of_range&) {
    return false;
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ZnString text = ZnString::fromUtf8({reinterpret_cast<const char*>(data), size});
  ZnString normal, again;
  double number = 0.0, same = 0.0;
  if (!isAccepted(text, normal, number)) return 0;
  // What is accepted is accepted in its normal form, with the same meaning.
  if (!isAccepted(normal, again, same) || !(number == same || std::isnan(number))) std::abort();
  return 0;
}
