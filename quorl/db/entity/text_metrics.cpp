#include "quorl/db/entity/text_metrics.h"

namespace {

// Advances as shares of the capital height, after a plain sans-serif lettering.
constexpr double kNarrow = 0.4, kUsual = 0.75, kWide = 1.05;
constexpr double kDescent = 0.3; // how far letters reach below the baseline

double advanceOf(wchar_t letter) {
  constexpr std::wstring_view narrow = L" .,:;!|'ijl()[]ftr";
  constexpr std::wstring_view wide = L"mwMW@%";
  if (narrow.find(letter) != std::wstring_view::npos) return kNarrow;
  return wide.find(letter) != std::wstring_view::npos ? kWide : kUsual;
}

} // namespace

double zndbTextWidth(std::wstring_view text, double height, double widthFactor) {
  double advance = 0.0;
  for (const wchar_t letter : text) advance += advanceOf(letter);
  return advance * height * widthFactor;
}

std::array<ZnGePoint3d, 4> zndbTextCorners(const ZnGePoint3d& position, const ZnGeVector3d& normal,
                                           const ZnGeVector3d& direction, double height, double widthFactor,
                                           std::wstring_view text, ZnDb::TextAlign align) {
  const ZnGeVector3d along = direction * zndbTextWidth(text, height, widthFactor);
  const ZnGeVector3d up = normal.crossProduct(direction) * height;
  const double share = align == ZnDb::kTextCenter ? 0.5 : align == ZnDb::kTextRight ? 1.0 : 0.0;
  const ZnGePoint3d left = position - along * share;
  const ZnGePoint3d below = left - up * kDescent;
  return {below, below + along, left + along + up, left + up};
}
