// The handle on a center object for everyone outside the core: made on the id of a block reference, it opens
// the body or the reference for just as long as a request needs. It can outlive the object: reading then
// gives neutral values, writing the status of the failed opening.
#pragma once

#include "torvi/core/kind.h"

class TORVI_EXPORT ZnDbTorviObjectWrapper {
public:
  explicit ZnDbTorviObjectWrapper(ZnDbObjectId centerObject);
  explicit ZnDbTorviObjectWrapper(const torvi::CenterObject& found)
      : found_(found) {}
  ZnDbTorviObjectWrapper(const ZnDbTorviObjectWrapper&) = default;
  ZnDbTorviObjectWrapper(ZnDbTorviObjectWrapper&&) = default;
  ZnDbTorviObjectWrapper& operator=(const ZnDbTorviObjectWrapper&) = default;
  ZnDbTorviObjectWrapper& operator=(ZnDbTorviObjectWrapper&&) = default;
  virtual ~ZnDbTorviObjectWrapper() = default;

  static ZnDbTorviType getCenterType(ZnDbObjectId centerObject);
  static ZnDbTorviType getCenterTypeFromActionBody(ZnDbObjectId bodyId);
  static bool isCenterObject(ZnDbObjectId centerObject);
  static ZnDbTorviType wrapperCenterType() { return kTorviAny; }

  // Identity, fixed at construction
  ZnDbObjectId centerObjId() const { return found_.reference; }
  ZnDbObjectId actionBody() const { return found_.body; }
  ZnDbTorviType centerType() const { return getCenterTypeFromActionBody(found_.body); }
  bool isCenterObject() const { return found_.kind != kTorviNone; }

  // Association
  bool isAssociative() const;
  bool isFullyAssociative() const;
  Quorl::ErrorStatus breakAssociativity();
  bool isExplicitlyDeassociatived() const;
  Quorl::ErrorStatus setIsExplicitlyDeassociatived(bool value);
  bool associationToBeBroken() const; // opens for write, so a reader elsewhere makes it false
  Quorl::ErrorStatus setAssociationToBeBroken(bool value);
  Quorl::ErrorStatus setCachedAssociateStatus(bool associative);
  int edgeRefCount() const;
  Quorl::ErrorStatus getEdgeRefs(ZnArray<ZnDbEdgeRef>& edges) const;
  Quorl::ErrorStatus getAssociatedEntitiesIds(ZnArray<ZnDbObjectId>& ids) const;
  ZnDbObjectId getDependentViewportId() const;
  double cachedViewportScale() const;

  // Evaluation. Suppressed objects keep their look; lifting the suppression marks them for the next run.
  bool doesActionMatchCurrentGeometry() const;
  void explicitlyEvaluateCenterObject();
  Quorl::ErrorStatus supressCenterEvaluation();
  Quorl::ErrorStatus unSupressCenterEvaluation();
  bool isCenterEvaluationSupressed() const;

  // Values
  ZnDbObjectId styleDepId() const;
  Quorl::ErrorStatus setStyleDepId(ZnDbObjectId id);
  Quorl::ErrorStatus addDependencyToStyle(ZnDbObjectId styleId);
  Quorl::ErrorStatus resetExtensions();
  Quorl::ErrorStatus resetOvershoots();
  double autoMatchExtension() const;
  bool isAutoMatchExtension(double value) const;

  // Generated entities
  Quorl::ErrorStatus getCenterEntitesIds(ZnArray<ZnDbObjectId>& ids) const;
  Quorl::ErrorStatus getCenterObjGeometry(ZnArray<ZnGeCurve3d*>& curves) const;
  ZnDbObjectId getOutputEdge(const ZnString& key) const;
  Quorl::ErrorStatus setOutputEdge(const ZnString& key, ZnDbObjectId id);
  Quorl::ErrorStatus renameOutputEdgeKey(const ZnString& oldKey, const ZnString& newKey);
  Quorl::ErrorStatus getOutputEdgeKeys(ZnArray<ZnString>& keys) const;
  ZnString subentLineType() const;
  int subentLineWeight() const;
  double subentLinetypeScale() const;
  Quorl::ErrorStatus setSubentLineType(const ZnString& name);
  Quorl::ErrorStatus setSubentLineWeight(int weight);
  Quorl::ErrorStatus setSubentLinetypeScale(double scale);

  // The block reference. The generated entities are by block, so their color is the reference's.
  int colorIndex() const;
  ZnString linetype() const;
  int lineWeight() const;
  double linetypeScale() const;
  ZnCmColor subentColor() const;
  int subentColorIndex() const { return colorIndex(); }
  Quorl::ErrorStatus setSubentColor(const ZnCmColor& color);
  Quorl::ErrorStatus setSubentColorIndex(int index);
  ZnGeMatrix3d blockTransform() const;

private:
  torvi::CenterObject found_;
};
