// Strokes as SVG path elements in the user coordinates of a document.
#pragma once

#include "interchange/draw/page_fit.h"
#include "interchange/draw/stroke_target.h"

#include <optional>
#include <string>
#include <string_view>

namespace interchange {

class SvgPathTarget final : public StrokeTarget {
public:
  // `toUser` maps drawing units to user units, of which one is `unit` millimetres. Element names get the
  // prefix, such as "svg:".
  SvgPathTarget(const ZnGeMatrix2d& toUser, double unit, std::string prefix);

  void stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) override;
  void area(const Contour& contour, const Ink& ink) override;
  void dot(ZnGePoint2d center, double diameter, const Ink& ink) override;
  // As outlines, so that it looks alike wherever it is shown.
  void lettering(const Lettering& lettering, const Ink& ink) override;
  // Windows belong to sheets, which have no source to be drawn onto.
  void pushWindow(ZnGePoint2d, ZnGePoint2d) override {}
  void popWindow() override {}

  // One element a line.
  const std::string& elements() const { return elements_; }
  // Of all that was drawn, in drawing units, without the widths of the lines.
  const std::optional<Extent>& extent() const { return extent_; }

private:
  void appendElement(const std::string& data, const std::string& paint);
  std::string dataOf(const Contour& contour);
  std::string point(ZnGePoint2d userPoint) const;
  void note(ZnGePoint2d drawingPoint);

  ZnGeMatrix2d toUser_;
  double unit_;
  int decimals_;
  std::string prefix_;
  std::string elements_;
  std::optional<Extent> extent_;
};

} // namespace interchange
