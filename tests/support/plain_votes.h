// The vote for a pitch center done the plain way: every arc is made, every vote is counted in an ordered map.
// What the module does faster has to come to the same, to the last bit.
#pragma once

#include <algorithm>
#include <map>
#include <numbers>
#include <utility>

#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

namespace plain {

using Centers = ZnArray<ZnGePoint2d>;

inline int voters(const Centers& centers, int fixed, int from) {
  return fixed < from ? centers.length() : std::min(fixed, centers.length());
}

inline bool isFlat(const ZnGeCircArc2d& arc, const ZnGePoint2d& middle) {
  const double t = arc.paramOf(middle), e = arc.endAng(), full = 2.0 * std::numbers::pi;
  const double rest = full - std::max(std::max(std::max(t, e - t), full - e), 0.0);
  return rest > -std::numbers::pi / 12.0 && rest < std::numbers::pi / 12.0;
}

// Which cell is next to a place, as a step along one axis: none unless a border is nearer than a
// sixty-fourth.
inline double nextCell(double at) {
  const double cell = std::round(at);
  return std::fabs(at - cell) > 0.5 - 1.0 / 64.0 ? (at < cell ? -1.0 : 1.0) : 0.0;
}

inline bool pitchCenter(const Centers& centers, int fixed, const ZnGeTol& tol, ZnGePoint2d& winner) {
  const int half = centers.length() / 2, limit = (half - 1) * half * (half + 1) / 6;
  const double least = tol.equalPoint(), step = std::sqrt(2.0) * least * 0.125;
  std::map<std::pair<double, double>, int> votes;
  int best = 0;
  double bestRadius = 0.0;
  for (int i = voters(centers, fixed, 3) - 1; i >= 0; --i)
    for (int j = fixed == 2 ? std::min(1, centers.length() - 1) : i - 1; j >= 0; --j)
      for (int k = fixed == 1 ? 0 : j - 1; k >= 0; --k) {
        const ZnGePoint2d &a = centers[i], &b = centers[j], &c = centers[k];
        if (a.distanceTo(b) < least || b.distanceTo(c) < least || a.distanceTo(c) < least) continue;
        const ZnGeCircArc2d arc(a, b, c);
        if (arc.isDegenerate(tol) || isFlat(arc, b)) continue;
        const double x = arc.center().x / step, y = arc.center().y / step;
        const double nextX = nextCell(x), nextY = nextCell(y);
        for (int up = 0; up <= (nextY != 0.0); ++up)
          for (int along = 0; along <= (nextX != 0.0); ++along) {
            const ZnGePoint2d cell((std::round(x) + along * nextX) * step,
                                   (std::round(y) + up * nextY) * step);
            const int count = ++votes[{cell.x, cell.y}];
            if (count < best || (count == best && fixed != 0 && arc.radius() >= bestRadius - least)) continue;
            winner = cell;
            if (count > limit) return true;
            best = count;
            bestRadius = arc.radius();
          }
      }
  return best >= 1;
}

} // namespace plain
