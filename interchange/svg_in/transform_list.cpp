#include "interchange/svg_in/transform_list.h"

#include "interchange/svg_in/number_scanner.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace interchange {

namespace {

using Arguments = std::vector<double>;

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

Affine makeMatrix(const Arguments& v) { return {v[0], v[1], v[2], v[3], v[4], v[5]}; }
Affine makeTranslate(const Arguments& v) { return Affine::translation(v[0], v.size() > 1 ? v[1] : 0); }
Affine makeScale(const Arguments& v) { return Affine::scaling(v[0], v.size() > 1 ? v[1] : v[0]); }
Affine makeSkewX(const Arguments& v) { return {1, 0, std::tan(radians(v[0])), 1, 0, 0}; }
Affine makeSkewY(const Arguments& v) { return {1, std::tan(radians(v[0])), 0, 1, 0, 0}; }
Affine makeRotate(const Arguments& v) {
  const Affine turn = Affine::rotation(radians(v[0]));
  if (v.size() < 3) return turn;
  return Affine::translation(v[1], v[2]) * turn * Affine::translation(-v[1], -v[2]);
}

struct Function {
  std::string_view name;
  std::size_t least;
  std::size_t most; // rotate takes one or three, the others any number between
  Affine (*make)(const Arguments&);
};

constexpr std::array<Function, 6> kFunctions{{{"matrix", 6, 6, makeMatrix},
                                              {"translate", 1, 2, makeTranslate},
                                              {"scale", 1, 2, makeScale},
                                              {"rotate", 1, 3, makeRotate},
                                              {"skewX", 1, 1, makeSkewX},
                                              {"skewY", 1, 1, makeSkewY}}};

bool readArguments(NumberScanner& scanner, Arguments& values) {
  scanner.skipSpaces();
  if (scanner.peek() != '(') return false;
  scanner.skip();
  scanner.skipSpaces();
  while (scanner.peek() != ')') {
    const std::optional<double> number = scanner.number();
    if (!number) return false;
    values.push_back(*number);
    // Units in here are beyond the rule but common; degrees and pixels are what the numbers are anyway.
    const std::string_view unit = scanner.word();
    if (!unit.empty() && unit != "deg" && unit != "px") return false;
    scanner.skipSeparator();
  }
  scanner.skip();
  return true;
}

} // namespace

std::optional<Affine> parseTransform(std::string_view text, std::string& expected) {
  Affine product;
  NumberScanner scanner(text);
  scanner.skipSpaces();
  if (trimmed(text) == "none") return product;
  while (!scanner.atEnd()) {
    const std::string_view name = scanner.word();
    const auto known = std::find_if(kFunctions.begin(), kFunctions.end(),
                                    [&](const Function& function) { return function.name == name; });
    if (known == kFunctions.end()) {
      expected = "matrix, translate, scale, rotate, skewX or skewY";
      return std::nullopt;
    }
    Arguments values;
    const bool read = readArguments(scanner, values);
    const bool oddRotation = name == "rotate" && values.size() == 2;
    if (!read || values.size() < known->least || values.size() > known->most || oddRotation) {
      expected = "the numbers of " + std::string(name) + " in parentheses";
      return std::nullopt;
    }
    product = product * known->make(values);
    scanner.skipSeparator();
  }
  if (product.isFinite()) return product;
  expected = "finite numbers";
  return std::nullopt;
}

std::optional<ViewBox> parseViewBox(std::string_view text) {
  NumberScanner scanner(trimmed(text));
  std::array<double, 4> values{};
  for (double& value : values) {
    const std::optional<double> number = scanner.number();
    if (!number) return std::nullopt;
    value = *number;
    scanner.skipSeparator();
  }
  if (!scanner.atEnd() || !(values[2] > 0) || !(values[3] > 0)) return std::nullopt;
  return ViewBox{values[0], values[1], values[2], values[3]};
}

Affine fitViewBox(const ViewBox& box, double width, double height, std::string_view preserveAspectRatio) {
  double sx = width / box.width;
  double sy = height / box.height;
  std::string_view rule = trimmed(preserveAspectRatio);
  if (rule.starts_with("defer")) rule = trimmed(rule.substr(5));
  if (rule.starts_with("none")) {
    return Affine::scaling(sx, sy) * Affine::translation(-box.x, -box.y);
  }
  const bool slice = rule.find("slice") != rule.npos;
  sx = sy = slice ? std::max(sx, sy) : std::min(sx, sy);
  const auto placed = [&](std::string_view low, std::string_view high) {
    return rule.find(low) != rule.npos ? 0.0 : rule.find(high) != rule.npos ? 1.0 : 0.5;
  };
  const double dx = placed("xMin", "xMax") * (width - sx * box.width);
  const double dy = placed("YMin", "YMax") * (height - sy * box.height);
  return Affine::translation(dx, dy) * Affine::scaling(sx, sy) * Affine::translation(-box.x, -box.y);
}

} // namespace interchange
