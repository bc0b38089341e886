#include <optional>

#include "torvi/pattern/transient_layout.h"
#include "torvi/style/set_layer.h"
#include "torvi_pattern/pattern_fixture.h"

namespace {

using Layout = ZnDbCenterMarkPatternTransientLayout;

class PatternPreview : public PatternTest {
protected:
  using Pieces = std::map<std::string, std::string>;
  using Cursor = std::optional<ZnGePoint3d>;

  static Layout layoutOf(CenterMarkPatternType type, bool full = false, const ZnDbEdgeRef& reference = {}) {
    return Layout(type, reference, -1.0, full, false, false);
  }
  // What is shown between members. Every hole has its mark, the ghost none, and the whole curve is not shown.
  static Pieces show(Layout&& layout, const ZnArray<ZnDbEdgeRef>& edges, const Cursor& cursor,
                     Quorl::ErrorStatus wanted = Quorl::eOk) {
    ZnArray<ZnGeCurve3d*> curves;
    ZnArray<ZnString> keys;
    EXPECT_EQ(layout.createTransients(edges, cursor ? &*cursor : nullptr, curves, keys), wanted);
    EXPECT_EQ(curves.length(), keys.length());
    Pieces pieces;
    std::multiset<std::string> marks, holes;
    for (int i = 0; i < curves.length(); ++i) {
      if (keys[i].find(L"-") >= 0)
        pieces[keys[i].utf8()] = textOf(*curves[i]);
      else
        marks.insert(keys[i].utf8());
    }
    for (int i = 0; i < edges.length() && wanted == Quorl::eOk; ++i)
      for (int line = 0; line < 6 && !(edges[i] == ZnDbEdgeRef()); ++line) holes.insert(std::to_string(i));
    EXPECT_EQ(marks, holes);
    ZnDbTorviActionBodyUtils::deleteCurves(curves);
    return pieces;
  }
};

TEST_F(PatternPreview, AGhostLeadsTheCenterLineToTheCursor) {
  const Pieces inRow = {{"0-1", "line 0.2,0 4.8,0"}, {"1-2", "line 5.2,0 9.8,0"}};
  const auto plus = [](Pieces pieces, const char* key, const char* text) {
    pieces[key] = text;
    return pieces;
  };
  // Off the row, and last, where a ghost would stand.
  ZnArray<ZnDbEdgeRef> unresolved = edgesOf(with(row(3), {{7.0, 9.0}})), rowOfThree = edgesOf(row(3));
  unresolved.insertAt(0, ZnDbEdgeRef());
  const ZnArray<ZnDbEdgeRef> half = edgesOf(ring(4, 8));
  const Pieces onRing = show(layoutOf(kRing), half, {});
  ASSERT_EQ(onRing.size(), 3u);
  struct {
    const char* what;
    ZnArray<ZnDbEdgeRef> edges;
    CenterMarkPatternType type;
    bool full;
    Cursor cursor;
    Pieces pieces;
  } const rows[] = {
      {"no cursor", rowOfThree, kRow, false, {}, inRow},
      {"inside a circle", rowOfThree, kRow, false, ZnGePoint3d(5.4, 0.3, 0.0), inRow},
      {"between members", rowOfThree, kRow, false, ZnGePoint3d(7.0, 0.0, 0.0), inRow},
      {"beyond the end", rowOfThree, kRow, false, ZnGePoint3d(17.0, 2.0, 0.0),
       plus(inRow, "2-3", "line 10.2,0 17,0")},
      {"before the start", rowOfThree, kRow, false, ZnGePoint3d(-8.0, -3.0, 0.0),
       plus(inRow, "0-3", "line -8,0 -0.2,0")},
      {"after one circle", edgesOf(row(1)), kRow, false, ZnGePoint3d(0.0, 30.0, 0.0),
       plus({}, "0-1", "line 0,0.2 0,30")},
      {"first edge unresolved", unresolved, kRow, false, ZnGePoint3d(30.0, 0.0, 0.0),
       plus(plus({}, "1-2", "line 0.2,0 4.8,0"), "2-3", "line 5.2,0 9.8,0")},
      {"in the largest gap", half, kRing, false, at(10.4, 180.0),
       plus(onRing, "3-4", "arc -7.2111,6.9282 -10,0")},
      {"a closed ring", half, kRing, true, at(10.4, 180.0),
       plus(onRing, "0-3", "arc -7.2111,6.9282 9.998,-0.2")},
  };
  for (const auto& row : rows)
    EXPECT_EQ(show(layoutOf(row.type, row.full), row.edges, row.cursor), row.pieces) << row.what;
  const ZnDbEdgeRef misfit = edgeOf(addLine({0.0, 0.0, 5.0}, {1.0, 0.0, 5.0}));
  show(layoutOf(kRow), {misfit}, {}, Quorl::eInvalidInput);
  show(layoutOf(kRing), rowOfThree, {}, Quorl::eInvalidInput);
  show(layoutOf(kRow, false, misfit), rowOfThree, {}, Quorl::eInvalidInput);
}

// Pieces reckon with the standard overshoot: an object's own moves the ghost.
TEST_F(PatternPreview, AnEditedRowReachesByItsOwnOvershoots) {
  const ZnArray<ZnDbEdgeRef> edges = edgesOf(row(3)), first{edges[0]};
  const ZnDbObjectId id = addPattern(edges, {}), single = addPattern(first, {});
  ASSERT_EQ(Wrapper(id).setStartOvershoot(L"CenterLine-0-1-2", 1.25), Quorl::eOk);
  ASSERT_EQ(Wrapper(id).setEndOvershoot(L"CenterLine-0-1-2", 3.5), Quorl::eOk);
  struct {
    ZnDbObjectId edited;
    const ZnArray<ZnDbEdgeRef>& edges;
    double cursor;
    const char *key, *piece;
  } const rows[] = {{id, edges, 20.0, "2-3", "line 10.2,0 23,0"},
                    {id, edges, -10.0, "0-3", "line -10.75,0 -0.2,0"},
                    {single, first, 20.0, "0-1", "line 0.2,0 20,0"}}; // which has no line yet
  for (const auto& row : rows) {
    Layout layout = layoutOf(kRow);
    layout.setCenterObject(row.edited);
    EXPECT_EQ(show(std::move(layout), row.edges, ZnGePoint3d(row.cursor, 0.0, 0.0))[row.key], row.piece);
    // The keys under which its overshoots are kept; a chain with the ghost where it has none.
    EXPECT_TRUE(layout.centerLineKeys().first() ==
                (row.edited == id ? L"CenterLine-0-1-2" : L"CenterLine-0-1"));
  }
}

TEST_F(PatternPreview, ThePreviewIsThePattern) {
  put(L"CENTERLTSCALE", ZnRxVariableValue::ofDouble(2.5));
  ZnDbObjectId layer;
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), layer), Quorl::eOk);
  for (const Holes& holes : {row(4), ring(6, 6), ring(3, 8)}) {
    ZnCenterMarkPatternBuilder builder(db_.get());
    builder.setInputEdges(edgesOf(holes));
    builder.setAutoFullPCD(false);
    builder.setIsFullPCD(true); // which is said of rings only
    ZnArray<ZnDbCurve*> preview;
    ASSERT_EQ(builder.createTorviTransients(nullptr, preview), Quorl::eOk);
    std::multiset<std::string> stored, shown;
    for (const auto& [key, texts] : drawing(create(builder)))
      for (const std::string& text : texts)
        if (text != "hidden") stored.insert(text);
    std::map<ZnDbObjectId, size_t> linetypes;
    for (const ZnDbCurve* curve : preview) {
      shown.insert(textOf(*curve));
      ++linetypes[curve->linetypeId()];
      EXPECT_EQ(curve->layerId(), layer);
      if (curve->linetypeId() != db_->continuousLinetype()) EXPECT_EQ(curve->linetypeScale(), 2.5);
      delete curve;
    }
    const ZnDbObjectId dashes = ZnTorviLyxUtils::getCenterLineTypeId(db_.get());
    EXPECT_EQ(linetypes[db_->continuousLinetype()], 2 * holes.size()) << "a cross for each";
    EXPECT_TRUE(linetypes.contains(dashes) && linetypes.size() == 2u);
    EXPECT_EQ(shown, stored);
    EXPECT_GT(shown.size(), holes.size() * 4);
  }
}

} // namespace
