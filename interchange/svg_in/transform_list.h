// The transform attribute and the fitting of a view box.
#pragma once

#include "quorl/ge/matrix2d.h"

#include <optional>
#include <string>
#include <string_view>

namespace interchange {

// The product of a list of matrix, translate, scale, rotate, skewX and skewY. Nothing when the text is no
// such list; `expected` then says what was.
std::optional<ZnGeMatrix2d> parseTransform(std::string_view text, std::string& expected);

struct ViewBox {
  double x = 0, y = 0, width = 0, height = 0;
};

// Nothing when it is not four numbers or has no area.
std::optional<ViewBox> parseViewBox(std::string_view text);

// Maps the view box into a viewport at the origin, placed as preserveAspectRatio says.
ZnGeMatrix2d fitViewBox(const ViewBox& box, double width, double height,
                        std::string_view preserveAspectRatio);

} // namespace interchange
