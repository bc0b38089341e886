// A layout turns the state of a center object into curves and writes them into the entities of its block. It
// lives for one operation, holds nothing open, and works on the object through its wrapper.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/export.h"

class ZnDbTorviObjectWrapper;

class TORVI_EXPORT ZnDbTorviLayout {
public:
  explicit ZnDbTorviLayout(ZnDbObjectId centerObject)
      : centerObject_(centerObject) {}
  virtual ~ZnDbTorviLayout() = default;

  // Curves are in the block's coordinates and owned by the caller; a curve that is neither segment nor arc, a
  // default ZnGeLine3d by convention, hides its member. Without keys, curve i goes to entity i of the block;
  // with keys each names an output edge, and equal neighbours form a group.
  virtual Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>& keys) = 0;
  // eInvalidInput without a center object and for more curves than entities; else what adjustEntities says.
  virtual Quorl::ErrorStatus updateEntities(const ZnArray<ZnGeCurve3d*>& curves,
                                            const ZnArray<ZnString>& keys, bool associative);
  // Works on entities in no drawing: what comes out different is written to those of the block.
  virtual Quorl::ErrorStatus adjustEntities(const ZnArray<ZnDbEntity*>& entities,
                                            const ZnArray<ZnString>& keys);
  virtual Quorl::ErrorStatus evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) = 0;
  virtual Quorl::ErrorStatus createTransients(const ZnArray<ZnDbEdgeRef>& edges, const ZnGePoint3d* pickPoint,
                                              ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);
  // As evaluateGeometry, but leaves the object as it is.
  virtual Quorl::ErrorStatus compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) = 0;
  virtual Quorl::ErrorStatus createEntitiesForKey(ZnArray<ZnDbEntity*>& entities, const ZnString& key);

  ZnDbObjectId centerObject() const { return centerObject_; }
  // Takes the curves to where the object stands; good after evaluateGeometry and compareGeometry.
  const ZnGeMatrix3d& transform() const { return transform_; }

protected:
  // Current shapes of the input edges; positions stay aligned with the edges, a shared placeholder without
  // extent standing for every other shape. The result counts the real ones.
  int getInputLineSegments(ZnArray<ZnGeLineSeg3d>& segments) const;
  int getInputLineSegments(const ZnDbTorviObjectWrapper& wrapper, ZnArray<ZnGeLineSeg3d>& segments) const;
  int getInputCircles(const ZnArray<ZnDbEdgeRef>& edges, ZnArray<ZnGeCircArc3d>& circles) const;

  ZnDbObjectId centerObject_; // null in a layout made by a builder
  ZnGeMatrix3d transform_;

private:
  static Quorl::ErrorStatus applyCurveToEntity(ZnDbEntity* entity, const ZnGeCurve3d* curve,
                                               bool associative);
  Quorl::ErrorStatus reconcileOutputEntities(ZnArray<ZnDbObjectId>& ids, const ZnArray<ZnString>& keys,
                                             ZnDbTorviObjectWrapper& wrapper, bool associative);
  Quorl::ErrorStatus wantedOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper,
                                  ZnArray<ZnDbObjectId>& ids, ZnArray<ZnDbObjectId>& subBlocks);
  Quorl::ErrorStatus createOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper,
                                  ZnArray<ZnDbObjectId>& ids, ZnArray<ZnDbObjectId>& subBlocks);
  Quorl::ErrorStatus staleOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper, bool associative,
                                 ZnArray<ZnDbObjectId>& ids, ZnArray<ZnDbObjectId>& subBlocks);
  void applyTraits(ZnDbTorviObjectWrapper& wrapper, const ZnArray<ZnDbEntity*>& entities) const;
};
