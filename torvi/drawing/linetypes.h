// The linetypes of center objects in a drawing, loaded from the style's file where they are missing.
#pragma once

#include "torvi/host/database.h"

namespace torvi {

// Null ids for a null database and for a linetype that can't be had.
ZnDbObjectId linetypeByName(ZnDbDatabase* db, const ZnString& name); // loads nothing
ZnDbObjectId centerLinetypeId(ZnDbDatabase* db);
ZnDbObjectId crossHairLinetypeId(ZnDbDatabase* db);
// A null database means the working one; eInvalidInput without any, eLinetypeNotLoaded when the file has no
// such linetype.
Quorl::ErrorStatus ensureCenterLinetypeLoaded(ZnDbDatabase* db);

const ZnCmTransparency& byBlockTransparency();

} // namespace torvi
