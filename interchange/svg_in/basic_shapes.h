// The contours of the simple elements: line, polyline, polygon, rect, circle and ellipse.
#pragma once

#include "interchange/recognize/contour.h"
#include "interchange/svg_in/length.h"

#include <pugixml.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace interchange {

struct DrawnContours {
  std::vector<Contour> contours; // in user units
  std::string skipReason;        // why there is nothing to draw
  std::string problem;           // what could not be read
  std::string expected;          // and what should have stood there
};

// False when the element is none of these.
bool readBasicShape(const pugi::xml_node& node, std::string_view name, const LengthContext& lengths,
                    DrawnContours& drawn);

// A length attribute in user units; missing ones give the default, unreadable ones too, with a problem and a
// reason to skip the element.
double lengthAttribute(const pugi::xml_node& node, const char* name, const LengthContext& lengths,
                       LengthAxis axis, double missing, DrawnContours& drawn);

} // namespace interchange
