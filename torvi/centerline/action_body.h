// The body of a center line: how far the line runs past its middle and past its ends, which ends of the edges
// choose the bisector, and what is remembered of the last evaluation. All of it is kept as named values.
#pragma once

#include "torvi/core/action_body.h"

class TORVI_EXPORT ZnDbCenterLineActionBody : public ZnDbTorviActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbCenterLineActionBody)

public:
  ZnDbCenterLineActionBody();

  // Both extensions follow the edges; both overshoots become the style's. Always eOk.
  Quorl::ErrorStatus resetExtensions() override;
  Quorl::ErrorStatus resetOvershoots() override;

  // Extensions: from the middle of the line to its start and end, without overshoot, in drawing units.
  // Reading gives a length, never the value that follows the edges; setting takes any number.
  double startExtension() const;
  double endExtension() const;
  Quorl::ErrorStatus setStartExtension(double value);
  Quorl::ErrorStatus setEndExtension(double value);

  // Overshoots: what is drawn beyond the extensions.
  double startOvershoot() const;
  double endOvershoot() const;
  Quorl::ErrorStatus setStartOvershoot(double value);
  Quorl::ErrorStatus setEndOvershoot(double value);

  // Length and unit direction of the line between the edges at the last evaluation, without extensions: what
  // lets a line survive without its edges, and keeps it from turning round. 0 and the zero vector before.
  double cachedCenterLineLength() const;
  ZnGeVector3d cachedCenterLineDirection() const;
  Quorl::ErrorStatus setCachedCenterLineLength(double length);
  Quorl::ErrorStatus setCachedCenterLineDirection(const ZnGeVector3d& direction); // status of the last part

  // For each edge 0 when its ray points to the edge's start, else to its end; 1 where nothing is stored. The
  // reading ones renew a working copy. An index above 1 or below 0 reads as 3, as if that were an ending, and
  // is refused with eInvalidInput when set. Setting one writes the working copy as it is, the array writes
  // all. The array's operations always give eOk.
  int edgeRefDirEnding(int index);
  Quorl::ErrorStatus setEdgeRefDirEnding(int index, int value);
  Quorl::ErrorStatus edgeRefDirEndingArray(ZnArray<int>& endings);
  Quorl::ErrorStatus setEdgeRefDirEndingArray(const ZnArray<int>& endings);

  // The line as it stands in the drawing, in the coordinates of its space, with or without its overshoots;
  // extensions are part of it. eInvalidInput for a block without curves, and the line is left as it was.
  Quorl::ErrorStatus getCenterLineGeometry(ZnGeLineSeg3d& line, bool includeOvershoot) const;

protected:
  ZnDbTorviLayout* getLayout() const override;
  // A stored extension as a length: one that follows the edges is half of the line between them.
  double getResolvedExtensionLength(double stored) const;

private:
  void refreshEndings();
  Quorl::ErrorStatus storeEndings();
  int endingAt(int index) const;

  ZnArray<ZnDbEvalVariant> endings_; // working copy of the stored array
};
