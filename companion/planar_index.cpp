#include "companion/planar_index.h"

#include <algorithm>
// A header that this one leads to warns of its own age; nothing here depends on it.
#define BOOST_ALLOW_DEPRECATED_HEADERS
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <iterator>
#include <utility>

namespace companion {

namespace bgi = boost::geometry::index;

namespace {

using Place = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
using Extent = boost::geometry::model::box<Place>;
using Entry = std::pair<Place, int>;
using BoxEntry = std::pair<Extent, int>;

Place placeOf(const ZnGePoint2d& p) { return Place(p.x, p.y); }

template<class Found> std::vector<int> sorted(const std::vector<Found>& entries) {
  std::vector<int> found;
  for (const Found& entry : entries) found.push_back(entry.second);
  std::sort(found.begin(), found.end());
  return found;
}

} // namespace

struct PlanarIndex::Tree {
  bgi::rtree<Entry, bgi::quadratic<16>> entries;
};

PlanarIndex::PlanarIndex(const std::vector<ZnGePoint2d>& points)
    : tree_(std::make_unique<Tree>()) {
  std::vector<Entry> entries;
  for (size_t i = 0; i < points.size(); ++i) entries.emplace_back(placeOf(points[i]), static_cast<int>(i));
  tree_->entries = decltype(tree_->entries)(entries); // packed, which is far quicker than one by one
}

PlanarIndex::~PlanarIndex() = default;

std::vector<int> PlanarIndex::within(const ZnGePoint2d& point, double distance) const {
  const ZnGeVector2d reach(distance, distance);
  std::vector<Entry> found;
  tree_->entries.query(bgi::intersects(Extent(placeOf(point - reach), placeOf(point + reach))),
                       std::back_inserter(found));
  std::erase_if(found, [&](const Entry& entry) {
    const auto& [place, position] = entry;
    return ZnGePoint2d(place.get<0>(), place.get<1>()).distanceTo(point) > distance;
  });
  return sorted(found);
}

std::vector<int> PlanarIndex::inBox(const ZnGePoint2d& lower, const ZnGePoint2d& upper) const {
  std::vector<Entry> found;
  tree_->entries.query(bgi::intersects(Extent(placeOf(lower), placeOf(upper))), std::back_inserter(found));
  return sorted(found);
}

bool PlanarIndex::anyInBox(const ZnGePoint2d& lower, const ZnGePoint2d& upper,
                           const std::function<bool(int)>& passes) const {
  const auto isInBox = bgi::intersects(Extent(placeOf(lower), placeOf(upper)));
  return std::any_of(tree_->entries.qbegin(isInBox), tree_->entries.qend(),
                     [&](const Entry& entry) { return passes(entry.second); });
}

std::vector<int> PlanarIndex::nearest(const ZnGePoint2d& point, int count) const {
  std::vector<Entry> found;
  if (count > 0)
    tree_->entries.query(bgi::nearest(placeOf(point), static_cast<unsigned>(count)),
                         std::back_inserter(found));
  return sorted(found);
}

struct BoxIndex::Tree {
  bgi::rtree<BoxEntry, bgi::quadratic<16>> entries;
};

BoxIndex::BoxIndex(const std::vector<Box>& boxes)
    : tree_(std::make_unique<Tree>()) {
  std::vector<BoxEntry> entries;
  for (size_t i = 0; i < boxes.size(); ++i)
    entries.emplace_back(Extent(placeOf(boxes[i].lower), placeOf(boxes[i].upper)), static_cast<int>(i));
  tree_->entries = decltype(tree_->entries)(entries);
}

BoxIndex::~BoxIndex() = default;

std::vector<int> BoxIndex::meeting(const Box& box) const {
  std::vector<BoxEntry> found;
  tree_->entries.query(bgi::intersects(Extent(placeOf(box.lower), placeOf(box.upper))),
                       std::back_inserter(found));
  return sorted(found);
}

} // namespace companion
