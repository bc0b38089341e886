// What every kind of center object has to live through, told once for all of them: each life is run with each
// sample, and a registered kind without a sample is a failure.
#include <functional>
#include <set>

#include "quorl/file/drawing_file.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/object_pointer.h"
#include "torvi/style/resources.h"
#include "torvi_lives/lives.h"

namespace {

const ZnGeMatrix3d kAway = ZnGeMatrix3d::translation({40.0, -7.0, 0.0});

class Lives : public LivesTest {
protected:
  struct Life {
    const char* name;
    std::function<void(Lives&, Center&)> live;
  };
  static const std::vector<Life>& lives();

  // It is where it was made, and goes where its edges go.
  void expectFollows(ZnDbObjectId id, const Ids& inputs, const Portrait& portrait) {
    EXPECT_TRUE(looksLike(id, portrait));
    move(inputs, kAway);
    ZnDbAssocManager::evaluateTopLevelNetwork(id.database());
    EXPECT_TRUE(looksLike(id, portrait.moved(kAway))) << "following";
    move(inputs, kAway.inverse());
    ZnDbAssocManager::evaluateTopLevelNetwork(id.database());
  }
  void moveWithEdges(Center& center, const ZnGeMatrix3d& by) {
    Ids all = center.inputs;
    all.push_back(center.id);
    move(all, by);
    evaluateChanges();
    EXPECT_TRUE(looksLike(center.id, center.before.moved(by)));
  }
  // The copy in the same or another drawing follows the copies of the edges, or nothing.
  void copy(Center& center, bool withEdges, bool toOther, bool toPaper = false);
  void loseEdges(Center& center);
  void save(Center& center, ZnDrawingFormat format);
  void changeEachValue(Center& center);
  void standOnPaper(Center& center);
};

void Lives::copy(Center& center, bool withEdges, bool toOther, bool toPaper) {
  ZnDbDatabase other;
  ZnDbDatabase& target = toOther ? other : *db_;
  ZnDbIdMapping mapping(toOther ? ZnDb::kCopyInContext : ZnDb::kCopyContext, db_.get(), &target);
  ZnArray<ZnDbObjectId> objects{center.id};
  if (withEdges)
    for (const ZnDbObjectId input : center.inputs) objects.append(input);
  ASSERT_EQ(db_->deepCloneObjects(objects, toPaper ? target.paperSpaceId() : target.modelSpaceId(), mapping),
            Quorl::eOk);
  const ZnDbObjectId copied = ZnDbTorviActionBodyUtils::mapId(mapping, center.id);
  ASSERT_EQ(copied.database(), &target);
  EXPECT_EQ(wrapperOf(copied).centerType(), wrapperOf(center.id).centerType());
  EXPECT_NE(ZnDbTorviActionBodyUtils::getBTRIdFromBlockRef(copied),
            ZnDbTorviActionBodyUtils::getBTRIdFromBlockRef(center.id));
  Ids inputs;
  for (const ZnDbObjectId input : center.inputs)
    inputs.push_back(withEdges ? ZnDbTorviActionBodyUtils::mapId(mapping, input) : input);
  if (withEdges) {
    expectFollows(copied, inputs, center.before);
  } else {
    EXPECT_FALSE(wrapperOf(copied).isAssociative());
    EXPECT_TRUE(looksLike(copied, {center.before.curves, portraitOf(copied).object}, PortraitPart::kPlaces));
  }
  EXPECT_TRUE(looksLike(center.id, center.before)) << "the original";
  expectFollows(center.id, center.inputs, center.before);
  EXPECT_TRUE(linkFaults(target).empty());
  EXPECT_TRUE(target.audit(false).empty());
}

void Lives::loseEdges(Center& center) {
  const auto kind = torvi::kindOfType(wrapperOf(center.id).centerType());
  printed_.clear();
  for (const ZnDbObjectId input : center.inputs) erase(input);
  evaluateChanges();
  EXPECT_FALSE(wrapperOf(center.id).isAssociative());
  const Portrait alone = portraitOf(center.id);
  EXPECT_EQ(alone.curves.size(), center.before.curves.size());
  EXPECT_TRUE(looksLike(center.id, {center.before.curves, alone.object}, PortraitPart::kPlaces))
      << "without edges it stays";
  EXPECT_EQ(printed_, ZnTorviResources::text(kind->disassociatedMessage) + L"\n");
  printed_.clear();
  evaluate(center.id);
  EXPECT_TRUE(printed_.isEmpty()) << "a second time";
  undo();
  expectFollows(center.id, center.inputs, center.before);
}

void Lives::save(Center& center, ZnDrawingFormat format) {
  std::string bytes;
  ZnFileError error;
  ASSERT_EQ(zndbDrawingToBytes(*db_, format, bytes, error), Quorl::eOk) << error.text();
  const auto opened = zndbDrawingFromBytes(bytes, error);
  ASSERT_TRUE(opened) << error.text();
  zndbHostApplicationServices()->setWorkingDatabase(opened.get());
  const auto there = [&](ZnDbObjectId id) {
    ZnDbObjectId found;
    EXPECT_EQ(opened->getZnDbObjectId(found, false, id.handle(), 0), Quorl::eOk);
    return found;
  };
  Ids inputs;
  for (const ZnDbObjectId input : center.inputs) inputs.push_back(there(input));
  EXPECT_EQ(valuesOf(there(center.id)), valuesOf(center.id));
  expectFollows(there(center.id), inputs, center.before);
  EXPECT_TRUE(linkFaults(*opened).empty());
  EXPECT_TRUE(opened->audit(false).empty());
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
}

// Values of every name, also those that the evaluation copies from the reference.
void Lives::changeEachValue(Center& center) {
  const std::string before = valuesOf(center.id);
  EXPECT_FALSE(before.empty());
  ZnArray<ZnString> names;
  ZnDbHolder<ZnDbTorviActionBody>(bodyOf(center.id))->ownedValueParamNames(names);
  for (const ZnString& name : names) {
    double number = 0.0;
    ZnDbEvalVariant value;
    ZnDbHolder<ZnDbTorviActionBody> body(bodyOf(center.id));
    if (body->getValueParam(name, value) != Quorl::eOk || value.getValue(number) != Quorl::eOk) continue;
    ASSERT_EQ(body.upgrade(), Quorl::eOk);
    EXPECT_EQ(body->setDoubleParam(name, number + 1.0), Quorl::eOk) << name.utf8();
  }
  EXPECT_NE(valuesOf(center.id), before);
  undo();
  EXPECT_EQ(valuesOf(center.id), before);
  const ZnDbObjectId dots = addLinetype(L"Dots", {1.0, -1.0}, false);
  db_->undoRecorder().startStep();
  change<ZnDbEntity>(center.id, [&](ZnDbEntity& reference) {
    reference.setLinetype(dots);
    reference.setLineWeight(ZnDb::kLineWeight050);
    reference.setLinetypeScale(3.25);
  });
  evaluateChanges();
  const ZnDbTorviObjectWrapper wrapper = wrapperOf(center.id);
  EXPECT_EQ(wrapper.subentLineType(), L"Dots");
  EXPECT_EQ(wrapper.subentLineWeight(), 50);
  EXPECT_EQ(wrapper.subentLinetypeScale(), 3.25);
  for (const SeenCurve& curve : portraitOf(center.id).curves)
    EXPECT_NE(curve.traits.find("50 3.25"), std::string::npos) << curve.traits;
  undo();
  EXPECT_EQ(valuesOf(center.id), before);
  expectFollows(center.id, center.inputs, center.before);
}

// Seen through a window in the drawing's own size, a center object on paper is one in model space, moved.
void Lives::standOnPaper(Center& center) {
  const ZnDbObjectId window = addViewport(1.0, {100.0, 50.0, 0.0}, {10.0, 0.0});
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  std::vector<ZnDbEdgeRef> edges;
  for (const ZnDbObjectId input : center.inputs) edges.push_back(edgeAlong({window, input}));
  ZnDbObjectId onPaper;
  ASSERT_EQ(builderOver(wrapperOf(center.id).centerType(), edges)->createTorvi(onPaper), Quorl::eOk);
  EXPECT_EQ(wrapperOf(onPaper).getDependentViewportId(), window);
  EXPECT_EQ(wrapperOf(onPaper).cachedViewportScale(), 1.0);
  expectFollows(onPaper, center.inputs, center.before.moved(ZnGeMatrix3d::translation({90.0, 50.0, 0.0})));
}

const std::vector<Lives::Life>& Lives::lives() {
  static const std::vector<Life> all = {
      {"its edges move", [](Lives& l, Center& c) { l.expectFollows(c.id, c.inputs, c.before); }},
      {"moved with its edges", [](Lives& l, Center& c) { l.moveWithEdges(c, kAway); }},
      {"turned with its edges",
       [](Lives& l, Center& c) {
         l.moveWithEdges(c, ZnGeMatrix3d::rotation(0.7, {0, 0, 1}, {5, 6, 0}));
       }},
      {"mirrored with its edges",
       [](Lives& l, Center& c) {
         l.moveWithEdges(c, ZnGeMatrix3d::mirroring(ZnGePlane({5, 0, 0}, {1, 0, 0})));
       }},
      {"copied with its edges", [](Lives& l, Center& c) { l.copy(c, true, false); }},
      {"copied to paper with its edges", [](Lives& l, Center& c) { l.copy(c, true, false, true); }},
      {"copied alone", [](Lives& l, Center& c) { l.copy(c, false, false); }},
      {"to another drawing with its edges", [](Lives& l, Center& c) { l.copy(c, true, true); }},
      {"to another drawing alone", [](Lives& l, Center& c) { l.copy(c, false, true); }},
      {"its edges erased", [](Lives& l, Center& c) { l.loseEdges(c); }},
      {"erased and brought back",
       [](Lives& l, Center& c) {
         erase(c.id);
         l.evaluateChanges();
         l.undo();
         l.expectFollows(c.id, c.inputs, c.before);
       }},
      {"its making undone and done again",
       [](Lives& l, Center& c) {
         l.undo();
         EXPECT_TRUE(c.id.isErased() && bodyOf(c.id).isErased());
         l.redo();
         l.expectFollows(c.id, c.inputs, c.before);
       }},
      {"a move undone and done again",
       [](Lives& l, Center& c) {
         move(c.inputs, kAway);
         l.evaluateChanges();
         l.undo();
         EXPECT_TRUE(looksLike(c.id, c.before));
         l.redo();
         l.expectFollows(c.id, c.inputs, c.before.moved(kAway));
       }},
      {"saved in binary", [](Lives& l, Center& c) { l.save(c, ZnDrawingFormat::kBinary); }},
      {"saved as text", [](Lives& l, Center& c) { l.save(c, ZnDrawingFormat::kText); }},
      {"values changed and undone", [](Lives& l, Center& c) { l.changeEachValue(c); }},
      {"suppressed and let go",
       [](Lives& l, Center& c) {
         ZnDbTorviObjectWrapper wrapper = wrapperOf(c.id);
         EXPECT_EQ(wrapper.supressCenterEvaluation(), Quorl::eOk);
         EXPECT_TRUE(wrapper.isCenterEvaluationSupressed());
         move(c.inputs, kAway);
         l.evaluateChanges();
         EXPECT_TRUE(looksLike(c.id, {c.before.curves, portraitOf(c.id).object}));
         EXPECT_EQ(wrapper.unSupressCenterEvaluation(), Quorl::eOk);
         l.evaluateChanges();
         EXPECT_TRUE(looksLike(c.id, c.before.moved(kAway)));
       }},
      {"on a locked layer",
       [](Lives& l, Center& c) {
         ASSERT_NE(layerOf(c.id), layerOf(c.inputs[0]));
         setLocked(layerOf(c.id), true);
         l.expectFollows(c.id, c.inputs, c.before);
       }},
      {"on paper", [](Lives& l, Center& c) { l.standOnPaper(c); }},
      {"made anew in another scale",
       [](Lives& l, Center& c) {
         l.put(L"CENTERLTSCALE", ZnRxVariableValue::ofDouble(2.5));
         ZnDbObjectId id;
         const auto builder = l.builderOver(wrapperOf(c.id).centerType(), edgesOf(c.inputs));
         ASSERT_EQ(builder->createTorvi(id), Quorl::eOk);
         EXPECT_EQ(wrapperOf(id).linetypeScale(), 2.5);
         EXPECT_EQ(wrapperOf(c.id).linetypeScale(), 1.0);
         ZnArray<ZnDbCurve*> preview; // for the kinds that have one
         if (builder->createTorviTransients(nullptr, preview) == Quorl::eOk) EXPECT_FALSE(preview.isEmpty());
         for (const ZnDbCurve* curve : preview) {
           EXPECT_EQ(curve->linetypeScale(), 2.5);
           delete curve;
         }
       }},
  };
  return all;
}

TEST_F(Lives, EveryKindLivesThroughAll) {
  std::set<ZnDbTorviType> sampled;
  for (const Sample& sample : kSamples) {
    sampled.insert(sample.kind);
    for (const Life& life : lives()) {
      SCOPED_TRACE(std::string(sample.name) + ": " + life.name);
      Center center = make(sample);
      life.live(*this, center);
      // The next life begins in a drawing of its own.
      TearDown();
      SetUp();
    }
  }
  ASSERT_FALSE(torvi::kinds().empty());
  for (const torvi::Kind* kind : torvi::kinds())
    EXPECT_TRUE(sampled.contains(kind->type)) << ZnString(kind->name).utf8();
}

} // namespace
