// The ids that a drawing's header names, all of them, in one place for building, reading and writing.
#pragma once

#include "quorl/db/core/object_id.h"

struct ZnDbHeaderIds {
  ZnDbObjectId blockTable, layerTable, linetypeTable, dimStyleTable, namedObjects;
  ZnDbObjectId modelSpace, paperSpace, currentSpace, clayer, celtype, dimstyle;
  ZnDbObjectId layerZero, byLayer, byBlock, continuous;
};
