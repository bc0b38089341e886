#include "companion/pattern_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using namespace companion;
using Places = std::vector<ZnGePoint2d>;

constexpr double kPi = std::numbers::pi;

// A sheet: equal holes, outlines as corner points, and round edges that may witness a ring.
struct Sheet {
  Places holes;
  std::vector<Places> outlines;
  std::vector<RingWitness> witnesses;
  std::vector<double> radii; // of single holes that differ, by position
};

Places ring(int places, double radius, ZnGePoint2d center = {}, std::vector<int> empty = {}) {
  Places holes;
  for (int i = 0; i < places; ++i)
    if (std::find(empty.begin(), empty.end(), i) == empty.end())
      holes.push_back(center +
                      ZnGeVector2d(std::cos(2 * kPi * i / places), std::sin(2 * kPi * i / places)) * radius);
  return holes;
}
Places grid(int columns, int rows, double dx, double dy, ZnGePoint2d start = {}, double stagger = 0.0) {
  Places holes;
  for (int j = 0; j < rows; ++j)
    for (int i = 0; i < columns - (stagger > 0.0 && j % 2 ? 1 : 0); ++i)
      holes.push_back(start + ZnGeVector2d(i * dx + (j % 2) * stagger, j * dy));
  return holes;
}
Places box(double x0, double y0, double x1, double y1) { return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}; }
template<class T> std::vector<T> both(std::vector<T> a, const std::vector<T>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}
RingWitness bore(double radius, ZnGePoint2d center = {}) { return {center, radius, 2 * kPi, 7}; }

// What is found, as a text that does not depend on the order: rings "o12", rows "-5", "~" for a row with an
// empty place, followed by the letter of the evidence.
std::string summary(const Sheet& sheet, const ZnGeMatrix3d& place) {
  const auto placed = [&place](const ZnGePoint2d& p) {
    ZnGePoint3d q(p.x, p.y, 0.0);
    q.transformBy(place);
    return ZnGePoint2d(q.x, q.y);
  };
  std::vector<std::vector<ZnGePoint2d>> chains;
  for (const Places& corners : sheet.outlines) {
    chains.emplace_back();
    for (const ZnGePoint2d& corner : corners) chains.back().push_back(placed(corner));
    chains.back().push_back(chains.back().front());
  }
  const std::vector<Outline> outlines = joinOutlines(chains);
  std::vector<Disc> discs;
  for (const ZnGePoint2d& hole : sheet.holes) discs.push_back({placed(hole), 1.0});
  for (size_t i = 0; i < sheet.radii.size(); ++i) discs[i].radius = sheet.radii[i];
  std::vector<Hole> holes;
  const std::vector<PartOfDisc> parts = partsOf(discs, outlines);
  for (size_t i = 0; i < discs.size(); ++i) holes.push_back({discs[i], parts[i], true, false});
  std::vector<RingWitness> witnesses = sheet.witnesses;
  for (RingWitness& witness : witnesses) witness.center = placed(witness.center);

  std::vector<std::string> texts;
  std::vector<bool> used(holes.size(), false);
  for (const FoundPattern& found : findPatterns({holes, witnesses, outlines})) {
    texts.push_back((found.isRing   ? "o"
                     : found.hasGap ? "~"
                                    : "-") +
                    std::to_string(found.holes.size()) + "c5ms"[static_cast<size_t>(found.evidence)]);
    for (const int i : found.holes) {
      EXPECT_FALSE(used[static_cast<size_t>(i)]) << "a hole in two patterns";
      used[static_cast<size_t>(i)] = true;
      const double off = discs[static_cast<size_t>(i)].center.distanceTo(found.center) - found.pitchRadius;
      if (found.isRing) EXPECT_LE(std::fabs(off), 0.021);
    }
  }
  std::sort(texts.begin(), texts.end());
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : " ") + text;
  return all;
}

struct Case {
  const char* name;
  Sheet sheet;
  const char* found;
};

TEST(PatternSearch, SeesWhatAPersonWouldSee) {
  Places noisy = ring(12, 30);
  for (size_t i = 0; i < noisy.size(); ++i) noisy[i] += ZnGeVector2d(0.004 * (i % 3), -0.004 * (i % 2));
  const Case cases[] = {
      {"three holes lie on some circle", {ring(3, 20), {}, {}, {}}, ""},
      {"three around a bore", {ring(3, 20), {}, {bore(8)}, {}}, "o3c"},
      {"the bore is a hole of the same size", {ring(3, 20), {}, {bore(1)}, {}}, ""},
      {"the rounding of a corner witnesses nothing", {ring(3, 20), {}, {{{0, 0}, 4, kPi / 2, 1}}, {}}, ""},
      {"a rim arc does", {ring(3, 20), {}, {{{0, 0}, 25, kPi / 2, 1}}, {}}, "o3c"},
      {"a rectangle's corners", {grid(2, 2, 50, 30), {box(-9, -9, 59, 39)}, {}, {}}, ""},
      {"a rectangle's corners around a bore", {grid(2, 2, 50, 30), {}, {bore(6, {25, 15})}, {}}, ""},
      {"the same on a drawn pitch circle",
       {grid(2, 2, 40, 30), {}, {bore(6, {20, 15}), bore(25, {20, 15})}, {}},
       "o4c"},
      {"a square's corners around a bore", {grid(2, 2, 40, 40), {}, {bore(6, {20, 20})}, {}}, "o4c"},
      {"four about the middle of the part", {ring(4, 20), {box(-30, -30, 30, 30)}, {}, {}}, "o4m"},
      {"four off the middle of the part", {ring(4, 20), {box(-30, -30, 40, 30)}, {}, {}}, ""},
      {"six holes", {ring(6, 20), {}, {}, {}}, "o65"},
      {"rounded places", {noisy, {}, {}, {}}, "o125"},
      {"eleven of twelve", {ring(12, 30, {}, {4}), {}, {}, {}}, "o115"},
      {"five, unequally spaced",
       {ring(16, 30, {}, {1, 2, 4, 5, 6, 7, 10, 11, 12, 14, 15}), {}, {}, {}},
       "o55"},
      {"a ring and a stray", {both(ring(8, 30), {{3, 5}}), {}, {}, {}}, "o85"},
      {"a ring with a hole in its middle", {both(ring(6, 20), {{0, 0}}), {}, {}, {}}, "o65"},
      {"two rings whose holes stand in rows", {both(ring(8, 20), ring(8, 40)), {}, {bore(8)}, {}}, "o8c o8c"},
      {"a ring of larger holes among smaller", {ring(6, 20), {}, {}, {1, 2, 1, 2, 1, 2}}, ""},
      {"a row", {grid(5, 1, 10, 0), {}, {}, {}}, "-5s"},
      {"a row of two", {grid(2, 1, 10, 0), {}, {}, {}}, ""},
      {"three, with others much nearer",
       {both(grid(3, 1, 40, 0), grid(3, 1, 40, 0, {0, 9})), {}, {}, {}},
       ""},
      {"unequal steps", {{{0, 0}, {10, 0}, {23, 0}}, {}, {}, {}}, ""},
      {"one place empty", {{{0, 0}, {10, 0}, {30, 0}, {40, 0}}, {}, {}, {}}, "~4s"},
      {"four, one place empty, and two",
       {{{0, 0}, {10, 0}, {20, 0}, {30, 0}, {50, 0}, {60, 0}}, {}, {}, {}},
       "~6s"},
      {"three, and one place empty", {{{0, 0}, {10, 0}, {30, 0}}, {}, {}, {}}, ""},
      {"a grid", {grid(4, 3, 10, 12), {}, {}, {}}, "-4s -4s -4s"},
      {"two columns", {grid(2, 9, 10, 10), {}, {}, {}}, "-9s -9s"},
      {"a staggered grid",
       {grid(10, 9, 10, 8.66, {}, 5), {}, {}, {}},
       "-10s -10s -10s -10s -10s -9s -9s -9s -9s"},
      {"a bow is no row",
       {ring(60, 100, {},
             [] {
               std::vector<int> e(50);
               std::iota(e.begin(), e.end(), 4);
               return e;
             }()),
        {},
        {},
        {}},
       ""},
      {"parts on a sheet", {grid(6, 1, 10, 0), {box(-4, -4, 24, 4), box(26, -4, 54, 4)}, {}, {}}, "-3s -3s"},
      {"parts on a framed sheet",
       {grid(6, 1, 10, 0), {box(-4, -4, 24, 4), box(26, -4, 54, 4), box(-20, -20, 80, 20)}, {}, {}},
       "-3s -3s"},
      {"loose discs beside a line", {grid(6, 1, 10, 0), {box(24, -9, 26, 9)}, {}, {}}, "-3s -3s"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(summary(row.sheet, ZnGeMatrix3d::kIdentity), row.found);
    ZnGeMatrix3d elsewhere = ZnGeMatrix3d::translation({1234.5, -77.25, 0});
    EXPECT_EQ(summary(row.sheet, elsewhere), row.found);
    // A turned sheet has no axes, which only frames and rows of three care for.
    const std::string_view found = row.found;
    if (found.find("-3") != std::string_view::npos) continue;
    ZnGeMatrix3d turned;
    turned.setToRotation(0.4, ZnGeVector3d::kZAxis, ZnGePoint3d(3, 4, 0));
    EXPECT_EQ(summary(row.sheet, turned), row.found);
  }
}

// Scattered holes make no patterns: what is found in them is invented.
TEST(PatternSearch, InventsNothing) {
  std::mt19937 random(4711);
  std::uniform_real_distribution<double> place(0.0, 200.0);
  int patterns = 0;
  constexpr int kSheets = 200;
  for (int i = 0; i < kSheets; ++i) {
    Sheet sheet;
    for (int k = 0; k < 25; ++k) sheet.holes.push_back({place(random), place(random)});
    sheet.outlines.push_back(box(-5, -5, 205, 205));
    patterns += !summary(sheet, ZnGeMatrix3d::kIdentity).empty();
  }
  EXPECT_LE(patterns, kSheets / 100);
}

TEST(Outlines, LinesThatMeetEndToEndMakeOne) {
  const Places corners = box(0, 0, 30, 20);
  std::vector<Places> chains;
  for (size_t i = 0; i < 4; ++i) chains.push_back({corners[i], corners[(i + 1) % 4]});
  std::swap(chains[1].front(), chains[1].back()); // drawn the other way
  std::swap(chains[0], chains[2]);
  chains[3].back() += ZnGeVector2d(1e-4, 0); // rounded
  std::vector<Outline> outlines = joinOutlines(chains);
  ASSERT_EQ(outlines.size(), 1u);
  EXPECT_NEAR(outlines[0].area, 600.0, 0.01);
  EXPECT_TRUE(outlines[0].holds({29, 1}));
  EXPECT_FALSE(outlines[0].holds({31, 1}));
  chains.pop_back();
  EXPECT_TRUE(joinOutlines(chains).empty()) << "an open line";
  chains = {
      {corners[0], corners[1]}, {corners[1], corners[2]}, {corners[2], corners[0]}, {corners[1], corners[3]}};
  EXPECT_TRUE(joinOutlines(chains).empty()) << "a junction";
}

} // namespace
