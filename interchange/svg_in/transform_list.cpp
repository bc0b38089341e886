#include "interchange/svg_in/transform_list.h"

#include "interchange/recognize/limits.h"
#include "interchange/svg_in/number_scanner.h"

#include "quorl/ge/angles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace interchange {

namespace {

using Arguments = std::vector<double>;

double radians(double degrees) { return degrees * ZnGe::kPi / 180; }

ZnGeMatrix2d makeMatrix(const Arguments& v) { return {{v[4], v[5]}, {v[0], v[1]}, {v[2], v[3]}}; }
ZnGeMatrix2d makeTranslate(const Arguments& v) {
  return ZnGeMatrix2d::translation({v[0], v.size() > 1 ? v[1] : 0});
}
ZnGeMatrix2d makeScale(const Arguments& v) {
  return ZnGeMatrix2d::scaling({v[0], v.size() > 1 ? v[1] : v[0]});
}
ZnGeMatrix2d makeSkewX(const Arguments& v) { return {{}, {1, 0}, {std::tan(radians(v[0])), 1}}; }
ZnGeMatrix2d makeSkewY(const Arguments& v) { return {{}, {1, std::tan(radians(v[0]))}, {0, 1}}; }
// Not the host's rotation, which rounds quarter turns: a drawing comes out as every viewer computes it.
ZnGeMatrix2d makeRotate(const Arguments& v) {
  const double cosine = std::cos(radians(v[0])), sine = std::sin(radians(v[0]));
  const ZnGeMatrix2d turn({}, {cosine, sine}, {-sine, cosine});
  if (v.size() < 3) return turn;
  return ZnGeMatrix2d::translation({v[1], v[2]}) * turn * ZnGeMatrix2d::translation({-v[1], -v[2]});
}

struct Function {
  std::string_view name;
  std::size_t least;
  std::size_t most; // rotate takes one or three, the others any number between
  ZnGeMatrix2d (*make)(const Arguments&);
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

std::optional<ZnGeMatrix2d> parseTransform(std::string_view text, std::string& expected) {
  ZnGeMatrix2d product;
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
  if (isFinite(product)) return product;
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

ZnGeMatrix2d fitViewBox(const ViewBox& box, double width, double height,
                        std::string_view preserveAspectRatio) {
  double sx = width / box.width;
  double sy = height / box.height;
  std::string_view rule = trimmed(preserveAspectRatio);
  if (rule.starts_with("defer")) rule = trimmed(rule.substr(5));
  if (rule.starts_with("none")) {
    return ZnGeMatrix2d::scaling({sx, sy}) * ZnGeMatrix2d::translation({-box.x, -box.y});
  }
  const bool slice = rule.find("slice") != rule.npos;
  sx = sy = slice ? std::max(sx, sy) : std::min(sx, sy);
  const auto placed = [&](std::string_view low, std::string_view high) {
    return rule.find(low) != rule.npos ? 0.0 : rule.find(high) != rule.npos ? 1.0 : 0.5;
  };
  const double dx = placed("xMin", "xMax") * (width - sx * box.width);
  const double dy = placed("YMin", "YMax") * (height - sy * box.height);
  return ZnGeMatrix2d::translation({dx, dy}) * ZnGeMatrix2d::scaling({sx, sy}) *
         ZnGeMatrix2d::translation({-box.x, -box.y});
}

} // namespace interchange
