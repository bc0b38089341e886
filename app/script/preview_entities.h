// What a module's preview command tells, as entities that a picture can show.
#pragma once

#include <memory>
#include <vector>

#include "exchange/center_commands.h"
#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"

namespace app {

// The entities are in no drawing. Layers and linetypes are the drawing's; what it does not have, since it
// would be made with the object only, stands in a drawing of its own.
class PreviewEntities {
public:
  PreviewEntities(const ZnDbDatabase& drawing, const exchange::PreviewOutcome& preview);
  std::vector<const ZnDbEntity*> entities() const;

private:
  ZnDbObjectId linetype(const ZnDbDatabase& drawing, const exchange::PreviewOutcome& preview,
                        const std::string& name);

  ZnDbDatabase scratch_;
  std::vector<std::unique_ptr<ZnDbEntity>> held_;
};

} // namespace app
