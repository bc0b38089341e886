// The layer of new center objects: which one it is, and how it looks when it has to be made.
#pragma once

#include "torvi/host/database.h"
#include "torvi/host/export.h"

class TORVI_EXPORT ZnTorviSetLayer {
public:
  // Name of the working database's current layer, or the default center layer's name without one.
  static ZnString currentLayer();
  static ZnString centerLayerName();
  // Makes the layer, like the drawing's standard one, where it is missing. eNoDatabase for null, else the
  // host's status; nothing is left behind on failure.
  static Quorl::ErrorStatus getCenterLayerId(ZnDbDatabase* db, ZnDbObjectId& id);
  // Puts the entity, and what it consists of, on the center layer of its database. By id it works on locked
  // layers; an entity in no database counts as one of the working database.
  static Quorl::ErrorStatus setCenterLayer(const ZnDbObjectId& entityId);
  static Quorl::ErrorStatus setCenterLayer(ZnDbEntity* entity);

private:
  static Quorl::ErrorStatus createCenterLayer(const ZnString& name, ZnDbObjectId& id, ZnDbDatabase* db);
  static void applyLayerOverrides(ZnDbObjectId layerId);
};

// From now on layers that the module makes get these traits; layers that a drawing has stay as they are.
// eInvalidLinetypeId, and nothing changes, unless the id is that of a linetype.
TORVI_EXPORT Quorl::ErrorStatus zndbApplyTorviLayerOverrides(ZnDb::LineWeight lineWeight,
                                                             const ZnDbObjectId& linetype,
                                                             const ZnCmColor& color,
                                                             const ZnCmTransparency& transparency);
// Takes back the linetype alone: new layers go on getting the other traits, the last ones applied or, before
// any were, lineweight 25 and the default color and transparency.
TORVI_EXPORT Quorl::ErrorStatus zndbClearTorviLayerOverrides();

// Called when the module stops: a program that keeps it in memory starts it afresh.
void forgetTorviLayerOverrides();
