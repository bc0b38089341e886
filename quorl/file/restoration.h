// Gives a drawing that was read from a damaged file what no drawing can be without.
#pragma once

class ZnDbDatabase;
class ZnHandleIndex;
class ZnSalvage;
struct ZnFileError;
struct ZnDrawingHeader;

namespace Quorl {

// After all objects are in and before the drawing is finished: what the header names and the file has lost is
// found again by its class and name, or made anew; objects without an owner go to where their class belongs,
// and are lost where that is nowhere. Each is noted.
void restoreEssentials(ZnDbDatabase& database, ZnHandleIndex& index, ZnDrawingHeader& header,
                       ZnSalvage& salvage);

// The references in that block, which is in itself or shows more than can be drawn, are lost.
void loseReferencesIn(ZnDbDatabase& database, const ZnFileError& error, ZnSalvage& salvage);

} // namespace Quorl
