#include "interchange/svg_in/length.h"

#include "interchange/svg_in/number_scanner.h"

#include <array>
#include <cmath>

namespace interchange {

namespace {

constexpr double kInch = 25.4;

struct NamedUnit {
  std::string_view name;
  LengthKind kind;
  double factor;
};

constexpr std::array<NamedUnit, 11> kUnits{{{"", LengthKind::Number, 1},
                                            {"px", LengthKind::Pixel, 1},
                                            {"mm", LengthKind::Physical, 1},
                                            {"cm", LengthKind::Physical, 10},
                                            {"in", LengthKind::Physical, kInch},
                                            {"pt", LengthKind::Physical, kInch / 72},
                                            {"pc", LengthKind::Physical, kInch / 6},
                                            {"Q", LengthKind::Physical, 0.25},
                                            {"%", LengthKind::Percent, 1},
                                            {"em", LengthKind::FontSize, 1},
                                            {"ex", LengthKind::FontSize, 0.5}}};

} // namespace

std::optional<Length> parseLength(std::string_view text) {
  NumberScanner scanner(trimmed(text));
  const std::optional<double> number = scanner.number();
  if (!number) return std::nullopt;
  scanner.skipSpaces();
  const std::string_view unit = scanner.word();
  if (!scanner.atEnd()) return std::nullopt;
  for (const NamedUnit& known : kUnits) {
    if (known.name == unit) return Length{*number * known.factor, known.kind};
  }
  return std::nullopt;
}

double millimetresOf(LengthUnit unit, double dpi) {
  switch (unit) {
  case LengthUnit::Pixel:
    break;
  case LengthUnit::Millimetre:
    return 1;
  case LengthUnit::Centimetre:
    return 10;
  case LengthUnit::Inch:
    return kInch;
  case LengthUnit::Point:
    return kInch / 72;
  case LengthUnit::Pica:
    return kInch / 6;
  }
  return kInch / dpi;
}

double resolve(const Length& length, const LengthContext& context, LengthAxis axis) {
  switch (length.kind) {
  case LengthKind::Number:
  case LengthKind::Pixel:
    break;
  case LengthKind::Physical:
    return length.value * context.dpi / kInch;
  case LengthKind::FontSize:
    return length.value * context.fontSize;
  case LengthKind::Percent: {
    const double part = length.value / 100;
    if (axis == LengthAxis::X) return part * context.viewportWidth;
    if (axis == LengthAxis::Y) return part * context.viewportHeight;
    return part * std::hypot(context.viewportWidth, context.viewportHeight) / std::sqrt(2.0);
  }
  }
  return length.value;
}

} // namespace interchange
