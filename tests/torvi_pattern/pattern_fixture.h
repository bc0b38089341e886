// A drawing with holes in rings and rows, in model space or in a block that a reference shows, and with
// patterns over them that are asked what they show.
#pragma once

#include <cctype>
#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "support/drawing_fixture.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/pattern/builder.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/object_wrapper.h"

struct Hole {
  double x = 0.0, y = 0.0, radius = 1.0;
  double span = 0.0; // radians, from 0 on; 0 for a closed circle
};

struct Wish {
  CenterMarkPatternType type = kCenterPatternNone;
  bool full = false, show = false;
  ZnDbEdgeRef reference = {};
};

class PatternTest : public DrawingTest {
protected:
  using Body = ZnDbCenterMarkPatternActionBody;
  using Wrapper = ZnDbCenterMarkPatternObjectWrapper;
  using Holes = std::vector<Hole>;
  using Ids = std::vector<ZnDbObjectId>;
  using Drawn = std::vector<std::string>;
  static constexpr auto kNone = kCenterPatternNone, kRing = kCenterPatternPolar, kRow = kCenterPatternLinear;
  static constexpr double kDegree = ZnGe::kPi / 180.0;

  // Holes over an arc about a point, from an angle on, in degrees.
  static Holes onArc(const ZnGePoint2d& center, double radius, double from, double step, int count,
                     double holeRadius = 1.0) {
    Holes holes;
    for (int i = 0; i < count; ++i) {
      const ZnGeVector2d out = ZnGeVector2d(radius, 0.0).rotateBy((from + i * step) * kDegree);
      holes.push_back({center.x + out.x, center.y + out.y, holeRadius});
    }
    return holes;
  }
  static Holes with(Holes holes, const Holes& more) {
    holes.insert(holes.end(), more.begin(), more.end());
    return holes;
  }
  static ZnGePoint3d at(double radius, double degrees) {
    const Hole hole = onArc({0, 0}, radius, degrees, 0, 1)[0];
    return {hole.x, hole.y, 0.0};
  }
  // The first of so many that would close a ring about the origin.
  static Holes ring(int count, int ofAll, double ringRadius = 10.0, double radius = 1.0) {
    return onArc({0, 0}, ringRadius, 0.0, 360.0 / ofAll, count, radius);
  }
  static Holes row(int count, double y = 0.0) {
    Holes holes;
    for (int i = 0; i < count; ++i) holes.push_back({5.0 * i, y});
    return holes;
  }

  using DrawingTest::add;
  ZnDbObjectId add(const Hole& hole, ZnDbObjectId space = {}) {
    const ZnGePoint3d center(hole.x, hole.y, 0.0);
    if (hole.span == 0.0) return add(new ZnDbCircle(center, ZnGeVector3d::kZAxis, hole.radius), space);
    return add(new ZnDbArc(center, hole.radius, 0.0, hole.span), space);
  }
  Ids addHoles(const Holes& holes) {
    Ids ids;
    for (const Hole& hole : holes) ids.push_back(add(hole));
    return ids;
  }
  static ZnArray<ZnDbEdgeRef> edgesOf(const Ids& holes) {
    ZnArray<ZnDbEdgeRef> edges;
    for (const ZnDbObjectId hole : holes) edges.append(edgeOf(hole));
    return edges;
  }
  ZnArray<ZnDbEdgeRef> edgesOf(const Holes& holes) { return edgesOf(addHoles(holes)); }
  // The same holes in a block of their own, seen through a reference; the result is in the holes' order.
  ZnArray<ZnDbEdgeRef> nestedEdges(const Holes& holes, const ZnGeMatrix3d& place = ZnGeMatrix3d::kIdentity) {
    block_ = addEmptyBlock();
    reference_ = addReference(block_, place);
    ZnArray<ZnDbEdgeRef> edges;
    for (const Hole& hole : holes) edges.append(edgeAlong({reference_, add(hole, block_)}));
    return edges;
  }

  static void setAuto(int value) {
    ZnString error;
    const resbuf buffer = resbuf::ofShort(static_cast<std::int16_t>(value));
    EXPECT_EQ(ZnRxVariablesDictionary::get()->set(L"CENTERMARKPATTERNAUTO", buffer, error), Quorl::eOk);
  }
  void TearDown() override {
    setAuto(0);
    setHostDocumentKind(false);
    DrawingTest::TearDown();
  }
  ZnDbObjectId create(const ZnCenterMarkPatternBuilder& builder) {
    ZnDbObjectId id;
    EXPECT_EQ(builder.createTorvi(id), Quorl::eOk);
    EXPECT_EQ(statusOf(id), kIsUpToDateAssocStatus);
    return id;
  }
  ZnDbObjectId addPattern(const ZnArray<ZnDbEdgeRef>& edges, const Wish& wish) {
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createCenterMarkPattern(edges, id, wish.type, wish.reference, wish.full,
                                                       wish.show, nullptr),
              Quorl::eOk);
    return id;
  }
  ZnDbObjectId addPattern(const Ids& holes, const Wish& wish = Wish()) {
    return addPattern(edgesOf(holes), wish);
  }
  // The key of the pattern's center line, which names its members in order.
  static std::string centerLine(ZnDbObjectId id) {
    ZnArray<ZnString> keys;
    EXPECT_EQ(Wrapper(id).getCenterLineDependencyKeys(keys), Quorl::eOk);
    return keys.length() == 1 ? keys.first().utf8() : std::string();
  }
  static void transform(ZnDbObjectId id, const ZnGeMatrix3d& map) {
    change<ZnDbEntity>(id, [&](ZnDbEntity& entity) { EXPECT_EQ(entity.transformBy(map), Quorl::eOk); });
  }
  void moveHole(ZnDbObjectId hole, double x, double y) {
    change<ZnDbCircle>(hole, [&](ZnDbCircle& circle) { circle.setCenter({x, y, 0.0}); });
    evaluateChanges();
  }
  template<class Ask> static void ask(ZnDbObjectId pattern, Ask&& question) {
    DrawingTest::ask<Body>(pattern, question);
  }

  // What is drawn under a key, in the coordinates of the pattern's space: kind and ends of each entity that
  // is seen, "hidden" for the others; nothing for an output that is gone.
  static Drawn drawn(ZnDbObjectId pattern, const std::string& key) {
    const Wrapper wrapper(pattern);
    const ZnDbObjectId output = wrapper.getOutputEdge(ZnString::fromUtf8(key));
    ZnArray<ZnDbObjectId> ids;
    if (output.isNull() || output.isErased()) return {};
    if (!output.isDerivedFrom(ZnDbBlockReference::desc()))
      ids.append(output);
    else
      EXPECT_EQ(ZnTorviLyxUtils::getEntitesIdsFromBlkRef(output, ids, false), Quorl::eOk);
    Drawn texts;
    for (const ZnDbObjectId id : ids) {
      ZnDbHolder<ZnDbCurve> curve(id);
      const bool isSeen = curve.isOpen() && curve->visibility() != ZnDb::kInvisible;
      texts.push_back(isSeen ? textOf(*curve, wrapper.blockTransform()) : "hidden");
    }
    return texts;
  }
  using Drawing = std::map<std::string, Drawn>; // by key
  static Drawing drawing(ZnDbObjectId pattern) {
    ZnArray<ZnString> keys;
    Wrapper(pattern).getOutputEdgeKeys(keys);
    Drawing all;
    for (const ZnString& key : keys)
      if (Drawn texts = drawn(pattern, key.utf8()); !texts.empty()) all[key.utf8()] = texts;
    return all;
  }
  static std::string keysOf(ZnDbObjectId pattern) {
    std::string text;
    for (const auto& row : drawing(pattern)) text += (text.empty() ? "" : " ") + row.first;
    return text;
  }
  // As if it had been made over the holes that are there, which keep their numbers.
  void expectAsIfMadeNow(ZnDbObjectId pattern, const Ids& holes, const Wish& wish) {
    Ids present;
    std::vector<size_t> numbers;
    for (size_t i = 0; i < holes.size(); ++i) {
      if (holes[i].isErased()) continue;
      numbers.push_back(i);
      present.push_back(holes[i]);
    }
    const ZnDbObjectId fresh = addPattern(present, wish);
    const auto renumber = [&](char c) { return std::to_string(numbers.at(static_cast<size_t>(c - '0'))); };
    Drawing made;
    for (const auto& [key, texts] : drawing(fresh)) {
      std::string renumbered;
      for (const char c : key) renumbered += std::isdigit(c) ? renumber(c) : std::string(1, c);
      made[renumbered] = texts;
    }
    EXPECT_GT(made.size(), 2u);
    EXPECT_EQ(drawing(pattern), made);
    // Outputs are compared by their keys: their order in the block is that of their history.
    EXPECT_TRUE(Wrapper(pattern).doesActionMatchCurrentGeometry());
    erase(fresh);
    EXPECT_EQ(statusOf(pattern), kIsUpToDateAssocStatus);
  }

  ZnDbObjectId block_, reference_;

  static std::string textOf(const ZnGeCurve3d& curve, const ZnGeMatrix3d& toSpace = {}) {
    const auto plain = [](double value) { return std::round(value * 1e4) / 1e4 + 0.0; };
    const ZnGePoint3d start = toSpace * curve.evalPoint(curve.interval().lowerBound());
    const ZnGePoint3d end = toSpace * curve.evalPoint(curve.interval().upperBound());
    char text[160];
    std::snprintf(text, sizeof text, "%s %g,%g %g,%g", curve.isKindOf(ZnGe::kCircularArc3d) ? "arc" : "line",
                  plain(start.x), plain(start.y), plain(end.x), plain(end.y));
    return text;
  }
  static std::string textOf(const ZnDbCurve& entity, const ZnGeMatrix3d& toSpace = {}) {
    ZnGeCurve3d* made = nullptr;
    EXPECT_EQ(entity.getZnGeCurve(made, ZnGeContext::gTol), Quorl::eOk);
    return textOf(*std::unique_ptr<ZnGeCurve3d>(made), toSpace);
  }
};
