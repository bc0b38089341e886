// The votes of a pattern's analysis done the plain way: every arc and line is made, every vote is counted in
// an ordered map. What the module does faster has to come to the same, to the last bit.
#pragma once

#include <algorithm>
#include <map>
#include <numbers>
#include <utility>

#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

namespace plain {

using Centers = ZnArray<ZnGePoint2d>;

inline double rounded(double value, double step) { return std::round(value / step) * step; }

inline int voters(const Centers& centers, int fixed, int from) {
  return fixed < from ? centers.length() : std::min(fixed, centers.length());
}

inline double mostVoted(const std::map<double, int>& votes, double last) {
  const auto atLast = votes.find(last);
  double winner = atLast == votes.end() ? 0.0 : last;
  int most = atLast == votes.end() ? 0 : atLast->second;
  for (const auto& [value, count] : votes)
    if (count > most) {
      most = count;
      winner = value;
    }
  return winner;
}

inline bool isFlat(const ZnGeCircArc2d& arc, const ZnGePoint2d& middle) {
  const double t = arc.paramOf(middle), e = arc.endAng(), full = 2.0 * std::numbers::pi;
  const double rest = full - std::max(std::max(std::max(t, e - t), full - e), 0.0);
  return rest > -std::numbers::pi / 12.0 && rest < std::numbers::pi / 12.0;
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
        const ZnGePoint2d center(rounded(arc.center().x, step), rounded(arc.center().y, step));
        const int count = ++votes[{center.x, center.y}];
        if (count < best || (count == best && fixed != 0 && arc.radius() >= bestRadius)) continue;
        winner = center;
        if (count > limit) return true;
        best = count;
        bestRadius = arc.radius();
      }
  return best >= 1;
}

inline bool pitchRadius(const Centers& centers, int fixed, const ZnGeTol& tol, const ZnGePoint2d& from,
                        double& radius) {
  std::map<double, int> votes;
  int best = 0;
  for (int i = voters(centers, fixed, 1) - 1; i >= 0; --i) {
    const double distance = rounded(from.distanceTo(centers[i]), tol.equalPoint() * 0.5);
    if (distance == 0.0 || ++votes[distance] < best) continue;
    best = votes[distance];
    radius = distance;
  }
  return best >= 1;
}

inline double direction(const Centers& centers, int fixed, const ZnGeTol& tol, int& values) {
  const double pi = std::numbers::pi, step = tol.equalPoint() * 0.001;
  std::map<double, int> votes;
  double last = 0.0;
  for (int i = voters(centers, fixed, 2) - 1; i >= 1; --i)
    for (int j = fixed == 1 ? 0 : i - 1; j >= 0; --j) {
      const ZnGeLine2d line(centers[i], centers[j]);
      if (line.isDegenerate(tol)) continue;
      double angle = line.direction().angle();
      if (angle >= pi) angle -= pi;
      last = angle - pi > -step && angle - pi < step ? 0.0 : rounded(angle, step);
      ++votes[last];
    }
  values = static_cast<int>(votes.size());
  return mostVoted(votes, last);
}

inline ZnGePoint2d linePoint(const Centers& centers, int fixed, const ZnGeTol& tol,
                             const ZnGeVector2d& along) {
  const ZnGeLine2d xAxis(ZnGePoint2d(), ZnGeVector2d::kXAxis), yAxis(ZnGePoint2d(), ZnGeVector2d::kYAxis);
  std::map<double, int> onX, onY;
  double lastX = 0.0, lastY = 0.0;
  for (int i = voters(centers, fixed, 1) - 1; i >= 0; --i) {
    const ZnGeLine2d line(centers[i], along);
    ZnGePoint2d at;
    if (line.isParallelTo(yAxis, tol)) {
      line.intersectWith(xAxis, at);
      ++onX[lastX = rounded(at.x, tol.equalPoint() * 0.5)];
    } else {
      line.intersectWith(yAxis, at);
      ++onY[lastY = rounded(at.y, tol.equalPoint() * 0.5)];
    }
  }
  const ZnGePoint2d q(mostVoted(onX, lastX), mostVoted(onY, lastY));
  return ZnGeLine2d(ZnGePoint2d(), along).isParallelTo(yAxis, tol) ? ZnGePoint2d(q.x, 0.0)
                                                                   : ZnGePoint2d(0.0, q.y);
}

} // namespace plain
