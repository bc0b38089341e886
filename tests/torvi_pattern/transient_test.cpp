#include <map>
#include <memory>
#include <optional>

#include "torvi/pattern/transient_layout.h"
#include "torvi_pattern/builder_fixture.h"

namespace {

constexpr auto kPolar = kCenterPatternPolar;
constexpr auto kLinear = kCenterPatternLinear;
using Layout = ZnDbCenterMarkPatternTransientLayout;
using Keys = std::set<std::string>;

class PatternPreview : public PatternBuilderTest {
protected:
  struct Shown {
    Quorl::ErrorStatus status = Quorl::eOk;
    std::map<std::string, std::vector<std::shared_ptr<ZnGeCurve3d>>> byKey;
    Keys pieces() const { // keys of two members
      Keys keys;
      for (const auto& [key, curves] : byKey)
        if (key.find('-') != std::string::npos) keys.insert(key);
      return keys;
    }
    template<class Curve> const Curve& piece(const char* key) const {
      return static_cast<const Curve&>(*byKey.at(key).front());
    }
  };
  static Shown show(Layout&& layout, const ZnArray<ZnDbEdgeRef>& edges, std::optional<ZnGePoint3d> cursor) {
    Shown shown;
    ZnArray<ZnGeCurve3d*> curves;
    ZnArray<ZnString> keys;
    shown.status = layout.createTransients(edges, cursor ? &*cursor : nullptr, curves, keys);
    EXPECT_EQ(curves.length(), keys.length());
    for (int i = 0; i < curves.length(); ++i) shown.byKey[keys[i].utf8()].emplace_back(curves[i]);
    return shown;
  }
  static Layout layoutOf(CenterMarkPatternType type, bool full = false, const ZnDbEdgeRef& reference = {}) {
    return Layout(type, reference, -1.0, full, false, false);
  }
};

TEST_F(PatternPreview, AGhostLeadsTheCenterLineToTheCursor) {
  struct {
    const char* what;
    Holes holes;
    CenterMarkPatternType type;
    bool full;
    std::optional<ZnGePoint3d> cursor;
    Keys pieces;
  } const rows[] = {
      {"no cursor", row(3), kLinear, false, {}, {"0-1", "1-2"}},
      {"inside a circle", row(3), kLinear, false, ZnGePoint3d(5.4, 0.3, 0.0), {"0-1", "1-2"}},
      {"between members", row(3), kLinear, false, ZnGePoint3d(7.0, 0.0, 0.0), {"0-1", "1-2"}},
      {"beyond the end", row(3), kLinear, false, ZnGePoint3d(17.0, 2.0, 0.0), {"0-1", "1-2", "2-3"}},
      {"before the start", row(3), kLinear, false, ZnGePoint3d(-8.0, -3.0, 0.0), {"0-3", "0-1", "1-2"}},
      {"after one circle", row(1), kLinear, false, ZnGePoint3d(0.0, 30.0, 0.0), {"0-1"}},
      {"in the largest gap", ring(4, 8), kPolar, false, at(10.4, 200.0), {"0-1", "1-2", "2-3", "3-4"}},
      {"a closed ring", ring(4, 8), kPolar, true, at(10.4, 200.0), {"0-1", "1-2", "2-3", "0-3"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnArray<ZnDbEdgeRef> edges = edgesOf(row.holes);
    const Shown shown = show(layoutOf(row.type, row.full), edges, row.cursor);
    ASSERT_EQ(shown.status, Quorl::eOk);
    EXPECT_EQ(shown.pieces(), row.pieces);
    // Every hole has its mark, the ghost none, and the whole curve is not shown.
    EXPECT_EQ(shown.byKey.size(), row.holes.size() + row.pieces.size());
    for (int i = 0; i < edges.length(); ++i) EXPECT_EQ(shown.byKey.at(std::to_string(i)).size(), 6u);
  }
}

TEST_F(PatternPreview, ThePieceToTheGhostRunsAlongTheCurve) {
  const Shown linear = show(layoutOf(kLinear), edgesOf(row(3)), ZnGePoint3d(17.0, 2.0, 0.0));
  const auto& line = linear.piece<ZnGeLineSeg3d>("2-3");
  EXPECT_NEAR(line.startPoint().y, 0.0, 1e-9);
  EXPECT_NEAR(line.endPoint().y, 0.0, 1e-9);
  EXPECT_NEAR(line.endPoint().x, 16.5, 0.5) << "where the cross of a member would begin";
  const Shown polar = show(layoutOf(kPolar), edgesOf(ring(4, 8)), at(10.4, 200.0));
  const auto& arc = polar.piece<ZnGeCircArc3d>("3-4");
  EXPECT_TRUE(near(arc.center(), ZnGePoint3d::kOrigin, 1e-4));
  EXPECT_NEAR(arc.radius(), 10.0, 1e-4);
  EXPECT_LT(arc.endPoint().distanceTo(at(10.0, 200.0)), 1.0);
}

// Pieces reckon with the standard overshoot: an object's own moves the ghost.
TEST_F(PatternPreview, AnEditedRowReachesByItsOwnOvershoots) {
  ZnCenterMarkPatternBuilder builder(db_.get());
  builder.setInputEdges(edgesOf(row(3)));
  const ZnDbObjectId id = create(builder);
  ASSERT_EQ(pattern(id).setStartOvershoot(L"CenterLine-0-1-2", 1.25), Quorl::eOk);
  ASSERT_EQ(pattern(id).setEndOvershoot(L"CenterLine-0-1-2", 3.5), Quorl::eOk);
  struct {
    double cursor;
    const char* piece;
    double shift;
  } const rows[] = {{20.0, "2-3", 3.0}, {-10.0, "0-3", -0.75}};
  for (const auto& row : rows) {
    ZnGePoint3d ends[2];
    for (const bool edited : {false, true}) {
      Layout layout = layoutOf(kLinear);
      if (edited) layout.setCenterObject(id);
      const Shown shown = show(std::move(layout), builder.inputEdges(), ZnGePoint3d(row.cursor, 0.0, 0.0));
      const auto& piece = shown.piece<ZnGeLineSeg3d>(row.piece);
      ends[edited] = row.cursor > 0.0 ? piece.endPoint() : piece.startPoint();
    }
    EXPECT_NEAR(ends[1].x - ends[0].x, row.shift, 1e-9) << row.piece;
  }
}

TEST_F(PatternPreview, AnUnresolvedFirstEdgeMakesNoGhost) {
  ZnArray<ZnDbEdgeRef> edges{ZnDbEdgeRef()};
  Holes holes = row(3);
  holes.push_back({7.0, 9.0}); // off the row, and last, where a ghost would stand
  edges.append(edgesOf(holes));
  const Shown shown = show(layoutOf(kLinear), edges, ZnGePoint3d(30.0, 0.0, 0.0));
  ASSERT_EQ(shown.status, Quorl::eOk);
  EXPECT_EQ(shown.pieces(), (Keys{"1-2", "2-3"}));
}

TEST_F(PatternPreview, WhatMakesNoPatternIsRefused) {
  const ZnDbEdgeRef misfit = edgeOf(addLine({0.0, 0.0, 5.0}, {1.0, 0.0, 5.0}));
  EXPECT_EQ(show(layoutOf(kLinear), {misfit}, {}).status, Quorl::eInvalidInput);
  EXPECT_EQ(show(layoutOf(kPolar), edgesOf(row(3)), {}).status, Quorl::eInvalidInput);
  EXPECT_EQ(show(layoutOf(kLinear, false, misfit), edgesOf(row(3)), {}).status, Quorl::eInvalidInput);
}

// Shape, ends and linetype of what is visible.
std::string described(const ZnDbCurve& curve, const ZnGeMatrix3d& toSpace) {
  const auto* arc = ZnDbArc::cast(&curve);
  const auto* line = ZnDbLine::cast(&curve);
  std::string text = arc ? "arc " : "line ";
  for (const ZnGePoint3d& end :
       {arc ? arc->startPoint() : line->startPoint(), arc ? arc->endPoint() : line->endPoint()})
    for (const double x : {(toSpace * end).x, (toSpace * end).y}) text += std::to_string(x + 100.0) + " ";
  return text + curve.linetype().utf8();
}

TEST_F(PatternPreview, ThePreviewIsThePattern) {
  for (const Holes& holes : {row(4), ring(6, 6), ring(3, 8)}) {
    ZnCenterMarkPatternBuilder builder(db_.get());
    builder.setInputEdges(edgesOf(holes));
    ZnArray<ZnDbCurve*> preview;
    ASSERT_EQ(builder.createTorviTransients(nullptr, preview), Quorl::eOk);
    const ZnDbObjectId id = create(builder);
    ZnArray<ZnDbObjectId> ids;
    ASSERT_EQ(pattern(id).getCenterEntitesIds(ids), Quorl::eOk);
    std::multiset<std::string> drawn, shown;
    for (const ZnDbObjectId entityId : ids) {
      ZnDbHolder<ZnDbCurve> curve(entityId);
      if (curve->visibility() == ZnDb::kVisible)
        drawn.insert(described(*curve, pattern(id).blockTransform()));
    }
    for (const ZnDbCurve* curve : preview) {
      shown.insert(described(*curve, ZnGeMatrix3d::kIdentity));
      delete curve;
    }
    EXPECT_EQ(shown, drawn);
    EXPECT_GT(shown.size(), holes.size() * 4);
  }
}

} // namespace
