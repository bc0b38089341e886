// What a drawing holds only so that undo can bring it back: actions whose outputs are all gone, with what
// they own, and the anonymous blocks that nothing shows any more. They are in no file.
#pragma once

#include <vector>

#include "quorl/db/core/object_id.h"

class ZnDbDatabase;

// Marks them for as long as it lives (ZnDbSlot::leftOut): meanwhile their ids count as null where fields are
// filed. The drawing itself stays as it is.
class ZnDbLeftOvers {
public:
  explicit ZnDbLeftOvers(const ZnDbDatabase& drawing);
  ~ZnDbLeftOvers();
  ZnDbLeftOvers(const ZnDbLeftOvers&) = delete;
  ZnDbLeftOvers& operator=(const ZnDbLeftOvers&) = delete;

private:
  void leaveOut(ZnDbObjectId id);
  void leaveOutActions();
  void leaveOutBlocks();
  void leaveOutOwned();

  const std::vector<ZnDbObjectId> all_;
  std::vector<ZnDbObjectId> left_;
};
