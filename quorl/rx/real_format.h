// Numbers as texts, by the host's own format.
#pragma once

#include "quorl/base/string.h"

// Formats by "%.<p>q<m>" followed by a tail that is taken as it stands. Mode 1 is the shortest decimal
// text that reads back as the same number, rounded to at most p significant digits and never with an
// exponent: "%.24q1x" makes "0.9x" of 0.9. Another mode or format, no digits, or a value that isn't finite
// gives the empty text.
ZnString znrxFormatReal(double value, const wchar_t* format);

namespace Quorl {
// Mode 1 alone, with all digits that the number needs.
ZnString shortestReal(double value);
} // namespace Quorl
