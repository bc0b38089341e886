// Filing of paths to parts of entities. Ids are soft pointers: depending on an object does not keep it, nor
// pull it along in a clone.
#pragma once

#include "quorl/db/core/filer.h"
#include "quorl/db/core/tdoc_filer.h"
#include "quorl/db/entity/subent.h"

void zndbWritePath(ZnDbFiler& filer, const ZnDbCompoundObjectId& path);
// A path of which a part could not be translated (it stayed behind in another drawing) reads as empty.
Quorl::ErrorStatus zndbReadPath(ZnDbFiler& filer, ZnDbCompoundObjectId& path);
void zndbWriteSubent(ZnDbFiler& filer, const ZnDbSubentId& subent);
ZnDbSubentId zndbReadSubent(ZnDbFiler& filer);

// One item an id, outermost first.
void zndbWritePath(ZnDbTdocFiler& filer, int code, const ZnDbCompoundObjectId& path);
// The path of the ids that were read.
ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids);
