// Decides how long a user unit of a drawing is and where its page lies.
#pragma once

#include "interchange/svg_in/length.h"
#include "interchange/svg_in/read_options.h"
#include "interchange/svg_in/scene.h"

#include "quorl/ge/matrix2d.h"

#include <pugixml.hpp>

#include <string>

namespace interchange {

struct PageSetup {
  DocumentFacts facts;
  ZnGeMatrix2d toPage;   // user units, y down, to millimetres, y up
  LengthContext lengths; // for the lengths of the root's content
  std::string problem;   // a size or view box that could not be read; empty when all was well
};

// `hint` is the text of the comments before the root, where exporters leave their mark.
PageSetup setUpPage(const pugi::xml_node& root, const std::string& hint, const ReadOptions& options);

} // namespace interchange
