// Writing curves into the entities of a block, one by one and by key.
#include <map>

#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class Layout : public CircleTest {
protected:
  // A center object whose block is as creation leaves it.
  ZnDbObjectId makeWith(const char* entities, const std::vector<std::wstring>& keys = {}) {
    script.entities = entities;
    script.keys = keys;
    script.generate = [](Curves&) {};
    return make({circle_});
  }
  static Quorl::ErrorStatus update(ZnDbObjectId center, const std::vector<const ZnGeCurve3d*>& shapes,
                                   const std::vector<std::wstring>& keys, bool associative) {
    Curves curves;
    for (const ZnGeCurve3d* shape : shapes) curves.append(const_cast<ZnGeCurve3d*>(shape));
    Keys wanted;
    for (const std::wstring& key : keys) wanted.append(key);
    return ScriptedLayout(center).updateEntities(curves, wanted, associative);
  }
  const ZnGeLineSeg3d segment_{ZnGePoint3d(1.0, 2.0, 3.0), ZnGePoint3d(4.0, 5.0, 6.0)};
  const ZnGeCircArc3d arc_{{1.0, 1.0, 0.0}, {0.0, 0.0, -1.0}, {1.0, 0.0, 0.0}, 7.0, 0.5, 2.5};
  const ZnGeLine3d nothing_{};
};

TEST_F(Layout, CurvesHideAndShowEntities) {
  const ZnDbObjectId center = makeWith("la");
  const std::vector<ZnDbObjectId> ids = liveEntities(blockOf(center));
  ASSERT_EQ(ids.size(), 2u);
  const auto expectShapes = [&](bool lineHidden, bool arcHidden) {
    ZnDbHolder<ZnDbLine> line(ids[0]);
    EXPECT_TRUE(near(line->startPoint(), segment_.startPoint()));
    EXPECT_TRUE(near(line->endPoint(), lineHidden ? segment_.startPoint() : segment_.endPoint()));
    ZnDbHolder<ZnDbArc> arc(ids[1]);
    EXPECT_TRUE(near(arc->center(), arc_.center()));
    EXPECT_EQ(arc->radius(), arcHidden ? 0.0 : 7.0);
    EXPECT_TRUE(arc->normal().isEqualTo(arc_.normal()));
    EXPECT_TRUE(arc->startAngle() == arc_.startAng() && arc->endAngle() == arc_.endAng());
    EXPECT_EQ(line->visibility() == ZnDb::kVisible, !lineHidden);
    EXPECT_EQ(arc->visibility() == ZnDb::kVisible, !arcHidden);
  };
  struct {
    std::vector<const ZnGeCurve3d*> shapes;
    bool associative, lineHidden, arcHidden;
  } const steps[] = {{{&segment_, &arc_}, true, false, false},
                     {{&nothing_, &nothing_}, false, false, false},
                     {{&nothing_}, true, true, false},
                     {{&segment_, &nothing_}, true, false, true},
                     {{&segment_, &arc_}, false, false, false},
                     {{&arc_, &segment_}, true, false, false}, // of the other kind
                     {{nullptr, nullptr}, true, false, false}};
  for (const auto& step : steps) {
    SCOPED_TRACE(&step - steps);
    EXPECT_EQ(update(center, step.shapes, {}, step.associative), Quorl::eOk);
    expectShapes(step.lineHidden, step.arcHidden);
  }
}

TEST_F(Layout, CountsOfCurvesAndEntities) {
  const ZnDbObjectId center = makeWith("ll");
  changeBody(center, [](Body& body) { body.setSubentLinetypeScale(5.0); });
  const auto scale = [&](size_t i) {
    return ZnDbHolder<ZnDbEntity>(liveEntities(blockOf(center))[i])->linetypeScale();
  };
  script.log.clear();
  EXPECT_EQ(update(center, {&segment_, &segment_, &segment_}, {}, true), Quorl::eInvalidInput);
  EXPECT_EQ(script.count("adjust"), 0);
  EXPECT_NE(scale(0), 5.0);
  EXPECT_EQ(update(center, {&segment_}, {}, true), Quorl::eOk);
  EXPECT_EQ(scale(0), 5.0);
  EXPECT_EQ(scale(1), 5.0) << "traits reach the entities beyond the curves";
  EXPECT_EQ(script.count("adjust"), 1);
  for (const ZnDbObjectId id : {circle_, ZnDbObjectId()})
    EXPECT_EQ(update(id, {}, {}, true), Quorl::eInvalidInput);
}

TEST_F(Layout, KeyedOutputsFollowTheWantedKeys) {
  struct {
    const char* what;
    std::vector<std::wstring> made, wanted;
    bool associative;
    int shapes;                           // curves that fit
    std::map<std::wstring, bool> outputs; // key: whether its output lives afterwards
  } const rows[] = {
      {"one goes", {L"1", L"2"}, {L"2"}, true, 1, {{L"1", false}, {L"2", true}}},
      {"kept without edges", {L"1", L"2"}, {L"2"}, false, 2, {{L"1", true}, {L"2", true}}},
      {"group goes", {L"1", L"1"}, {L"3"}, true, 1, {{L"1", false}, {L"3", true}}},
      {"group kept", {L"1", L"1"}, {L"3"}, false, 3, {{L"1", true}, {L"3", true}}},
      {"new one", {L"1"}, {L"1", L"4"}, true, 2, {{L"1", true}, {L"4", true}}},
      {"run of one key", {L"1", L"1"}, {L"1", L"1"}, true, 2, {{L"1", true}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId center = makeWith(std::string(row.made.size(), 'l').c_str(), row.made);
    script.createForKey = [](ZnArray<ZnDbEntity*>& entities) { entities.append(new ZnDbLine); };
    std::vector<const ZnGeCurve3d*> shapes(static_cast<size_t>(row.shapes), &segment_);
    EXPECT_EQ(update(center, shapes, row.wanted, row.associative), Quorl::eOk);
    for (const auto& [key, lives] : row.outputs) {
      const ZnDbObjectId id = wrap(center).getOutputEdge(key);
      ASSERT_FALSE(id.isNull());
      EXPECT_EQ(!id.isErased(), lives) << ZnString(key).utf8();
      if (id.isDerivedFrom(ZnDbBlockReference::desc())) {
        const ZnDbObjectId block = static_cast<ZnDbBlockReference*>(id.slot()->object)->blockTableRecord();
        EXPECT_EQ(!block.isErased(), lives) << "its block";
      }
    }
    ZnArray<ZnDbObjectId> lines;
    EXPECT_EQ(wrap(center).getCenterEntitesIds(lines), Quorl::eOk);
    EXPECT_EQ(lines.length(), row.shapes);
    for (const ZnDbObjectId id : lines)
      EXPECT_TRUE(near(ZnDbHolder<ZnDbLine>(id)->endPoint(), segment_.endPoint()));
    // What was purged comes back as itself.
    const ZnDbObjectId first = wrap(center).getOutputEdge(row.made[0]);
    shapes.assign(row.made.size(), &segment_);
    EXPECT_EQ(update(center, shapes, row.made, true), Quorl::eOk);
    EXPECT_EQ(wrap(center).getOutputEdge(row.made[0]), first);
    EXPECT_FALSE(first.isErased());
  }
}

TEST_F(Layout, NewKeysMakeEntitiesOrFail) {
  const ZnDbObjectId center = makeWith("l", {L"1"});
  EXPECT_EQ(update(center, {}, {L"1", L"2"}, true), Quorl::eNothingToDo) << "a kind that makes none";
  script.createForKey = [](ZnArray<ZnDbEntity*>&) {};
  EXPECT_EQ(update(center, {}, {L"1", L"2"}, true), Quorl::eInvalidInput);
  EXPECT_TRUE(wrap(center).getOutputEdge(L"2").isNull());
  script.createForKey = [](ZnArray<ZnDbEntity*>& entities) {
    entities.append(new ZnDbLine);
    entities.append(new ZnDbArc);
  };
  EXPECT_EQ(update(center, {&segment_, &segment_, &arc_}, {L"1", L"2"}, true), Quorl::eOk);
  const ZnDbObjectId nested = wrap(center).getOutputEdge(L"2");
  ASSERT_TRUE(nested.isDerivedFrom(ZnDbBlockReference::desc()));
  const std::vector<ZnDbObjectId> members = liveEntities(blockOf(nested));
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(ZnDbHolder<ZnDbArc>(members[1])->radius(), 7.0);
  EXPECT_EQ(ZnDbHolder<ZnDbEntity>(nested)->colorIndex(), 0) << "the reference gets the traits too";
}

TEST_F(Layout, AStaleKeyOfSomethingElseIsPassedOver) {
  const ZnDbObjectId center = makeWith("l", {L"1"});
  changeBody(center, [&](Body& body) { body.setOutputEdge(L"9", db_->layerZero()); });
  for (const bool associative : {false, true})
    EXPECT_EQ(update(center, {&segment_}, {L"1"}, associative), Quorl::eOk) << associative;
  EXPECT_FALSE(db_->layerZero().isErased());
}

TEST_F(Layout, InputShapesStandInLineWithTheEdges) {
  const ZnDbObjectId line = addLine({1.0, 0.0, 0.0}, {5.0, 0.0, 0.0});
  const ZnDbObjectId center = make({circle_, line, circle_});
  ScriptedLayout layout(center);
  ZnArray<ZnGeLineSeg3d> segments{segment_};
  EXPECT_EQ(layout.getInputLineSegments(segments), 1);
  ASSERT_EQ(segments.length(), 3);
  EXPECT_EQ(segments[0].length(), 0.0);
  EXPECT_TRUE(segments[1] == ZnGeLineSeg3d(ZnGePoint3d(1.0, 0.0, 0.0), ZnGePoint3d(5.0, 0.0, 0.0)));
  ZnArray<ZnGeCircArc3d> circles{arc_};
  EXPECT_EQ(layout.getInputCircles({edgeOf(line), edgeOf(circle_), ZnDbEdgeRef()}, circles), 1);
  ASSERT_EQ(circles.length(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(circles[i].radius(), i == 1 ? 5.0 : 0.0);
  EXPECT_EQ(layout.getInputCircles({}, circles), 0);
  EXPECT_TRUE(circles.isEmpty());
}

} // namespace
