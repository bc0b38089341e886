// Bringing center objects up to date when something changes that is none of their edges: a linetype scale, a
// layer's linetype, a viewport. And what is kept meanwhile for the whole process.
#pragma once

#include "torvi/host/association.h"

namespace torvi {

// Of these, what can't be opened is passed over, and the outcome of an evaluation is not looked at: the
// action's status tells.
// Every center object that differs from what its edges, its lineweight or its linetype scale ask for; null
// means the working drawing.
void updateAllCenters(ZnDbDatabase* db);
void updateAllCenterMarks(ZnDbDatabase* db);
// Marks whose linetype is by layer, on whatever layer, once there is a mark on this one; null asks for none.
void updateMarksWithLayersLinetype(ZnDbDatabase* db, const ZnDbLayerTableRecord* layer);
// Center objects seen through the viewport that differ, and what hangs on them, such as dimensions.
void updateCentersSeenThrough(ZnDbObjectId viewport);
// Dimensions on center objects of drawing views, as far as they measure through a viewport.
void updateDimensionsOnViewCenters(ZnDbDatabase* db);
// Old files: what does not fit its edges as they are drawn here lets go of them, and keeps its look.
void upgradeOldCenterActions(ZnDbDatabase* db);

// Whether one of the actions is that of a mark on the layer; patterns are no marks.
bool isAnyMarkOnLayer(const ZnDbLayerTableRecord* layer, const ZnArray<ZnDbObjectId>& actions);
// Blocks that are the drawing's own; none for a drawing without a dictionary of layouts.
void appendLocalBlocks(ZnDbDatabase* db, ZnArray<ZnDbObjectId>& blocks);

// Viewports that were changed while recording is on, each once, until a caller takes them.
extern bool recordsViewports;
ZnArray<ZnDbObjectId>& viewportsToUpdate();

extern bool isEvaluationRelaxed; // kept for callers; nothing here acts on it

// A drawing may be named more than once, and is then active until it is taken away as often.
void setLongTransactionActive(ZnDbDatabase* db, bool active);
bool isLongTransactionActive(const ZnDbDatabase* db);
// Of the working drawing, or of the host as a whole.
bool isLongTransactionActive();

// What is kept of a drawing that goes away; of all of them for null.
void forgetUpdatesOf(const ZnDbDatabase* db);

} // namespace torvi
