#include "companion/strips.h"

#include <algorithm>
#include <cmath>

#include "companion/edge_ends.h"
#include "companion/tolerance.h"

namespace companion {

namespace {

ZnGePoint2d flat(const ZnGePoint3d& p) { return {p.x, p.y}; }

// A corner and the way along both sides.
struct Rectangle {
  ZnGePoint3d corner;
  ZnGeVector3d along, across;

  bool holds(const ZnGePoint3d& point, double margin) const {
    const ZnGeVector3d to = point - corner;
    return isWithin(to.dotProduct(along) / along.length(), along.length(), margin) &&
           isWithin(to.dotProduct(across) / across.length(), across.length(), margin);
  }
  static bool isWithin(double at, double length, double margin) {
    return at > margin && at < length - margin;
  }
};

class StripSearch {
public:
  StripSearch(const std::vector<StraightEdge>& straight, const std::vector<RoundEdge>& round,
              const std::vector<ZnGePoint3d>& content)
      : straight_(straight)
      , ends_(straight)
      , places_(placesOf(straight, round, content))
      , index_(flatAll(places_)) {}

  std::vector<Strip> run() const {
    std::vector<Strip> strips;
    for (int i = 0; i < static_cast<int>(straight_.size()); ++i) {
      Strip strip;
      if (stripFrom(i, strip)) strips.push_back(strip);
    }
    return onceEach(strips);
  }

private:
  // Edges drawn twice give one rectangle several times.
  static std::vector<Strip> onceEach(const std::vector<Strip>& strips) {
    std::vector<ZnGePoint2d> middles;
    for (const Strip& strip : strips) middles.push_back(flat(strip.middle));
    const ZnGePlaceIndex2d index(middles);
    std::vector<bool> isRepeated(strips.size(), false);
    std::vector<Strip> kept;
    for (size_t i = 0; i < strips.size(); ++i) {
      if (isRepeated[i]) continue;
      kept.push_back(strips[i]);
      const double reach = strips[i].length * kStripJoinShare;
      for (const int near : index.within(middles[i], reach)) {
        const Strip& other = strips[static_cast<size_t>(near)];
        if (std::fabs(other.length - strips[i].length) <= reach &&
            std::fabs(other.width - strips[i].width) <= reach)
          isRepeated[static_cast<size_t>(near)] = true;
      }
    }
    return kept;
  }

  static std::vector<ZnGePoint3d> placesOf(const std::vector<StraightEdge>& straight,
                                           const std::vector<RoundEdge>& round,
                                           const std::vector<ZnGePoint3d>& content) {
    std::vector<ZnGePoint3d> places = content;
    for (const StraightEdge& edge : straight) {
      places.push_back(edge.line.startPoint());
      places.push_back(edge.line.endPoint());
    }
    for (const RoundEdge& edge : round) {
      places.push_back(edge.curve.center());
      places.push_back(edge.curve.startPoint());
    }
    return places;
  }
  static std::vector<ZnGePoint2d> flatAll(const std::vector<ZnGePoint3d>& places) {
    std::vector<ZnGePoint2d> flats;
    for (const ZnGePoint3d& place : places) flats.push_back(flat(place));
    return flats;
  }

  // Edges that leave the place at a right angle to the way and are short against it.
  std::vector<EdgeFromEnd> shortSidesAt(const ZnGePoint3d& place, const ZnGeVector3d& way) const {
    std::vector<EdgeFromEnd> sides = ends_.at(place, way.length() * kStripJoinShare);
    std::erase_if(sides, [&](const EdgeFromEnd& side) {
      return std::fabs(side.way().normal().dotProduct(way.normal())) > kParallelSideSine ||
             side.way().length() * kLeastStripRatio >= way.length();
    });
    return sides;
  }

  bool isBare(const Rectangle& rectangle) const {
    const ZnGePoint3d a = rectangle.corner, b = a + rectangle.along, c = b + rectangle.across,
                      d = a + rectangle.across;
    const ZnGePoint2d lower(std::min({a.x, b.x, c.x, d.x}), std::min({a.y, b.y, c.y, d.y}));
    const ZnGePoint2d upper(std::max({a.x, b.x, c.x, d.x}), std::max({a.y, b.y, c.y, d.y}));
    const double margin = rectangle.across.length() * kSlotJoinShare;
    return !index_.anyMeeting({lower, upper}, [&](int place) {
      return rectangle.holds(places_[static_cast<size_t>(place)], margin);
    });
  }

  // Each rectangle is met from both of its long sides; the first one counts.
  bool stripFrom(int number, Strip& strip) const {
    const ZnGeLineSeg3d& side = straight_[static_cast<size_t>(number)].line;
    const ZnGeVector3d way = side.span();
    const double reach = way.length() * kStripJoinShare;
    for (const EdgeFromEnd& one : shortSidesAt(side.startPoint(), way))
      for (const EdgeFromEnd& other : shortSidesAt(side.endPoint(), way)) {
        if ((one.way() - other.way()).length() > 2.0 * reach) continue;
        for (const EdgeFromEnd& opposite : ends_.at(one.there, reach)) {
          if (opposite.edge <= number || opposite.there.distanceTo(other.there) > reach) continue;
          if (!isBare({side.startPoint(), way, one.way()})) return false;
          strip = {{number, opposite.edge},
                   way.length(),
                   one.way().length(),
                   side.startPoint() + (way + one.way()) * 0.5};
          return true;
        }
      }
    return false;
  }

  const std::vector<StraightEdge>& straight_;
  EdgeEnds ends_;
  std::vector<ZnGePoint3d> places_;
  ZnGePlaceIndex2d index_;
};

} // namespace

std::vector<Strip> findStrips(const std::vector<StraightEdge>& straight, const std::vector<RoundEdge>& round,
                              const std::vector<ZnGePoint3d>& content) {
  return StripSearch(straight, round, content).run();
}

} // namespace companion
