// Brings the bytes of a text file to UTF-8, so that byte offsets and line numbers are those of one text.
#pragma once

#include <string>
#include <string_view>

namespace interchange {

// Knows byte order marks of UTF-8 and UTF-16 and an XML declaration of a Latin encoding; everything else is
// taken as UTF-8. Code units that pair with nothing become the replacement character.
std::string toUtf8(std::string_view bytes);

} // namespace interchange
