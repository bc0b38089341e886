// What keeps center objects right while the host clones, explodes and saves: the paths by which they see
// their edges, the look of exploded ones, and the blocks of those that are gone.
#pragma once

#include <map>

#include "torvi/host/association.h"
#include "torvi/host/export.h"

// By edge parameter: the path to its edge.
using ZnTorviEdgeParamMap = std::map<ZnDbObjectId, ZnDbFullSubentPath>;
// By block reference of a center object: the entities of its block, in an array that the map's holder owns.
using ZnTorviCenterBlockMap = std::map<ZnDbObjectId, ZnArray<ZnDbObjectId>*>;

// What can't be opened or found is passed over by all of these, and stays as it was.
class TORVI_EXPORT ZnTorviDeepCloneUtils {
public:
  static ZnDbObjectId getClonedId(const ZnDbIdMapping& map, ZnDbObjectId id); // null for an id without pair
  // Appends, each once, the blocks in which the mapping's entities stand.
  static void collectAllDeepCloneBtrIds(ZnDbIdMapping& map, ZnArray<ZnDbObjectId>& blockIds);
  // Whether the edges of the center object, of which it has some, are all cloned with the mapping.
  static bool isCenterDependentObjectsCloned(const ZnDbIdMapping& map, const ZnDbObjectId& centerId);

  // Edges seen through references of these blocks; replaces params.
  static void collectAllOldEdgeParams(const ZnArray<ZnDbObjectId>& blockIds, ZnTorviEdgeParamMap& params);
  // The paths as they are after the clone. The two maps may be one object.
  static void getNewEdgeParamsWithNewSubentPath(ZnDbIdMapping& map, ZnArray<ZnDbObjectId>& blockIds,
                                                ZnTorviEdgeParamMap& oldParams,
                                                ZnTorviEdgeParamMap& newParams);
  static void updateEdgeparams(ZnTorviEdgeParamMap& params);
  // When the reference that was exploded goes: parameters that saw their edge through it get their new path
  // and leave both maps.
  static void updateEdgeparams(ZnTorviEdgeParamMap& oldParams, ZnTorviEdgeParamMap& newParams,
                               ZnDbObjectId erasedRef);
  // All at once; empties blockIds and params.
  static void updateEdgeParamsWithNewSubentPath(ZnDbIdMapping& map, ZnArray<ZnDbObjectId>& blockIds,
                                                ZnTorviEdgeParamMap& params);

  // Center objects whose blocks these are; their arrays are added to what the map holds.
  static void createCenterBtrToSubEntitiesMap(const ZnArray<ZnDbObjectId>& blockIds,
                                              ZnTorviCenterBlockMap& centers);
  // Clones of the entities of a center object show what its block reference showed: its color and
  // transparency.
  static void updateCenterBtrSubEntityProps(const ZnDbIdMapping& map, const ZnTorviCenterBlockMap& centers);
  static void deleteCenterBlockMap(ZnTorviCenterBlockMap& centers); // the arrays too

  // Blocks that go at the next save of their drawing, if nothing refers to them by then. The list is the
  // whole process's; a block may be marked more than once.
  static void markBlockTableRecordToPurge(const ZnDbObjectId& blockId);
  static void purgeMarkedBlockTableRecords(ZnDbDatabase* db);
  // Those of a drawing that goes away; all of them for null.
  static void forgetMarkedBlockTableRecords(const ZnDbDatabase* db);
};
