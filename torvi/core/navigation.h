// From one part of a center object to another: reference, body, action, generated curves.
#pragma once

#include "torvi/core/kind.h"

namespace torvi {

// Null ids on failure.
ZnDbObjectId bodyOfReference(ZnDbObjectId refId);
ZnDbObjectId referenceOfBody(ZnDbObjectId bodyId);
CenterObject centerObjectOf(ZnDbObjectId refId);

// Appends, each once, the bodies of center objects whose actions depend on the reference; the reference may
// be erased. With readersToo also those that only read it.
void appendBodiesOn(ZnDbObjectId refId, bool readersToo, ZnArray<ZnDbObjectId>& bodies);
// Appends, each once, the actions of center objects in all spaces of the drawing.
void appendCenterActions(ZnDbDatabase& db, ZnArray<ZnDbObjectId>& actions);

// Whether it is the action of a center mark. A pattern, whose body derives from that of a mark, is none.
bool isCenterMarkAction(ZnDbObjectId actionId);
// Appends, each once, the actions of center marks in all networks of the drawing.
void appendCenterMarkActions(ZnDbDatabase& db, ZnArray<ZnDbObjectId>& actions);

// The center object in which the curve lies, at any depth of blocks with a single reference.
CenterObject centerObjectWithCurve(const ZnDbCurve* curve);
// The center object whose block this is, or holds this block's only reference, which then is inner.
CenterObject centerObjectWithBlock(const ZnDbBlockTableRecord& block, ZnDbObjectId& inner);

// Whether one of the object's edges is seen in a drawing view.
bool isCenterOfDrawingView(ZnDbObjectId refId);

} // namespace torvi
