// Points along recognized shapes and short cuts to read a snippet, shared by the tests of the readers.
#pragma once

#include "interchange/recognize/contour.h"
#include "interchange/recognize/shape.h"
#include "interchange/svg_in/svg_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace interchange_test {

// Points along what a shape says, from its own definition (bulges, parameters, control points).
std::vector<ZnGePoint2d> sample(const interchange::Shape& shape);

// Points along a contour's pieces.
std::vector<ZnGePoint2d> sample(const interchange::Contour& contour);

// Largest distance of a point of the one set from the other set.
double oneSidedDistance(const std::vector<ZnGePoint2d>& from, const std::vector<ZnGePoint2d>& to);

// The content of an svg element of 100 x 100 mm whose user unit is a millimetre.
std::string page(const std::string& content);

// The scene of a text that must not be refused.
interchange::Scene read(const std::string& text, const interchange::ReadOptions& options = {});

// The elements' shapes of one kind, in order.
template<class Kind> std::vector<Kind> all(const std::vector<interchange::Element>& elements) {
  std::vector<Kind> found;
  for (const interchange::Element& element : elements) {
    if (const Kind* shape = std::get_if<Kind>(&element.shape)) found.push_back(*shape);
  }
  return found;
}

} // namespace interchange_test
