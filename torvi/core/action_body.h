// The body of every center object: it owns the object's dependencies and sub-entity traits, makes and erases
// its block, regenerates it, and decides whether it follows its edges.
#pragma once

#include "torvi/core/action_body_base.h"

class ZnDbTorviLayout;

class TORVI_EXPORT ZnDbTorviActionBody : public ZnDbTorviActionBodyBase {
  ZNRX_DECLARE_MEMBERS(ZnDbTorviActionBody)

public:
  ZnDbTorviActionBody() = default;

  // For each kind to supply
  virtual Quorl::ErrorStatus resetExtensions() { return Quorl::eNotProvided; }
  virtual Quorl::ErrorStatus resetOvershoots() { return Quorl::eNotProvided; }

  // Association. Breaking empties edge parameters and leaves everything else: the object keeps its shape.
  virtual Quorl::ErrorStatus breakAssociativity(int index);
  virtual Quorl::ErrorStatus breakAssociativity();
  bool isAssociative(bool all) const; // all: every edge lives and there is one; else: one lives. Of an
                                      // edge that lives, all that it is seen through lives.
  bool isExplicitlyDeassociatived() const;
  Quorl::ErrorStatus setIsExplicitlyDeassociatived(bool value);
  bool associationToBeBroken() const;
  void setAssociationToBeBroken(bool value);

  // Evaluation
  void evaluateOverride() override;
  virtual bool doesActionMatchCurrentGeometry() const;
  bool doesActionNeedUpdate() const;

  // Dependencies; null ids when absent or gone.
  ZnDbObjectId centerDepId() const;
  ZnDbObjectId styleDepId() const;
  ZnDbObjectId dimStyleDepId() const;
  Quorl::ErrorStatus setCenterDepId(ZnDbObjectId id);
  Quorl::ErrorStatus setStyleDepId(ZnDbObjectId id);
  Quorl::ErrorStatus setDimStyleDepId(ZnDbObjectId id);
  ZnDbObjectId centerObjectId() const; // the block reference
  ZnDbObjectId getStyleId() const;
  Quorl::ErrorStatus addDependencyToStyle(ZnDbObjectId styleId);

  // The block. Creation gives eInvalidInput for any failure but that of opening the first edge's entity.
  Quorl::ErrorStatus createCenterEntity(ZnDbDatabase* database);
  Quorl::ErrorStatus eraseCenterEntity(); // always eOk
  Quorl::ErrorStatus getCenterEntitesIds(ZnArray<ZnDbObjectId>& ids) const;
  // Curves in block coordinates, owned by the caller; a default ZnGeLine3d for one without a usable shape.
  Quorl::ErrorStatus getCenterObjGeometry(ZnArray<ZnGeCurve3d*>& curves) const;
  Quorl::ErrorStatus getAssociatedEntitiesIds(ZnArray<ZnDbObjectId>& ids) const; // eNoInputEdges
  ZnDbObjectId getDependentViewportId() const;

  // Traits of the generated entities, as copied from the reference at the last evaluation.
  ZnString subentLineType() const;
  int subentLineWeight() const;
  double subentLinetypeScale() const;
  Quorl::ErrorStatus setSubentLineType(ZnString name);
  Quorl::ErrorStatus setSubentLineWeight(int weight);
  Quorl::ErrorStatus setSubentLinetypeScale(double scale);

  // Extensions of at least this length follow the object instead of giving a length.
  static double autoMatchExtension() { return kAutoMatchExtension; }
  static bool isAutoMatchExtension(double value) { return value >= kAutoMatchExtension; }
  static constexpr double kAutoMatchExtension = 1e60;

  // Deep clone hooks: the action and the block travel with a cloned reference, and the clones are tied up.
  Quorl::ErrorStatus addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& idMap,
                                                       ZnArray<ZnDbObjectId>& ids) const override;
  Quorl::ErrorStatus postProcessAfterDeepCloneOverride(ZnDbIdMapping& idMap) override;

protected:
  friend class ZnDbTorviObjectWrapper;

  virtual ZnDbTorviLayout* getLayout() const { return nullptr; } // new, owned by the caller
  virtual bool rotationToBeChecked() const { return true; }
  // True when evaluation is over: the object was asked to let go of edges that moved, not to follow them.
  virtual bool handleBreakingAssociation();

  Quorl::ErrorStatus addEntitiesIntoCenterAnonymousBTR(ZnDbDatabase* database, ZnDbObjectId btrId);
  Quorl::ErrorStatus getCenterObjGeometry(const ZnArray<ZnDbObjectId>& ids,
                                          ZnArray<ZnGeCurve3d*>& curves) const;
  bool doesActionMatchCurrentSubEntLinetype() const;
  bool doesActionMatchCurrentSubEntLineWeight() const;
  bool doesActionMatchCurrentSubEntLinetypeScale() const;
  bool isCenterObjectErased() const;
  bool isDragging() const;
  double cachedViewportScale() const;
  Quorl::ErrorStatus setCachedViewportScale(double scale);
  void cacheViewportScale();
  bool getCachedAssociateStatus() const;
  Quorl::ErrorStatus setCachedAssociateStatus(bool associative);
  bool cacheAssociateStatus(); // true when it changed

private:
  ZnDbObjectId objectOfDependency(ZnDbObjectId dependencyId) const;
  void regenerate(ZnDbTorviLayout& layout);
  Quorl::ErrorStatus getPresentGeometry(const ZnArray<ZnString>& keys, ZnArray<ZnGeCurve3d*>& curves) const;
  void writeTransform(ZnDbBlockReference& reference, const ZnGeMatrix3d& transform) const;
  void reportFailedOpen(Quorl::ErrorStatus status);
};
