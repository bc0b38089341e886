// Writes annotation onto the SVG document that a drawing was imported from.
#pragma once

#include "interchange/draw/picture_options.h"
#include "interchange/import/source_page.h"

#include "quorl/base/failure.h"
#include "quorl/db/core/object_id.h"

#include <string>
#include <string_view>
#include <vector>

class ZnDbDatabase;

namespace interchange {

// The annotation entities, in that order, as one group with the id "quorl-annotation" (numbered where an
// element of the document has that id) at the end of the document: strokes with color, width and dashes, in
// its user coordinates. A group that an earlier run put there is replaced. All else stays as it is, byte by
// byte; a document in UTF-16 becomes the same text in UTF-8. `page` says how the source lies in the drawing,
// in millimetres. Erased entities and those on hidden layers are left out. False with the reason in `error`
// for a source that is no SVG document.
bool annotateSvg(std::string_view source, const SourcePage& page, const ZnDbDatabase& database,
                 const std::vector<ZnDbObjectId>& annotation, const PictureOptions& options,
                 std::string& annotated, Quorl::Failure& error);

// The same from file to file; a failure leaves what stood at the path. The two paths may be the same.
bool writeAnnotatedSvg(const std::string& sourcePath, const SourcePage& page, const ZnDbDatabase& database,
                       const std::vector<ZnDbObjectId>& annotation, const std::string& path,
                       const PictureOptions& options, Quorl::Failure& error);

} // namespace interchange
