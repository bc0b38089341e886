// What stands in the sections of the binary format.
//
//   header   the values of ZnDrawingHeader in order
//
//   classes  count; each: name, text name, application, parent (texts), version, maintenance version, proxy
//            flags
//
//   names    texts; the first has number 1, and 0 is the empty name
//
//   handles  for each object the step from the handle before, and the number of its class (from 0)
//
//   objects  for each object, in the order of the handles: flags; counts of field bytes, references, names
//            and, where the flags say so, bytes of text; then these. A reference is a byte, its kind and the
//            mark of null, and the step from the object's own handle; a name is its number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorl {

// Sections are closed once they have this many bytes, so that reader and writer hold one piece at a time.
constexpr size_t kSectionBytes = size_t{1} << 20;
constexpr size_t kLeastRecord = 4; // flags and three counts
constexpr std::uint8_t kRecordHasText = 1;
constexpr std::uint8_t kNullReference = 4; // beside the kinds, which are below it

} // namespace Quorl
