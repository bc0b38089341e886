// Reads an SVG drawing into a scene.
#pragma once

#include "interchange/svg_in/read_options.h"
#include "interchange/svg_in/scene.h"

#include "quorl/base/failure.h"

#include <optional>
#include <string>
#include <string_view>

namespace interchange {

struct SvgReadResult {
  std::optional<Quorl::Failure> error; // set: the file is refused and the scene is empty
  Scene scene;
};

// `fileName` is for messages only. Refused are files that are no well-formed XML, have no svg root, nest
// deeper than a drawing does or expand beyond the options' limit. Everything else is read; what is wrong in
// places stands in the scene's problems, what is passed over in its skipped list. Never throws.
SvgReadResult readSvg(std::string_view text, const std::string& fileName, const ReadOptions& options = {});

} // namespace interchange
