// Static operations that bodies and layouts share: blocks and references of center objects, comparison of
// curves and coordinate systems, and id look-ups for cloning.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/export.h"

class TORVI_EXPORT ZnDbTorviActionBodyUtils {
public:
  // Blocks and references. eInvalidInput for a null database or entity and for every failure on the way.
  static Quorl::ErrorStatus createAnonymousBlockTableRecord(ZnDbDatabase* database, ZnDbObjectId& id);
  // entity is that of the first input edge, open for read; database null means the working one. The block
  // goes into the entity's database, the reference into the database's current space, turned as the user
  // coordinate system is, with the style's layer, linetype and scale.
  static Quorl::ErrorStatus createCenterBlockRef(const ZnDbEntity* entity, ZnDbObjectId& btrId,
                                                 ZnDbObjectId& refId, ZnDbDatabase* database);
  static void setCenterRotation(ZnDbBlockReference* reference, const ZnDbEntity* entity);
  // New entities into a block of their own, closed; its reference goes into the parent. With the status of
  // the first that can't be placed, which stays the caller's with all after it.
  static Quorl::ErrorStatus createSubBlockForEntities(ZnDbBlockTableRecord* parentRecord,
                                                      ZnArray<ZnDbEntity*> entities, ZnDbObjectId& refId,
                                                      ZnArray<ZnDbObjectId>& ids);
  static ZnDbObjectId getBTRIdFromBlockRef(ZnDbObjectId refId);
  static Quorl::ErrorStatus setBTRIdForBlockRef(ZnDbObjectId refId, ZnDbObjectId btrId);
  static ZnDbObjectId getBtrOfEntity(ZnDbObjectId entityId);
  static bool isEdgeFromBlockRef(const ZnDbEdgeRef& edge);

  // Cloning
  static ZnDbObjectId mapId(const ZnDbIdMapping& idMap, ZnDbObjectId id); // null for an id without mapping
  // Moves the cloned reference into the block of the cloned entity that it follows.
  static void ensureClonedCenterLineOwnedByDestBTR(ZnDbObjectId entityId, ZnDbObjectId refId);

  // Comparison, points and vectors under the global tolerance and the rounding of coordinates of their size;
  // angles of arcs by what they make out along the arc. Two unbounded lines, the empty marker, are
  // always equal; radii must be equal as numbers; a reversed segment differs.
  static bool lineLineEqual(const ZnGeLineSeg3d* a, const ZnGeLineSeg3d* b);
  static bool circleArcsEqual(const ZnGeCircArc3d* a, const ZnGeCircArc3d* b);
  static bool areTwoCurvesEqual(const ZnGeCurve3d* a, const ZnGeCurve3d* b);
  // With allowMore b may have further curves behind those of a.
  static bool geCurvesAreEqual(ZnArray<ZnGeCurve3d*> a, ZnArray<ZnGeCurve3d*> b, bool allowMore);
  // Turns m about its own origin until its x axis falls on that of ref.
  static void rotateMatrixToAlignRefMatrix(ZnGeMatrix3d& m, const ZnGeMatrix3d& ref);
  // Origins and directions of axes; scale makes no difference.
  static bool areTwoCoordinatesEqual(const ZnGeMatrix3d& a, const ZnGeMatrix3d& b);

  static void deleteCurves(ZnArray<ZnGeCurve3d*>& curves);
};
