// The base of all action bodies: what an action does, and the door through which modules keep values,
// parameters and dependencies in the action.
#pragma once

#include "quorl/assoc/action.h"
#include "quorl/assoc/evaluation_callback.h"

class ZnDbIdMapping;

// Kept for derived classes that bring their own implementation object; there is one way today.
enum ZnDbAssocCreateImpObject : int { kCreateImplementation = 0, kNoImplementation = 1 };

class ZnDbAssocActionBody : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocActionBody)

public:
  explicit ZnDbAssocActionBody(ZnDbAssocCreateImpObject = kCreateImplementation) {}
  ~ZnDbAssocActionBody() override;

  // Bodies come and go in numbers; memory of a size is given again without asking the system.
  static void* operator new(size_t size);
  static void operator delete(void* memory, size_t size) noexcept;

  // Makes an action with a body of that class in the network of the owner (a space's block record), which is
  // made where missing. eWrongObjectClass for a class that is no body or can't be made, eInvalidOwner.
  static Quorl::ErrorStatus createActionAndActionBodyAndPostToDatabase(const ZnRxClass* bodyClass,
                                                                       ZnDbObjectId owner,
                                                                       ZnDbObjectId& actionId,
                                                                       ZnDbObjectId& bodyId);

  // The action. A body in no action has none: queries give neutral values, changes eNotInDatabase.
  static ZnDbObjectId parentAction(ZnDbObjectId bodyId);
  ZnDbObjectId parentAction() const { return ownerId(); }
  ZnDbAssocAction* action() const {
    const ZnDbObjectId id = ownerId();
    return id.isValid() && id.isDerivedFrom(ZnDbAssocAction::desc())
               ? static_cast<ZnDbAssocAction*>(id.slot()->object)
               : nullptr;
  }
  ZnDbAssocStatus status() const;
  Quorl::ErrorStatus setStatus(ZnDbAssocStatus status, bool notifyOwning = true,
                               bool setInOwnedActions = false);
  ZnDbAssocEvaluationCallback* currentEvaluationCallback() const;

  // Dependencies
  // Brings the dependencies' states up to date; eWasErased when something depended on is gone.
  Quorl::ErrorStatus evaluateDependencies();
  bool hasAnyErasedOrBrokenDependencies() const;
  bool hasAnyNewlyErasedDependencies() const; // since the last evaluation
  Quorl::ErrorStatus getDependencies(bool readOnesWanted, bool writeOnesWanted,
                                     ZnArray<ZnDbObjectId>& ids) const;
  Quorl::ErrorStatus removeAllDependencies(bool alsoEraseThem);
  // A null dependency class means the default one. A dependency body class makes an object that goes with it.
  Quorl::ErrorStatus addDependency(const ZnRxClass* dependencyClass, const ZnRxClass* dependencyBodyClass,
                                   bool isRead, bool isWrite, int order, ZnDbObjectId& id);

  // Parameters; see ZnDbAssocAction.
  Quorl::ErrorStatus addParam(const ZnString& name, const ZnRxClass* paramClass, ZnDbObjectId& id,
                              int& index);
  Quorl::ErrorStatus removeParam(ZnDbObjectId id, bool alsoErase);
  ZnDbObjectId paramAtName(const ZnString& name, int index = 0) const;
  ZnArray<ZnDbObjectId> paramsAtName(const ZnString& name) const;
  int paramCountAtName(const ZnString& name) const;
  ZnDbObjectId paramAtIndex(int index) const;
  int paramCount() const;

  // Values by name and index. Reading: eKeyNotFound, eOutOfRange; the short form allocates nothing.
  Quorl::ErrorStatus getValueParam(const ZnString& name, ZnDbEvalVariant& value, ZnString& expression,
                                   ZnString& evaluatorId, int index = 0) const;
  Quorl::ErrorStatus getValueParam(const ZnString& name, ZnDbEvalVariant& value, int index = 0) const;
  // The double that stands there, else the default; the fastest way to read one.
  double valueOf(const ZnString& name, double absent) const;
  // Writes although the body may be open for read only; eWasOpenForRead while others read the action. Writing
  // what stands changes nothing and needs no access. index may be the count of values, which appends; beyond
  // it eOutOfRange. The message is left empty: a value is taken as given. silent is for evaluators with a
  // voice.
  Quorl::ErrorStatus setValueParam(const ZnString& name, const ZnDbEvalVariant& value,
                                   const ZnString& expression, const ZnString& evaluatorId,
                                   ZnString& errorMessage, bool silentMode, int index = 0);
  Quorl::ErrorStatus setValueParam(const ZnString& name, const ZnDbEvalVariant& value, int index = 0);
  Quorl::ErrorStatus removeValueParam(const ZnString& name); // eKeyNotFound
  // Replaces names, in order of first writing.
  void ownedValueParamNames(ZnArray<ZnString>& names) const;
  // The whole array; the three arrays are replaced. A single value is an array of one.
  Quorl::ErrorStatus getValueParamArray(const ZnString& name, ZnArray<ZnDbEvalVariant>& values,
                                        ZnArray<ZnString>& expressions,
                                        ZnArray<ZnString>& evaluatorIds) const;
  // Replaces the whole array. eInvalidInput unless the text arrays are empty or as long as the values, or for
  // an empty array.
  Quorl::ErrorStatus setValueParamArray(const ZnString& name, const ZnArray<ZnDbEvalVariant>& values,
                                        const ZnArray<ZnString>& expressions,
                                        const ZnArray<ZnString>& evaluatorIds,
                                        ZnArray<ZnString>& errorMessages, bool silentMode);

  // What a class does. The body is open for read at least, and held for its own evaluation. An evaluation
  // that leaves the action's status as it was counts as up to date.
  virtual void evaluateOverride() {}
  // Called once an original that the action writes is being cloned, with every body being open for read:
  // which objects (the action, as a rule) must travel along.
  virtual Quorl::ErrorStatus addMoreObjectsToDeepCloneOverride(ZnDbIdMapping&, ZnArray<ZnDbObjectId>&) const {
    return Quorl::eOk;
  }
  // Called on the original body, once for each clone of it, when all clones stand: ids of the original are
  // keys of the mapping.
  virtual Quorl::ErrorStatus postProcessAfterDeepCloneOverride(ZnDbIdMapping&) { return Quorl::eOk; }
  virtual Quorl::ErrorStatus auditAssociativeDataOverride(std::vector<ZnString>& /*faults*/, bool /*fix*/) {
    return Quorl::eOk;
  }
  // Objects in which the body keeps names of sub-entities, appended: they travel with a cloned action.
  virtual Quorl::ErrorStatus collectPersSubentNamingDataOverride(ZnArray<ZnDbObjectId>& /*data*/) const {
    return Quorl::eOk;
  }
  // Called on the original before postProcessAfterDeepCloneOverride: writes the names anew in the clones of
  // those objects, which stand in that drawing. A status other than eOk leaves out the post processing.
  virtual Quorl::ErrorStatus clonePersSubentNamingDataOverride(ZnDbDatabase* /*to*/, ZnDbIdMapping&) {
    return Quorl::eOk;
  }
  // The action's status is about to become this one.
  virtual void notificationOverride(ZnDbAssocStatus /*status*/) {}

  // A body that comes back from being a proxy enters its action for evaluation again.
  void attachLinks() override;
  Quorl::ErrorStatus addMoreObjectsToDeepClone(ZnDbIdMapping& mapping,
                                               ZnArray<ZnDbObjectId>& more) const final;
  Quorl::ErrorStatus postProcessAfterDeepClone(ZnDbIdMapping& mapping) final;
  void audit(std::vector<ZnString>& faults, bool fix) override;

private:
  template<class Change> Quorl::ErrorStatus changeAction(Change&& change);
};
