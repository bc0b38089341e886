// Points in a plane, found by place.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "torvi/host/geometry.h"

namespace companion {

// Answers are positions in the array that the index was made of, in ascending order.
class PlanarIndex {
public:
  explicit PlanarIndex(const std::vector<ZnGePoint2d>& points);
  ~PlanarIndex();

  std::vector<int> within(const ZnGePoint2d& point, double distance) const;
  std::vector<int> inBox(const ZnGePoint2d& lower, const ZnGePoint2d& upper) const;
  // Whether any point in the box passes; asks no further once one does.
  bool anyInBox(const ZnGePoint2d& lower, const ZnGePoint2d& upper,
                const std::function<bool(int)>& passes) const;
  // The nearest ones, at most so many; of equally near ones any.
  std::vector<int> nearest(const ZnGePoint2d& point, int count) const;

private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

// Boxes in a plane, found by what they meet; answers as above.
class BoxIndex {
public:
  struct Box {
    ZnGePoint2d lower, upper;
  };
  explicit BoxIndex(const std::vector<Box>& boxes);
  ~BoxIndex();

  std::vector<int> meeting(const Box& box) const;

private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

} // namespace companion
