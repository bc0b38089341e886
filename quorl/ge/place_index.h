// Points and boxes in a plane or in space, found by where they are.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "quorl/ge/point2d.h"
#include "quorl/ge/point3d.h"

// Items are numbers of the caller's: positions in the array that the index was made of, and whatever is
// inserted later. Coordinates are finite. Answers are in ascending order of the items. A question costs
// little more than what it finds; an index made of an array at once is the quicker one.
template<class Point> class ZnGePlaceIndex {
public:
  struct Box {
    Point lower, upper;
  };

  ZnGePlaceIndex();
  explicit ZnGePlaceIndex(const std::vector<Point>& points);
  explicit ZnGePlaceIndex(const std::vector<Box>& boxes);
  ~ZnGePlaceIndex();
  ZnGePlaceIndex(ZnGePlaceIndex&&) noexcept;
  ZnGePlaceIndex& operator=(ZnGePlaceIndex&&) noexcept;

  size_t size() const;
  Box bounds() const; // of all that is there; a point at the origin when nothing is
  void insert(const Box& box, int item);
  void remove(const Box& box, int item); // with the box that it was inserted with

  // Borders count as inside.
  std::vector<int> within(const Point& point, double distance) const;
  std::vector<int> meeting(const Box& box) const;
  // Whether anything that meets the box passes; asks no further once one does.
  bool anyMeeting(const Box& box, const std::function<bool(int)>& passes) const;
  // The nearest ones, at most so many; of equally near ones any.
  std::vector<int> nearest(const Point& point, int count) const;

private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

using ZnGePlaceIndex2d = ZnGePlaceIndex<ZnGePoint2d>;
using ZnGePlaceIndex3d = ZnGePlaceIndex<ZnGePoint3d>;
extern template class ZnGePlaceIndex<ZnGePoint2d>;
extern template class ZnGePlaceIndex<ZnGePoint3d>;
