// A network owns the actions of one space; the networks of a drawing are members of its top level one.
#pragma once

#include "quorl/assoc/action.h"

class ZnDbAssocNetwork : public ZnDbAssocAction {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocNetwork)

public:
  // The network of an object, kept in its extension dictionary; of that key where an object has several. Null
  // without one, unless createIfMissing, which needs the owner open for nobody's reading. A new one
  // becomes a member of the top level network with addToTopLevel.
  static ZnDbObjectId getInstanceFromObject(ZnDbObjectId owner, bool createIfMissing, bool addToTopLevel,
                                            const ZnString& key = ZnString());
  // The top level network of the drawing.
  static ZnDbObjectId getInstanceFromDatabase(ZnDbDatabase* database, bool createIfMissing,
                                              const ZnString& key = ZnString());

  // Members in order of addition, erased ones too.
  const ZnArray<ZnDbObjectId>& getActions() const;
  // Posts an action in no database, or moves one from another network; constant time. eInvalidInput for null
  // or another drawing's. A new action is left open for write.
  Quorl::ErrorStatus addAction(ZnDbAssocAction* action, ZnDbObjectId& id);
  Quorl::ErrorStatus moveActionHere(ZnDbObjectId action);
  // eInvalidOwner for an action that is no member. Without erasing it is left in no network.
  Quorl::ErrorStatus removeAction(ZnDbObjectId action, bool alsoErase);

  // Actions below this network that are to be evaluated, each once; the list is empty afterwards.
  void takeMarked(std::vector<ZnDbAssocAction*>& marked);
  bool hasMarked() const { return !marked_.empty(); }

  Quorl::ErrorStatus setStatus(ZnDbAssocStatus status, bool notifyOwning = true,
                               bool setInOwnedActions = false) override;
  ZNDB_DECLARE_FIELDS
  void loaded() override;
  void memberAdded(ZnDbObjectId id) override;
  void memberRemoved(ZnDbObjectId id) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  Quorl::ErrorStatus subErase(bool erasing) override;
  void subBringBack() override;
  void subEvaluate(ZnDbAssocEvaluationCallback* callback) override;
  // A network stands in a dictionary, and in the list of the network above.
  ZnDbObjectId owningNetworkId() const override;

private:
  ZnDbErasedTogether erasedTogether_;
  friend class ZnDbAssocAction;
  void enter(ZnDbAssocAction* action);
  void compact() const;
  bool holds(const ZnDbAssocAction* action) const;
  bool owns(ZnDbObjectId id) const;

  // A member that leaves makes a hole, closed up when the list is asked for: leaving costs no search.
  mutable ZnArray<ZnDbObjectId> actions_;
  mutable int holes_ = 0;
  mutable bool placesAreStale_ = false; // a list that was read: its members do not know their places yet
  ZnDbObjectId parentNetworkId_;
  std::vector<ZnDbObjectId> marked_;
};
