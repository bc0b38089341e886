// A drawing in which patterns are made over holes, step by step as a builder does it, and asked what they
// show.
#pragma once

#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>

#include "support/drawing_fixture.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/object_wrapper.h"

struct Hole {
  double x = 0.0, y = 0.0, radius = 1.0;
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
  Ids addHoles(const Holes& holes) {
    Ids ids;
    for (const Hole& hole : holes) ids.push_back(addCircle({hole.x, hole.y, 0.0}, hole.radius));
    return ids;
  }
  static ZnArray<ZnDbEdgeRef> edgesOf(const Ids& holes) {
    ZnArray<ZnDbEdgeRef> edges;
    for (const ZnDbObjectId hole : holes) edges.append(edgeOf(hole));
    return edges;
  }
  static void addEdge(Body& body, const ZnDbEdgeRef& edge) {
    ZnDbObjectId paramId;
    int index = 0;
    EXPECT_EQ(body.addParam(Body::inputEdgeParamName(), ZnDbAssocEdgeActionParam::desc(), paramId, index),
              Quorl::eOk);
    EXPECT_EQ(body.setEdgeRef(index, edge), Quorl::eOk);
  }
  ZnDbObjectId addPattern(const ZnArray<ZnDbEdgeRef>& edges, const Wish& wish) {
    ZnDbObjectId actionId, bodyId, pattern;
    EXPECT_EQ(ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(
                  Body::desc(), db_->currentSpaceId(), actionId, bodyId),
              Quorl::eOk);
    change<Body>(bodyId, [&](Body& body) {
      for (const ZnDbEdgeRef& edge : edges) addEdge(body, edge);
      body.resetExtensions();
      body.resetOvershoots();
      body.setCenterPatternType(wish.type);
      if (!wish.reference.isEmpty()) EXPECT_EQ(body.setReferenceEdge(wish.reference, -1.0), Quorl::eOk);
      body.setShowCenterMark(wish.show);
      body.setIsFullPCD(wish.full);
      EXPECT_EQ(body.createCenterEntity(db_.get()), Quorl::eOk);
      pattern = body.centerObjectId();
    });
    EXPECT_EQ(ZnTorviLyxUtils::explicitlyEvaluateActionBody(bodyId), Quorl::eOk);
    return pattern;
  }
  ZnDbObjectId addPattern(const Ids& holes, const Wish& wish = Wish()) {
    return addPattern(edgesOf(holes), wish);
  }

  static void transform(ZnDbObjectId id, const ZnGeMatrix3d& map) {
    change<ZnDbEntity>(id, [&](ZnDbEntity& entity) { EXPECT_EQ(entity.transformBy(map), Quorl::eOk); });
  }
  void moveHole(ZnDbObjectId hole, double x, double y) {
    change<ZnDbCircle>(hole, [&](ZnDbCircle& circle) { circle.setCenter({x, y, 0.0}); });
    evaluateChanges();
  }
  template<class Ask> static auto ask(ZnDbObjectId pattern, Ask&& question) {
    ZnDbHolder<Body> body(bodyOf(pattern));
    EXPECT_TRUE(body.isOpen());
    return question(const_cast<const Body&>(*body));
  }
  static ZnDbAssocStatus statusOf(ZnDbObjectId pattern) {
    return ask(pattern, [](const Body& body) { return body.status(); });
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
    for (const ZnDbObjectId id : ids) texts.push_back(textOf(id, wrapper.blockTransform()));
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
    Drawing made;
    for (const auto& [key, texts] : drawing(fresh)) {
      std::string renumbered;
      for (const char c : key)
        renumbered +=
            std::isdigit(c) ? std::to_string(numbers.at(static_cast<size_t>(c - '0'))) : std::string(1, c);
      made[renumbered] = texts;
    }
    EXPECT_GT(made.size(), 2u);
    EXPECT_EQ(drawing(pattern), made);
    erase(fresh);
    EXPECT_EQ(statusOf(pattern), kIsUpToDateAssocStatus);
  }

private:
  static std::string textOf(ZnDbObjectId id, const ZnGeMatrix3d& toSpace) {
    ZnDbHolder<ZnDbCurve> entity(id);
    if (!entity.isOpen() || entity->visibility() == ZnDb::kInvisible) return "hidden";
    ZnGeCurve3d* made = nullptr;
    EXPECT_EQ(entity->getZnGeCurve(made, ZnGeContext::gTol), Quorl::eOk);
    const std::unique_ptr<ZnGeCurve3d> curve(made);
    const auto plain = [](double value) { return std::round(value * 1e4) / 1e4 + 0.0; };
    const ZnGePoint3d start = toSpace * curve->evalPoint(curve->interval().lowerBound());
    const ZnGePoint3d end = toSpace * curve->evalPoint(curve->interval().upperBound());
    char text[160];
    std::snprintf(text, sizeof text, "%s %g,%g %g,%g", ZnDbArc::cast(entity.object()) ? "arc" : "line",
                  plain(start.x), plain(start.y), plain(end.x), plain(end.y));
    return text;
  }
};
