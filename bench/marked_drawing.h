// Drawings full of circles with center marks, on which single operations are timed.
#pragma once

#include <memory>
#include <vector>

#include "torvi/host/association.h"

class MarkedDrawing {
public:
  // A square grid of circles, each with its mark. The module is loaded on first use.
  explicit MarkedDrawing(int marks);

  ZnDbDatabase& database() { return *database_; }
  ZnDbObjectId circle(int index) const { return circles_[static_cast<size_t>(index)]; }
  ZnDbObjectId mark(int index) const { return marks_[static_cast<size_t>(index)]; }
  int count() const { return static_cast<int>(circles_.size()); }
  // A further circle, without a mark, beside the grid.
  ZnDbObjectId addCircle();
  ZnDbObjectId addLine(const ZnGeLineSeg3d& line);

  // The drawing with that many marks, built once a process; the one asked for before is thrown away.
  static MarkedDrawing& withMarks(int marks);

private:
  ZnDbObjectId addCircleAt(double x, double y);
  ZnDbObjectId add(ZnDbEntity* entity);

  std::unique_ptr<ZnDbDatabase> database_;
  std::vector<ZnDbObjectId> circles_, marks_;
  int extra_ = 0;
};
