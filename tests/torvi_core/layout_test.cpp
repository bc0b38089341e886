// Writing curves into the entities of a block, one by one and by key.
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class Layout : public ScriptedTest {
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

TEST_F(Layout, NewKeysMakeEntitiesOrFail) {
  const ZnDbObjectId center = makeWith("l", {L"1"});
  changeBody(center, [&](Body& body) { body.setOutputEdge(L"9", db_->layerZero()); }); // stale, and no entity
  EXPECT_EQ(update(center, {}, {L"1", L"2"}, true), Quorl::eNothingToDo) << "a kind that makes none";
  script.createForKey = [](ZnArray<ZnDbEntity*>&) {};
  EXPECT_EQ(update(center, {}, {L"1", L"2"}, true), Quorl::eInvalidInput);
  script.createForKey = [](ZnArray<ZnDbEntity*>& entities) {
    entities.append(new ZnDbLine);
    entities.append(new ZnDbArc);
  };
  for (const bool associative : {false, true})
    EXPECT_EQ(update(center, {&segment_, &segment_, &arc_}, {L"1", L"2"}, associative), Quorl::eOk);
  const ZnDbObjectId nested = wrap(center).getOutputEdge(L"2");
  ASSERT_TRUE(nested.isDerivedFrom(ZnDbBlockReference::desc()));
  EXPECT_EQ(ZnDbHolder<ZnDbArc>(liveEntities(blockOf(nested)).at(1))->radius(), 7.0);
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ(ZnDbHolder<ZnDbEntity>(nested)->colorIndex(), 0) << "the reference gets the traits too";
    change<ZnDbEntity>(nested, [](ZnDbEntity& reference) { reference.setColorIndex(3); });
    EXPECT_EQ(update(center, {&segment_, &segment_, &arc_}, {L"1", L"2"}, true), Quorl::eOk);
  }
  const ZnDbObjectId block = blockOf(nested), member = liveEntities(block).at(0);
  EXPECT_EQ(update(center, {&segment_}, {L"1"}, true), Quorl::eOk);
  EXPECT_TRUE(nested.isErased() && block.isErased() && member.isErased())
      << "an output that is not wanted goes as a whole";
  EXPECT_FALSE(db_->layerZero().isErased());
}

} // namespace
