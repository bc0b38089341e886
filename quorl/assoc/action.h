// An action of the associative network: a body that knows what to do, named values and parameters, and the
// dependencies that tell when to do it.
#pragma once

#include <vector>

#include "quorl/assoc/assoc_status.h"
#include "quorl/assoc/value_param.h"
#include "quorl/db/core/erased_together.h"
#include "quorl/db/core/object.h"

class ZnDbAssocActionBody;
class ZnDbAssocDependency;
class ZnDbAssocEvaluationCallback;
class ZnDbAssocNetwork;

class ZnDbAssocAction : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocAction)

public:
  ZnDbAssocAction();
  ~ZnDbAssocAction() override;

  // State. Setting it is a note of the framework's: it needs no open action, is undone with the action, and
  // tells no reactor. A status to evaluate enters the action in its network's list (notifyOwning), which the
  // next evaluation of the drawing visits. setInOwnedActions passes it on to the members of a network.
  ZnDbAssocStatus status() const { return status_; }
  virtual Quorl::ErrorStatus setStatus(ZnDbAssocStatus status, bool notifyOwning = true,
                                       bool setInOwnedActions = false);
  // Evaluates this action alone, whatever its status; a suppressed or erased one is passed over. The callback
  // may be null. Actions that depend on it are marked, not evaluated.
  void evaluate(ZnDbAssocEvaluationCallback* callback);
  bool isUnderEvaluation() const;
  // Of the evaluation of this action now going on; null without one.
  ZnDbAssocEvaluationCallback* currentEvaluationCallback() const;

  // Body. A body of a class that is not loaded is a proxy; the action then waits with its status as it is.
  ZnDbObjectId actionBody() const { return bodyId_; }
  Quorl::ErrorStatus setActionBody(ZnDbObjectId body);
  bool isActionBodyAProxy() const;
  ZnDbAssocActionBody* body() const; // null without one, and for a proxy

  // Dependencies in order of addition, erased ones left out. adding posts a new one; the caller closes it.
  Quorl::ErrorStatus getDependencies(bool readOnesWanted, bool writeOnesWanted,
                                     ZnArray<ZnDbObjectId>& ids) const;
  Quorl::ErrorStatus addDependency(ZnDbAssocDependency* dependency, ZnDbObjectId& id);
  Quorl::ErrorStatus removeDependency(ZnDbObjectId id, bool alsoErase);
  Quorl::ErrorStatus removeAllDependencies(bool alsoEraseThem);
  const std::vector<ZnDbObjectId>& dependencyIds() const { return dependencies_; } // erased ones too

  // Parameters, in order of addition, erased ones left out. Names may repeat. An index counts all parameters
  // of the action (paramAtIndex) or those of the name (paramAtName); a null id beyond the end. eInvalidInput
  // for a class that is no parameter.
  Quorl::ErrorStatus addParam(const ZnString& name, const ZnRxClass* paramClass, ZnDbObjectId& id,
                              int& index);
  Quorl::ErrorStatus removeParam(ZnDbObjectId id, bool alsoErase);
  int paramCount() const;
  int paramCountAtName(const ZnString& name) const;
  ZnDbObjectId paramAtIndex(int index) const;
  ZnDbObjectId paramAtName(const ZnString& name, int index = 0) const;
  ZnArray<ZnDbObjectId> paramsAtName(const ZnString& name) const;
  // Those of the name without a copy; good until a parameter comes or goes.
  const std::vector<ZnDbObjectId>& paramIdsAtName(const ZnString& name) const;
  void paramsChanged() { groupsAreStale_ = true; } // called by a parameter that comes, goes or changes name

  // Named values; see ZnDbAssocActionBody, which is the door for modules.
  const ZnDbAssocValueParamList& values() const { return values_; }
  // Writing what stands changes nothing.
  Quorl::ErrorStatus setValue(ZnAtom name, int index, const ZnDbAssocValue& value);
  Quorl::ErrorStatus setValues(ZnAtom name, const std::vector<ZnDbAssocValue>& values);
  Quorl::ErrorStatus removeValue(ZnAtom name);

  // Appends the actions with a wanted kind of dependency on the object, directly or as part of a path,
  // without duplicates, in order of attachment. Costs time in proportion to the object's watchers.
  static Quorl::ErrorStatus getActionsDependentOnObject(const ZnDbObject* object, bool readWanted,
                                                        bool writeWanted, ZnArray<ZnDbObjectId>& actions);
  static Quorl::ErrorStatus getActionsDependentOnObject(ZnDbObjectId object, bool readWanted,
                                                        bool writeWanted, ZnArray<ZnDbObjectId>& actions);
  // The network that owns it; null for the top level one and for an action in no network.
  ZnDbAssocNetwork* owningNetwork() const;

  ZNDB_DECLARE_FIELDS
  void attachLinks() override;
  void loaded() override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  Quorl::ErrorStatus subErase(bool erasing) override;
  void subBringBack() override;
  virtual void subEvaluate(ZnDbAssocEvaluationCallback* callback);
  virtual ZnDbObjectId owningNetworkId() const { return ownerId(); }

private:
  friend class ZnDbAssocDependency;
  friend class ZnDbAssocNetwork;
  friend class ZnDbAssocEvaluationOrder;

  struct ParamGroup {
    ZnAtom name;
    std::vector<ZnDbObjectId> ids;
  };
  // Scratch of the ordering: good while build, or run, is the number of the ordering that looks at it.
  struct Visit {
    std::uint32_t build = 0, index = 0, low = 0;
    std::uint32_t run = 0;
    int evaluations = 0;
    bool open = false;
  };

  void mark(ZnDbAssocStatus status);
  void enterInNetwork();
  void beginChange();
  const ParamGroup* group(const ZnString& name) const;
  const std::vector<ZnDbObjectId>& liveParams() const;
  void refreshGroups() const;

  ZnDbAssocStatus status_ = kIsUpToDateAssocStatus;
  bool queued_ = false; // stands in the list of marked actions of its network
  ZnDbObjectId bodyId_;
  std::vector<ZnDbObjectId> dependencies_, params_;
  ZnDbErasedTogether erasedTogether_;
  ZnDbAssocValueParamList values_;
  size_t placeInNetwork_ = 0;
  mutable std::vector<ParamGroup> groups_;
  mutable std::vector<ZnDbObjectId> liveParams_;
  mutable bool groupsAreStale_ = true;
  mutable std::uint32_t seenBy_ = 0; // number of the query that met it last
  Visit visit_;
};
