// The line between crossing edges at every size and in every place, against the same worked out with a
// hundred digits from the doubles that came in.
#include <gtest/gtest.h>

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <random>

#include "torvi/centerline/geometry_handler_manager.h"

namespace {

using Number = boost::multiprecision::cpp_bin_float_100;
using P3 = ZnGePoint3d;

struct Exact {
  Number x, y, z;
  Exact operator+(const Exact& v) const { return {x + v.x, y + v.y, z + v.z}; }
  Exact operator-(const Exact& v) const { return {x - v.x, y - v.y, z - v.z}; }
  Exact operator*(const Number& f) const { return {x * f, y * f, z * f}; }
  Number dot(const Exact& v) const { return x * v.x + y * v.y + z * v.z; }
  Exact cross(const Exact& v) const { return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x}; }
  Number length() const { return sqrt(dot(*this)); }
};

Exact exact(const P3& p) { return {p.x, p.y, p.z}; }

// Parameters along a from p and along b from q at which the lines pass each other.
void passing(const Exact& p, const Exact& a, const Exact& q, const Exact& b, Number& onA, Number& onB) {
  const Exact n = a.cross(b), w = q - p;
  onA = w.cross(b).dot(n) / n.dot(n);
  onB = w.cross(a).dot(n) / n.dot(n);
}

// Two edges, and for each whether its ray is meant to run along it.
struct Pair {
  ZnGeLineSeg3d edges[2];
  ZnDbCenterLineGeometryHandler::Endings endings;
  bool along[2];
  double size() const {
    double largest = 0.0;
    for (const ZnGeLineSeg3d& edge : edges)
      for (const P3& p : {edge.startPoint(), edge.endPoint()})
        largest = std::max({largest, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
    return largest;
  }
};

// The piece of the bisector between the chords of the ends, by its definition.
void exactLine(const Pair& pair, Exact (&line)[2]) {
  Exact start[2], span[2], ray[2], ends[2][2];
  for (int i = 0; i < 2; ++i) {
    start[i] = exact(pair.edges[i].startPoint());
    span[i] = exact(pair.edges[i].endPoint()) - start[i];
    ray[i] = span[i] * (Number(pair.along[i] ? 1 : -1) / span[i].length());
    ends[pair.along[i] ? 0 : 1][i] = start[i];
    ends[pair.along[i] ? 1 : 0][i] = start[i] + span[i];
  }
  Number t, u;
  passing(start[0], span[0], start[1], span[1], t, u);
  const Exact meeting = (start[0] + span[0] * t + start[1] + span[1] * u) * Number(0.5);
  for (int i = 0; i < 2; ++i) {
    line[i] = meeting;
    const Exact chord = ends[i][1] - ends[i][0];
    if (chord.length() <= 1e-10) continue;
    passing(meeting, ray[0] + ray[1], ends[i][0], chord, t, u);
    if (u >= 0 && u <= 1) line[i] = ends[i][0] + chord * u;
  }
}

// The largest way between the ends of the chain's line and the exact one, as a share of the size. No line
// is right when the exact one is a point.
double errorOf(const Pair& pair) {
  Exact wanted[2];
  exactLine(pair, wanted);
  ZnGeLineSeg3d* out = nullptr;
  ZnDbCenterLineGeometryHandlerManager::generateCenterLine({&pair.edges[0], &pair.edges[1]}, pair.endings,
                                                           out);
  const std::unique_ptr<ZnGeLineSeg3d> line(out);
  if (!line) return static_cast<double>((wanted[1] - wanted[0]).length() - 1e-10) / pair.size();
  const Number start = (exact(line->startPoint()) - wanted[0]).length();
  const Number end = (exact(line->endPoint()) - wanted[1]).length();
  return static_cast<double>(start > end ? start : end) / pair.size();
}

class Pairs {
public:
  // Edges 1e-3 to 1e7 long, up to 1e8 from the origin, in a coordinate plane or any: crossing, ending on each
  // other, with a corner or a short piece beyond the crossing, down to slopes of 3e-8 where the coordinates
  // have the digits for them.
  Pair next() {
    for (;;) {
      const double length = power(-3, 7), away = chance(0.3) ? 0.0 : power(-3, 8);
      const double rounding = 0x1p-52 * (away + 100 * length);
      const double slopes[] = {3e-8, 1e-7, 1e-5, 1e-2};
      const double angle =
          chance(0.5) ? number(0.02, 3.1) : slopes[index(4)] + (chance(0.5) ? std::numbers::pi - 1e-7 : 0.0);
      if (std::fabs(std::sin(angle)) * length < 1e4 * rounding) continue;
      return pairAt(length, away, angle, chance(0.5));
    }
  }

private:
  double number(double low, double high) { return std::uniform_real_distribution<>(low, high)(random_); }
  double power(double low, double high) { return std::pow(10.0, number(low, high)); }
  bool chance(double share) { return number(0, 1) < share; }
  int index(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }

  // Where an edge begins and ends along its ray's line, which starts at the meeting point.
  void stretch(double length, double least, double& from, double& to) {
    const double pieces[] = {0.0, -1e-6, -1e-5, -0.4 * length, -30 * length, 0.7 * length, 20 * length};
    from = pieces[index(7)];
    if (from != 0.0 && std::fabs(from) < least) from = 0.0;
    to = from + length * number(0.5, 2.0);
    if (std::fabs(to) < least) to = from + 3 * length;
  }

  Pair pairAt(double length, double away, double angle, bool tilted) {
    const double flat = tilted ? 1.0 : 0.0;
    const ZnGeMatrix3d place =
        ZnGeMatrix3d::translation({number(-away, away), number(-away, away), flat * number(-away, away)}) *
        ZnGeMatrix3d::rotation(number(0, 6), {flat * number(-1, 1), flat * number(-1, 1), 1.0});
    // Shorter pieces than this are lost in the rounding of the coordinates.
    const double least = 1e3 * 0x1p-52 * (away + 100 * length) / std::fabs(std::sin(angle));
    Pair pair;
    for (int i = 0; i < 2; ++i) {
      double from, to;
      stretch(length, least, from, to);
      const ZnGeVector3d ray =
          i == 0 ? ZnGeVector3d(1, 0, 0) : ZnGeVector3d(std::cos(angle), std::sin(angle), 0);
      pair.edges[i] = {place * (P3() + ray * from), place * (P3() + ray * to)};
      const bool toFar = from == 0.0 || chance(0.5);
      pair.along[i] = (toFar ? to : from) > 0.0;
      pair.endings.append(from == 0.0 && chance(0.5) ? 0 : (toFar ? 1 : 0));
      if (chance(0.5)) continue;
      pair.edges[i].reverseParam();
      pair.along[i] = !pair.along[i];
      pair.endings[i] = 1 - pair.endings[i];
    }
    return pair;
  }

  std::mt19937_64 random_{20};
};

// More are asked for by hand, with their number in CASES.
TEST(CenterLineSizes, CrossingEdgesGiveTheExactLine) {
  const char* asked = std::getenv("CASES");
  const int cases = asked ? std::atoi(asked) : 1000;
  Pairs pairs;
  for (int i = 0; i < cases; ++i) {
    const Pair pair = pairs.next();
    EXPECT_LE(errorOf(pair), 1e-9) << "case " << i;
  }
  EXPECT_GT(cases, 0);
}

} // namespace
