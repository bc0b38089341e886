#include "companion/pattern_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <sstream>

#include "support/told_cases.h"

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

// "ring 6 20" has holes at six places but for those that are named behind, "grid 4 3 10 12" columns, rows and
// steps, its start and how much every second row is shifted; "at" gives places. "bore" is a circle around
// which a ring may lie, "rim" an arc of so many degrees; "box" an outline. "radii" makes holes differ,
// "rounded" their places.
Sheet sheetOf(const std::string& text) {
  Sheet sheet;
  std::istringstream items(text);
  for (std::string item; std::getline(items, item, ';');) {
    std::istringstream words(item);
    std::string kind;
    words >> kind;
    std::vector<double> n;
    for (double number; words >> number;) n.push_back(number);
    const std::vector<int> rest(n.begin() + static_cast<std::ptrdiff_t>(std::min<size_t>(n.size(), 2)),
                                n.end());
    n.resize(std::max<size_t>(n.size(), 7));
    if (kind == "ring") sheet.holes = both(sheet.holes, ring(static_cast<int>(n[0]), n[1], {}, rest));
    if (kind == "grid")
      sheet.holes = both(
          sheet.holes, grid(static_cast<int>(n[0]), static_cast<int>(n[1]), n[2], n[3], {n[4], n[5]}, n[6]));
    for (size_t i = 0; kind == "at" && i < rest.size() + 2; i += 2) sheet.holes.push_back({n[i], n[i + 1]});
    if (kind == "box") sheet.outlines.push_back(box(n[0], n[1], n[2], n[3]));
    if (kind == "bore") sheet.witnesses.push_back(bore(n[0], {n[1], n[2]}));
    if (kind == "rim") sheet.witnesses.push_back({{0, 0}, n[0], n[1] / 180 * kPi, 1});
    if (kind == "radii")
      sheet.radii.assign(n.begin(), n.begin() + static_cast<std::ptrdiff_t>(rest.size() + 2));
    for (size_t i = 0; kind == "rounded" && i < sheet.holes.size(); ++i)
      sheet.holes[i] += ZnGeVector2d(0.004 * (i % 3), -0.004 * (i % 2));
  }
  return sheet;
}

TEST(PatternSearch, SeesWhatAPersonWouldSee) {
  runToldCases(
      "companion/pattern_sheets.txt", 33, [](const std::string&, const std::string& input, const Lines&) {
        const Sheet sheet = sheetOf(input);
        const std::string found = summary(sheet, ZnGeMatrix3d::kIdentity);
        EXPECT_EQ(summary(sheet, ZnGeMatrix3d::translation({1234.5, -77.25, 0})), found) << input;
        // A turned sheet has no axes, which only frames and rows of three care for.
        if (found.find("-3") == std::string::npos)
          EXPECT_EQ(summary(sheet, ZnGeMatrix3d::rotation(0.4, ZnGeVector3d::kZAxis, {3, 4, 0})), found)
              << input;
        return found.empty() ? Lines() : Lines{found};
      });
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
