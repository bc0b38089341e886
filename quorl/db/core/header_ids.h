// The ids that a drawing's header names, all of them, in one place for building, reading and writing.
#pragma once

#include "quorl/db/core/object_id.h"

struct ZnDbHeaderIds {
  ZnDbObjectId blockTable, layerTable, linetypeTable, dimStyleTable, namedObjects;
  ZnDbObjectId modelSpace, paperSpace, currentSpace, clayer, celtype, dimstyle;
  ZnDbObjectId layerZero, byLayer, byBlock, continuous;

  // Whether the drawing is none without the object.
  bool needs(ZnDbObjectId id) const {
    for (const ZnDbObjectId needed : {blockTable, layerTable, linetypeTable, dimStyleTable, namedObjects,
                                      currentSpace, clayer, celtype, dimstyle})
      if (id == needed) return true;
    return standsUnderItsName(id);
  }
  // Whether the object is one that every drawing has, under a name that others know.
  bool standsUnderItsName(ZnDbObjectId id) const {
    for (const ZnDbObjectId known : {modelSpace, paperSpace, layerZero, byLayer, byBlock, continuous})
      if (id == known) return true;
    return false;
  }
};
