// Writes what a drawing shows as an SVG, PDF or PNG picture.
#pragma once

#include "interchange/draw/picture_options.h"

#include "quorl/base/failure.h"

#include <string>
#include <vector>

class ZnDbDatabase;
class ZnDbEntity;

namespace interchange {

// The bytes of a picture. The format follows the ending of the path: .svg, .pdf or .png, in any case. `extra`
// are entities in no database, drawn on top as if they stood in the space that is shown; they count for the
// extents. The same drawing gives the same bytes. False with the reason in `error`: an unknown ending or
// layout, a size that is no size, a page or bitmap beyond the limits.
bool makePicture(const ZnDbDatabase& database, const std::string& path, const PictureOptions& options,
                 std::string& bytes, Quorl::Failure& error, const std::vector<const ZnDbEntity*>& extra = {});

// The same into a file, whole or not at all.
bool writePicture(const ZnDbDatabase& database, const std::string& path, const PictureOptions& options,
                  Quorl::Failure& error, const std::vector<const ZnDbEntity*>& extra = {});

} // namespace interchange
