// The module's static utility class, as callers outside know it: what is a center object, how to get from one
// of its parts to another, what an edge looks like now, and how to create, reassociate and evaluate. It
// stands above the kinds; inside the module the folders drawing and core are asked, in front of which most of
// it is.
#pragma once

#include "torvi/drawing/types.h"
#include "torvi/host/association.h"
#include "torvi/host/export.h"

class ZnDbTorviObjectWrapper;

class TORVI_EXPORT ZnTorviLyxUtils {
public:
  // Identification. A context list holds two shorts, the pattern's full pitch circle flag and its center mark
  // flag, and the end mark; it is filled for patterns asked as patterns only, and any list in it is released.
  // isCenterObject is wider than isCenterObjectOfType on purpose: any kind passes, type matters for context.
  static bool isCenterObject(ZnDbObjectId id, ZnDbTorviType type);
  static bool isCenterObject(ZnDbObjectId id, ZnDbTorviType type, ZnResBufList& context);
  static bool isCenterObject(const ZnDbTorviObjectWrapper* wrapper, ZnDbTorviType type,
                             ZnResBufList& context);
  static bool isCenterObjectOfType(ZnDbObjectId id, ZnDbTorviType type);
  // Whether the curve lies, at any depth of blocks with a single reference, in a center object.
  static bool isCenterObjectCurve(const ZnDbCurve* curve, ZnDbObjectId& id, ZnDbTorviType& type);
  static bool getTorviPatternContext(const ZnDbTorviObjectWrapper* wrapper, bool& isFullPCD,
                                     bool& showCenterMark);
  static bool isCenterMirrored(ZnDbObjectId id);
  // Of the actions those of center marks count, patterns do not.
  static bool isAnyCenterMarksOnLayer(ZnDbLayerTableRecord* layer, const ZnArray<ZnDbObjectId>& actions);

  // Navigation; null ids on failure.
  static ZnDbObjectId getTorviActionBodyId(ZnDbObjectId blockRefId);
  static ZnDbObjectId getTorviActionBodyId(ZnDbBlockReference* ref);
  static ZnDbObjectId getTorviFromActionBodyId(const ZnDbObjectId& bodyId);
  static ZnDbObjectId getTorviObjIdFromObj(ZnDbBlockReference* ref);
  // subEntId names the inner reference when the block is nested in a center object's block.
  static ZnDbObjectId getTorviObjIdFromBlockTableRecord(const ZnDbBlockTableRecord& block,
                                                        ZnDbObjectId& subEntId);
  static void getTorviSubEntIdsFromBlockTableRecord(ZnArray<ZnDbObjectId>& ids,
                                                    const ZnDbBlockTableRecord& block);
  static void getCenterActionBodiesOfBlockRef(const ZnDbObjectId& refId, ZnArray<ZnDbObjectId>& bodies);
  static void getAllTorviActionBodiesDependOnBlkRef(ZnDbObjectId refId, ZnArray<ZnDbObjectId>& bodies);
  static void getAllTorviActionBodiesDependOnBTR(ZnDbObjectId blockId, ZnArray<ZnDbObjectId>& bodies);
  static void getAllCenterActionIds(ZnDbDatabase* db, ZnArray<ZnDbObjectId>& actions);
  // Of center marks, without patterns, in networks of any depth; appended.
  static void getAllCenterMarkActions(ZnArray<ZnDbObjectId>& actions, ZnDbDatabase* db);
  static void getCenterLinesDependOnEnt(const ZnDbObjectId& entityId, ZnArray<ZnDbObjectId>& centerIds);
  // Lines and arcs of the reference's block and of blocks nested in it. With unerase, erased entities and the
  // block itself are brought back on the way.
  static Quorl::ErrorStatus getEntitesIdsFromBlkRef(const ZnDbObjectId& refId, ZnArray<ZnDbObjectId>& ids,
                                                    bool unerase);
  static ZnDbObjectId getViewportIdFromEdgeRef(const ZnDbEdgeRef& edge);
  static ZnDbObjectId getModelSpaceBTRId(ZnDbDatabase* db);
  static ZnDbObjectId getCurrentLayoutBTRId();
  static ZnDbObjectId activeViewportId();

  // Views and paths
  static bool isTranSpatialPath(const ZnDbFullSubentPath& path);
  // True when the path holds an id and its sub-entity index is 0; name and test read opposite ways, and
  // callers depend on the test.
  static bool isSubEntityPath(const ZnDbFullSubentPath& path);
  static ZnGeMatrix3d msWcsToPsWcs(const ZnDbObjectId& viewportId); // identity for anything but a viewport
  static double viewScale(const ZnDbObjectId& viewportId);          // 1.0 for anything but a viewport
  static bool isInBrevixView(const ZnDbObjectId& id);
  static bool isInBrevixView(const ZnDbFullSubentPath& path);
  static bool isInBrevixView(const ZnDbEdgeRef& edge);
  static bool getBrevixView(const ZnDbEdgeRef& edge, ZnDbObjectId& viewportId, ZnDbObjectId* viewRepId,
                            ZnDbObjectId* viewId);
  static bool isCenterReferenceToBrevixView(const ZnDbObjectId& centerId);
  static ZnGeCurve3d* getBrevixProjectedCurve(const ZnDbEdgeRef& edge); // new, or null

  // Curves. The edge's current curve in the space of the center object, new and owned by the caller, or null:
  // segments, and arcs (whole circles with fullCircle); edges of any other shape give null.
  static ZnGeCurve3d* evaluatedZnDbEdgeCurve(const ZnDbEdgeRef& edge, bool fullCircle);
  // An edge reference for the path; an empty one for a line without length.
  static Quorl::ErrorStatus createEdgeRef(const ZnDbFullSubentPath& path, ZnDbEdgeRef& edge);
  // Moves both ends outward by these lengths; negative ones shorten. eInvalidInput for a line without length.
  static Quorl::ErrorStatus extendLine(ZnGeLineSeg3d& line, double startBy, double endBy);
  static ZnGeLineSeg3d getExtendedLine(const ZnGeLineSeg3d& line, double startBy, double endBy);
  static bool fuzzyEqual(double a, double b, double tolerance);
  // Four points at 0, 1/4, 1/2 and 3/4 of the arc's own interval.
  static Quorl::ErrorStatus getCircleQuadrantPoints(const ZnGeCircArc3d& arc, ZnArray<ZnGePoint3d>& points);
  // Origin at the center, x to the first quadrant point, z along the normal.
  static Quorl::ErrorStatus calcCircleEcs(const ZnGeCircArc3d& arc, ZnGeMatrix3d& ecs);
  static bool checkForArc();
  static void uneraseObject(const ZnDbObjectId& id);

  // Linetypes
  static ZnDbObjectId getLineTypeByName(ZnDbDatabase* db, const ZnString& name);
  // eInvalidInput without any database, eLinetypeNotLoaded when the file has no such linetype.
  static Quorl::ErrorStatus ensureCenterLinetypeLoaded(ZnDbDatabase* db);
  static ZnDbObjectId getCenterLineTypeId(ZnDbDatabase* db);
  static ZnDbObjectId getContinuousLineTypeId(ZnDbDatabase* db);
  static const ZnCmTransparency& getByBlockTransparency();

  // Creation and reassociation; db null means the working database. A failure ends the sequence with its
  // status and rolls nothing back: callers put a transaction around it.
  static Quorl::ErrorStatus createCenterMark(const ZnDbEdgeRef& edge, ZnDbObjectId& centerId,
                                             ZnDbDatabase* db);
  static Quorl::ErrorStatus reAssociateCenterMark(ZnDbObjectId centerId, const ZnDbEdgeRef& edge);
  // Two edges, and two points in the same order at which they were picked. eInvalidInput for edges that are
  // no segments, and for skew ones.
  static Quorl::ErrorStatus createCenterLine(const ZnArray<ZnDbEdgeRef>& edges, const ZnGePoint3d* pickPoints,
                                             ZnDbObjectId& centerId, ZnDbDatabase* db);
  static Quorl::ErrorStatus reAssociateCenterLine(ZnDbObjectId centerId, const ZnArray<ZnDbEdgeRef>& edges,
                                                  const ZnGePoint3d* pickPoints);
  static Quorl::ErrorStatus createEdgeExtension(const ZnArray<ZnDbEdgeRef>& edges, ZnDbObjectId& centerId,
                                                ZnDbDatabase* db);
  static Quorl::ErrorStatus reAssociateEdgeExtension(ZnDbObjectId centerId,
                                                     const ZnArray<ZnDbEdgeRef>& edges);
  // The edges decide the type where none is given, and always while auto fill is on. An empty reference is
  // none. A pitch circle is closed for polar patterns only, whatever is asked for.
  static Quorl::ErrorStatus createCenterMarkPattern(const ZnArray<ZnDbEdgeRef>& edges, ZnDbObjectId& centerId,
                                                    CenterMarkPatternType patternType,
                                                    const ZnDbEdgeRef& referenceCircle, bool isFullPCD,
                                                    bool showCenterMark, ZnDbDatabase* db);

  // Evaluation. The first marks the body's action and evaluates the top level network; the second evaluates
  // one action by itself. Both give eOk whatever the evaluation does: the action's status tells.
  static Quorl::ErrorStatus explicitlyEvaluateActionBody(ZnDbObjectId bodyId);
  static Quorl::ErrorStatus evaluateAction(ZnDbObjectId actionId);

  // Center lines whose direction may turn round when their edges change; the set is the whole process's.
  static void markCenterLinesNotToKeepDirection(const ZnArray<ZnDbObjectId>& ids);
  static void unmarkCenterLinesNotToKeepDirection(); // all of them
  static bool isCenterLineNotToKeepDirection(const ZnDbObjectId& id);

  // Updates of whole drawings, after a change of what is no edge. Of all kinds those that differ are
  // evaluated; of center marks all, or those whose linetype is by layer once one stands on the layer, null
  // asking for none; those seen through a viewport that differ, with what hangs on them. db null means the
  // working drawing for the first, and nothing for the others.
  static void updateAllCenterActions(ZnDbDatabase* db);
  static void updateAllCenterMarks(ZnDbDatabase* db);
  static void updateAllByLayerLinetypeCenterMarks(ZnDbDatabase* db, ZnDbLayerTableRecord* layer);
  static void updateAllAssocDimensionsOnBrevixCenter(ZnDbDatabase* db);
  static void updateCenterObjDependOnViewport(ZnDbObjectId viewportId);
  // Appends the blocks that come from no external drawing; none for a drawing without layout dictionary.
  static void getAllLocalBlockTableRecords(ZnArray<ZnDbObjectId>& blocks, ZnDbDatabase* db);
  // While recording, viewports that are changed gather in the list, until a caller takes them out.
  static bool& m_bRecordUpdate;
  static bool getRecordUpdate();
  static void setRecordUpdate(bool record);
  static ZnArray<ZnDbObjectId>& viewportsToUpdate();
  // Kept for callers: nothing here acts on it.
  static bool isAssocEvalRelaxed();
  static void setAssocEvalRelaxed(bool relaxed);
  // While a long transaction is active, copies do not break association: what is missing may still come. That
  // of the host or of the working drawing; of one drawing, which may be named more than once and is then
  // active until it is taken away as often.
  static bool isLongTransactionActive();
  static bool isLongTransactionActive(ZnDbDatabase* db);
  static void setIsLongTransactionActive(ZnDbDatabase* db, bool active);

  // Dependencies
  static Quorl::ErrorStatus addReadWriteDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                           ZnDbObjectId& dependencyId);
  static Quorl::ErrorStatus addReadOnlyDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                          ZnDbObjectId& dependencyId);
  static Quorl::ErrorStatus setCenterDependencyId(ZnDbObjectId bodyId, ZnDbObjectId centerId);
  static void deleteCenterDependenciesOnObject(ZnDbObjectId refId);

  // Prints that the object lost its association, in the words of its kind.
  static void printCenterDisassociatedMessage(ZnDbObjectId bodyId);
};
