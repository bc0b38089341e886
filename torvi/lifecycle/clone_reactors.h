// What must be done for center objects while the host clones: what of them stays tied to its edges in a copy,
// and how edges are found again that stood in an exploded block.
#pragma once

#include "torvi/lifecycle/deep_clone_utils.h"

// Explode. New paths are worked out when the clone ends, and written when the exploded reference goes.
class ZnRxEventReactor_TorviDeepCloneExplode : public ZnRxEventReactor {
public:
  // One for the process, between attach and detach; adding it to the host's event object is theirs too.
  static void attach();
  static void detach(); // with all that it gathered

  void beginDeepCloneTranslation(ZnDbIdMapping& map) override;
  void abortDeepClone(ZnDbIdMapping& map) override;
  void endDeepClone(ZnDbIdMapping& map) override;

  // To be told by whoever watches the drawing.
  static void referenceErased(ZnDbObjectId reference, ZnDbObjectId block);
  static void forget(const ZnDbDatabase& drawing); // which goes away
};

// Copies. A center object whose edges do not all come along lets go of them: in a copy the clone does, in
// clones to other drawings and into blocks the source, whose edges are about to go.
class ZnRxEventReactor_DeepCloneCopy : public ZnRxEventReactor {
public:
  static void attach();
  static void detach();

  void beginDeepCloneTranslation(ZnDbIdMapping& map) override;
  void endDeepClone(ZnDbIdMapping& map) override;

private:
  ZnArray<ZnDbObjectId> toDisassociate_;
};
