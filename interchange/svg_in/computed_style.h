// The style properties of one element after cascade and inheritance.
#pragma once

#include "interchange/recognize/shape.h"
#include "interchange/svg_in/length.h"
#include "interchange/svg_in/scene.h"
#include "interchange/svg_in/style_sheet.h"

#include <pugixml.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace interchange {

// Paint of a stroke or an area: none, or a color (of a gradient its fallback).
struct Paint {
  bool painted = false;
  Color color;
};

// Lengths are in user units of the element.
struct ComputedStyle {
  Color color; // currentColor
  Paint fill{true, {}};
  Paint stroke;
  double fillOpacity = 1;
  double strokeOpacity = 1;
  double opacity = 1; // product of the element's and all groups' above it
  double strokeWidth = 1;
  std::vector<double> dash;
  double fontSize = 16;
  TextAnchor anchor = TextAnchor::Start;
  TextBaseline baseline = TextBaseline::Alphabetic;
  bool visibility = true;
  bool displayed = true; // of this element alone; what stands above is the walker's business

  // Why nothing of the element is painted, or empty.
  std::string hiddenReason() const;
  // Equal for styles that draw inherited content alike.
  std::string key() const;
};

// Style of an element whose parent's is given: presentation attributes, then the sheet, then the style
// attribute, important ones last. Values that cannot be read are left at the parent's.
ComputedStyle computeStyle(const pugi::xml_node& node, std::string_view elementName,
                           const ComputedStyle& parent, const StyleSheet& sheet, LengthContext lengths);

// Whether a property such as clip-path says something other than none, in an attribute or a style.
bool hasReference(const pugi::xml_node& node, const char* property);

} // namespace interchange
