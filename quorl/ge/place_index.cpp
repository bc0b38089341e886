#include "quorl/ge/place_index.h"

#include <algorithm>
// A header that this one leads to warns of its own age; nothing here depends on it.
#define BOOST_ALLOW_DEPRECATED_HEADERS
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <iterator>
#include <type_traits>
#include <utility>

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

constexpr size_t kMostInNode = 16;

template<class Point> constexpr size_t kDimension = std::is_same_v<Point, ZnGePoint3d> ? 3 : 2;
template<class Point> using Place = bg::model::point<double, kDimension<Point>, bg::cs::cartesian>;
template<class Point> using Extent = bg::model::box<Place<Point>>;
template<class Point> using Entry = std::pair<Extent<Point>, int>;

template<class Point> Place<Point> placeOf(const Point& point) {
  if constexpr (kDimension<Point> == 3)
    return {point.x, point.y, point.z};
  else
    return {point.x, point.y};
}

template<class Point> Point pointOf(const Place<Point>& place) {
  if constexpr (kDimension<Point> == 3)
    return {place.template get<0>(), place.template get<1>(), place.template get<2>()};
  else
    return {place.template get<0>(), place.template get<1>()};
}

template<class Point> Extent<Point> extentOf(const typename ZnGePlaceIndex<Point>::Box& box) {
  return {placeOf(box.lower), placeOf(box.upper)};
}

// The point of the box that lies nearest.
template<class Point> Point clamped(Point point, const Extent<Point>& extent) {
  const Point lower = pointOf<Point>(extent.min_corner()), upper = pointOf<Point>(extent.max_corner());
  point.x = std::clamp(point.x, lower.x, upper.x);
  point.y = std::clamp(point.y, lower.y, upper.y);
  if constexpr (kDimension<Point> == 3) point.z = std::clamp(point.z, lower.z, upper.z);
  return point;
}

template<class Entries> std::vector<int> itemsOf(const Entries& entries) {
  std::vector<int> items;
  items.reserve(entries.size());
  for (const auto& entry : entries) items.push_back(entry.second);
  std::sort(items.begin(), items.end());
  return items;
}

} // namespace

template<class Point> struct ZnGePlaceIndex<Point>::Tree {
  bgi::rtree<Entry<Point>, bgi::quadratic<kMostInNode>> entries;
};

template<class Point>
ZnGePlaceIndex<Point>::ZnGePlaceIndex()
    : tree_(std::make_unique<Tree>()) {}

template<class Point>
ZnGePlaceIndex<Point>::ZnGePlaceIndex(const std::vector<Point>& points)
    : ZnGePlaceIndex() {
  std::vector<Entry<Point>> entries;
  entries.reserve(points.size());
  for (const Point& point : points)
    entries.emplace_back(Extent<Point>(placeOf(point), placeOf(point)), static_cast<int>(entries.size()));
  tree_->entries = decltype(tree_->entries)(entries); // packed, which is far quicker than one by one
}

template<class Point>
ZnGePlaceIndex<Point>::ZnGePlaceIndex(const std::vector<Box>& boxes)
    : ZnGePlaceIndex() {
  std::vector<Entry<Point>> entries;
  entries.reserve(boxes.size());
  for (const Box& box : boxes) entries.emplace_back(extentOf<Point>(box), static_cast<int>(entries.size()));
  tree_->entries = decltype(tree_->entries)(entries);
}

template<class Point> ZnGePlaceIndex<Point>::~ZnGePlaceIndex() = default;
template<class Point> ZnGePlaceIndex<Point>::ZnGePlaceIndex(ZnGePlaceIndex&&) noexcept = default;
template<class Point>
ZnGePlaceIndex<Point>& ZnGePlaceIndex<Point>::operator=(ZnGePlaceIndex&&) noexcept = default;

template<class Point> size_t ZnGePlaceIndex<Point>::size() const { return tree_->entries.size(); }

template<class Point> typename ZnGePlaceIndex<Point>::Box ZnGePlaceIndex<Point>::bounds() const {
  if (tree_->entries.empty()) return {};
  const auto bounds = tree_->entries.bounds();
  return {pointOf<Point>(bounds.min_corner()), pointOf<Point>(bounds.max_corner())};
}

template<class Point> void ZnGePlaceIndex<Point>::insert(const Box& box, int item) {
  tree_->entries.insert(Entry<Point>(extentOf<Point>(box), item));
}

template<class Point> void ZnGePlaceIndex<Point>::remove(const Box& box, int item) {
  tree_->entries.remove(Entry<Point>(extentOf<Point>(box), item));
}

template<class Point>
std::vector<int> ZnGePlaceIndex<Point>::within(const Point& point, double distance) const {
  Box around{point, point};
  around.lower.x -= distance, around.lower.y -= distance;
  around.upper.x += distance, around.upper.y += distance;
  if constexpr (kDimension<Point> == 3) around.lower.z -= distance, around.upper.z += distance;
  std::vector<Entry<Point>> found;
  tree_->entries.query(bgi::intersects(extentOf<Point>(around)), std::back_inserter(found));
  std::erase_if(found, [&](const Entry<Point>& entry) {
    return clamped(point, entry.first).distanceTo(point) > distance;
  });
  return itemsOf(found);
}

template<class Point> std::vector<int> ZnGePlaceIndex<Point>::meeting(const Box& box) const {
  std::vector<Entry<Point>> found;
  tree_->entries.query(bgi::intersects(extentOf<Point>(box)), std::back_inserter(found));
  return itemsOf(found);
}

template<class Point>
bool ZnGePlaceIndex<Point>::anyMeeting(const Box& box, const std::function<bool(int)>& passes) const {
  return std::any_of(tree_->entries.qbegin(bgi::intersects(extentOf<Point>(box))), tree_->entries.qend(),
                     [&](const Entry<Point>& entry) { return passes(entry.second); });
}

template<class Point> std::vector<int> ZnGePlaceIndex<Point>::nearest(const Point& point, int count) const {
  std::vector<Entry<Point>> found;
  if (count > 0)
    tree_->entries.query(bgi::nearest(placeOf(point), static_cast<unsigned>(count)),
                         std::back_inserter(found));
  return itemsOf(found);
}

template class ZnGePlaceIndex<ZnGePoint2d>;
template class ZnGePlaceIndex<ZnGePoint3d>;
