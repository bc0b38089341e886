#include "quorl/ge/place_index.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace {

using Box = ZnGePlaceIndex3d::Box;

Box anyBox() {
  const auto number = [](int from, int to) { return *rc::gen::inRange(from, to) * 0.5; };
  const ZnGePoint3d lower(number(-9, 9), number(-9, 9), number(-2, 2));
  return {lower, lower + ZnGeVector3d(number(0, 6), number(0, 6), number(0, 2))};
}

double gapBetween(const ZnGePoint3d& point, const Box& box) {
  const auto off = [](double at, double lower, double upper) {
    return std::max({lower - at, at - upper, 0.0});
  };
  return ZnGeVector3d(off(point.x, box.lower.x, box.upper.x), off(point.y, box.lower.y, box.upper.y),
                      off(point.z, box.lower.z, box.upper.z))
      .length();
}

bool meet(const Box& a, const Box& b) {
  return a.lower.x <= b.upper.x && b.lower.x <= a.upper.x && a.lower.y <= b.upper.y &&
         b.lower.y <= a.upper.y && a.lower.z <= b.upper.z && b.lower.z <= a.upper.z;
}

// Made at once or box by box, also when some have gone again.
RC_GTEST_PROP(PlaceIndex, FindsWhatLookingAtEachFinds, ()) {
  const int count = *rc::gen::inRange(0, 60), made = *rc::gen::inRange(0, count + 1);
  std::vector<Box> boxes;
  for (int i = 0; i < count; ++i) boxes.push_back(anyBox());
  ZnGePlaceIndex3d index(std::vector<Box>(boxes.begin(), boxes.begin() + made));
  std::vector<int> items;
  for (int i = 0; i < count; ++i) {
    const Box& box = boxes[static_cast<size_t>(i)];
    if (i >= made) index.insert(box, i);
    if (i % 5 == 3)
      index.remove(box, i);
    else
      items.push_back(i);
  }
  RC_ASSERT(index.size() == items.size());
  const Box asked = anyBox();
  const double reach = *rc::gen::inRange(0, 9) * 0.7;
  std::vector<int> meeting, within;
  std::vector<double> gaps;
  for (const int i : items) {
    gaps.push_back(gapBetween(asked.lower, boxes[static_cast<size_t>(i)]));
    if (meet(asked, boxes[static_cast<size_t>(i)])) meeting.push_back(i);
    if (gaps.back() <= reach) within.push_back(i);
  }
  RC_ASSERT(index.meeting(asked) == meeting);
  RC_ASSERT(index.within(asked.lower, reach) == within);
  RC_ASSERT(index.anyMeeting(asked, [&](int i) { return i == meeting.back(); }) == !meeting.empty());
  const std::vector<int> nearest = index.nearest(asked.lower, 4);
  std::sort(gaps.begin(), gaps.end());
  RC_ASSERT(nearest.size() == std::min<size_t>(4, items.size()));
  for (const int i : nearest)
    RC_ASSERT(gapBetween(asked.lower, boxes[static_cast<size_t>(i)]) <= gaps[nearest.size() - 1]);
}

} // namespace
