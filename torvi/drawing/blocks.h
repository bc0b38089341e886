// Blocks and references that center objects are made of, whatever their kind.
#pragma once

#include "torvi/host/database.h"

namespace torvi {

ZnDbObjectId blockOfReference(ZnDbObjectId refId); // null ids on failure
// The first reference of the block that the reference shows.
ZnDbObjectId firstReferenceOfSameBlock(const ZnDbBlockReference* reference);
// The one reference of the block; null when it has none or several.
ZnDbObjectId onlyReferenceOf(const ZnDbBlockTableRecord& block);
bool isMirrored(ZnDbObjectId refId);
// Appends lines and arcs of the reference's block and of blocks nested in it, each once. With unerase, erased
// entities and blocks are brought back on the way.
Quorl::ErrorStatus curvesOfReference(ZnDbObjectId refId, ZnArray<ZnDbObjectId>& ids, bool unerase);
void uneraseObject(ZnDbObjectId id);

ZnDbObjectId modelSpaceId(ZnDbDatabase* db);
// Model space and all layouts: the spaces that have networks of actions.
ZnArray<ZnDbObjectId> spacesOf(ZnDbDatabase& db);

template<class T> void appendOnce(ZnArray<T>& values, const T& value) {
  if (!values.contains(value)) values.append(value);
}

} // namespace torvi
