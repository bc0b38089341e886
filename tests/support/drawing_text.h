// What is in a drawing, as text.
#pragma once

#include <string>

#include "quorl/file/drawing_file.h"

// Without the header: handles that were given to what is gone are not given again.
inline std::string contentOf(const ZnDbDatabase& drawing) {
  const std::string text = zndbDrawingText(drawing);
  return text.substr(text.find("\nCLASSES\n"));
}
