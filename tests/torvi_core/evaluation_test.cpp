// What an evaluation does to a center object, in which order, and when the object counts as out of date.
#include <numbers>

#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class CenterEvaluation : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
    center_ = make({circle_});
  }
  ZnDbObjectId circle_, center_;
  static void otherSegment(Curves& curves) {
    curves.append(new ZnGeLineSeg3d(ZnGePoint3d(0.0, 0.0, 0.0), ZnGePoint3d(2.0, 0.0, 0.0)));
  }
  ZnGePoint3d drawnEnd() const {
    return ZnDbHolder<ZnDbLine>(liveEntities(blockOf(center_)).front())->endPoint();
  }
};

TEST_F(CenterEvaluation, EndsInItsStatusAfterItsSteps) {
  const auto kFine = kIsUpToDateAssocStatus, kFailed = kFailedToEvaluateAssocStatus,
             kErased = kErasedAssocStatus;
  struct {
    std::string what; // words of the situation
    ZnDbAssocStatus status;
    std::vector<std::string> steps;
    bool associative;
  } const rows[] = {{"moved", kFine, {"layout", "evaluate", "adjust"}, true},
                    {"erased", kErased, {}, true},
                    {"failing", kFailed, {"layout", "evaluate", "break"}, false},
                    {"breaking", kFine, {"layout", "compare"}, true},
                    {"breaking moved", kFine, {"layout", "compare", "break"}, false},
                    {"breaking failing", kFine, {"layout", "compare", "break"}, false},
                    {"breaking erased", kFine, {"break"}, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const auto is = [&](const char* word) { return row.what.find(word) != std::string::npos; };
    script = Script();
    const ZnDbObjectId center = make({circle_}), body = bodyOf(center);
    changeBody(center, [&](Body& held) { held.setAssociationToBeBroken(is("breaking")); });
    if (is("erased")) erase(center);
    if (is("moved")) script.generate = otherSegment;
    if (is("failing")) script.evaluateStatus = script.compareStatus = Quorl::eDegenerateGeometry;
    script.log.clear();
    EXPECT_EQ(ZnTorviLyxUtils::explicitlyEvaluateActionBody(body), Quorl::eOk);
    EXPECT_EQ(script.log, row.steps);
    ZnDbHolder<Body> held(body);
    EXPECT_EQ(held->status(), row.status);
    EXPECT_EQ(held->isAssociative(false), row.associative);
    EXPECT_EQ(held->edgeRefCount(), 1) << "an emptied parameter stays";
    EXPECT_EQ(held->associationToBeBroken(), is("breaking")) << "whoever set it clears it";
    script.evaluateStatus = Quorl::eOk;
  }
}

TEST_F(CenterEvaluation, AStuckLayoutIsNoFailure) {
  script.generate = [](Curves& curves) {
    Script::oneSegment(curves);
    Script::oneSegment(curves);
  };
  evaluate(center_);
  EXPECT_EQ(script.count("adjust"), 0) << "more curves than entities";
  EXPECT_EQ(statusOf(center_), kIsUpToDateAssocStatus);
  EXPECT_TRUE(wrap(center_).isAssociative());
}

TEST_F(CenterEvaluation, OnlyAMarkKeepsItsRotationInADocumentOfViews) {
  const ZnGeMatrix3d wanted =
      ZnGeMatrix3d::translation({3.0, 4.0, 0.0}) * ZnGeMatrix3d::rotation(0.5, {0.0, 0.0, 1.0});
  const ZnDbObjectId plain = make({circle_}, ScriptedPlainBody::desc());
  for (const bool views : {true, false}) {
    setHostDocumentKind(views);
    script.transform = wanted;
    for (const ZnDbObjectId center : {center_, plain}) {
      const auto transform = [&] { return ZnDbHolder<ZnDbBlockReference>(center)->blockTransform(); };
      change<ZnDbBlockReference>(center, [](ZnDbBlockReference& reference) {
        reference.setBlockTransform(ZnGeMatrix3d::rotation(1.0, {0.0, 0.0, 1.0}));
      });
      evaluate(center);
      const bool placeOnly = views && center == center_;
      ZnGeMatrix3d expected = wanted;
      if (placeOnly)
        expected = ZnGeMatrix3d::translation({3.0, 4.0, 0.0}) * ZnGeMatrix3d::rotation(1.0, {0.0, 0.0, 1.0});
      EXPECT_TRUE(transform().isEqualTo(expected)) << views << placeOnly;
    }
  }
  setHostDocumentKind(false);
}

TEST_F(CenterEvaluation, TraitsOfTheReferenceFlowIntoTheEntities) {
  const ZnDbObjectId linetype = addLinetype(L"Dots", {1.0, -1.0}, false);
  ZnDbHolder<ZnDbLayerTableRecord> layer(new ZnDbLayerTableRecord);
  layer->setName(L"Hidden");
  layer->setIsFrozen(true);
  ZnDbObjectId layerId;
  {
    ZnDbHolder<ZnDbLayerTable> table;
    ASSERT_EQ(table.openForWrite(db_->layerTableId()), Quorl::eOk);
    ASSERT_EQ(table->add(layerId, layer.object()), Quorl::eOk);
    layer.close();
  }
  change<ZnDbBlockReference>(center_, [&](ZnDbBlockReference& reference) {
    reference.setLinetype(linetype);
    reference.setLineWeight(static_cast<ZnDb::LineWeight>(50));
    reference.setLinetypeScale(3.25);
    reference.setColorIndex(3);
    EXPECT_EQ(reference.setLayer(layerId, true, true), Quorl::eOk);
  });
  evaluate(center_);
  for (const ZnDbObjectId id : liveEntities(blockOf(center_))) {
    ZnDbHolder<ZnDbEntity> entity(id);
    EXPECT_EQ(entity->linetypeId(), linetype);
    EXPECT_EQ(entity->lineWeight(), 50);
    EXPECT_EQ(entity->linetypeScale(), 3.25);
    EXPECT_EQ(entity->colorIndex(), 0) << "by block";
    EXPECT_EQ(entity->transparency().method(), ZnCmTransparency::kByBlock);
    EXPECT_EQ(entity->layerId(), layerId) << "a frozen layer too";
  }
  EXPECT_EQ(wrap(center_).subentColorIndex(), 3);
  ask(center_, [](const Body& body) {
    EXPECT_EQ(body.subentLineType().utf8(), "Dots");
    EXPECT_EQ(body.subentLineWeight(), 50);
    EXPECT_EQ(body.subentLinetypeScale(), 3.25);
    return 0;
  });
}

TEST_F(CenterEvaluation, NeedsAnUpdateAfter) {
  using Reference = ZnDbBlockReference;
  const ZnDbObjectId dots = addLinetype(L"Dots", {1.0, -1.0}, false);
  const ZnGeMatrix3d mirrored = ZnGeMatrix3d::mirroring(ZnGePlane({}, {1.0, 0.0, 0.0}));
  struct {
    const char* what;
    std::function<void(Reference&)> change;
    std::string differs; // l linetype, w weight, s scale, u what needs an update
  } const rows[] = {
      {"nothing", [](Reference&) {}, ""},
      {"linetype", [&](Reference& r) { r.setLinetype(dots); }, "l"},
      {"weight", [](Reference& r) { r.setLineWeight(static_cast<ZnDb::LineWeight>(35)); }, "wu"},
      {"scale", [](Reference& r) { r.setLinetypeScale(r.linetypeScale() + 1e-12); }, "su"},
      {"color", [](Reference& r) { r.setColorIndex(2); }, ""},
      {"place",
       [](Reference& r) {
         r.setPosition({0.0, 0.1, 0.0});
       },
       "u"},
      {"rotation", [](Reference& r) { r.setRotation(0.1); }, "u"},
      {"size", [](Reference& r) { r.setBlockTransform(ZnGeMatrix3d::scaling(2.0)); }, ""},
      {"mirrored", [&](Reference& r) { r.setBlockTransform(mirrored); }, "u"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId center = make({circle_});
    change<Reference>(center, row.change);
    ask(center, [&](const Body& body) {
      std::string differs;
      if (!body.doesActionMatchCurrentSubEntLinetype()) differs += 'l';
      if (!body.doesActionMatchCurrentSubEntLineWeight()) differs += 'w';
      if (!body.doesActionMatchCurrentSubEntLinetypeScale()) differs += 's';
      if (body.doesActionNeedUpdate()) differs += 'u';
      EXPECT_EQ(differs, row.differs);
      return 0;
    });
    evaluate(center);
    EXPECT_FALSE(ask(center, [](const Body& body) { return body.doesActionNeedUpdate(); }));
  }
}

TEST_F(CenterEvaluation, AnErasedReferenceMatchesInItsTraitsOnly) {
  const ZnDbObjectId body = bodyOf(center_);
  erase(center_);
  ZnDbHolder<Body> held(body);
  EXPECT_TRUE(held->doesActionMatchCurrentSubEntLinetype() &&
              held->doesActionMatchCurrentSubEntLineWeight() &&
              held->doesActionMatchCurrentSubEntLinetypeScale());
  EXPECT_FALSE(held->doesActionMatchCurrentGeometry());
  EXPECT_TRUE(held->doesActionNeedUpdate());
}

TEST_F(CenterEvaluation, TheLinetypeIsComparedWithoutCase) {
  struct {
    const wchar_t* stored;
    bool matches;
  } const rows[] = {{L"CENTER", true}, {L"cEnTeR", true}, {L"CENTER2", false}, {L"", false}};
  for (const auto& row : rows) {
    changeBody(center_, [&](Body& body) { body.setSubentLineType(row.stored); });
    EXPECT_EQ(ask(center_, [](const Body& body) { return body.doesActionMatchCurrentSubEntLinetype(); }),
              row.matches);
  }
}

TEST_F(CenterEvaluation, MatchingCountsCurvesAndMayLeaveRotationOut) {
  const auto none = [](Curves&) {};
  const auto two = [](Curves& curves) {
    Script::oneSegment(curves);
    Script::oneSegment(curves);
  };
  struct {
    const char* what;
    std::function<void(Curves&)> generate;
    bool turned, checked, matches;
  } const rows[] = {{"same", Script::oneSegment, false, true, true},
                    {"other", otherSegment, false, true, false},
                    {"fewer", none, false, true, false},
                    {"more", two, false, true, false},
                    {"turned", Script::oneSegment, true, true, false},
                    {"turn allowed", Script::oneSegment, true, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    script = Script();
    const ZnDbObjectId center = make({circle_});
    if (row.turned) change<ZnDbBlockReference>(center, [](ZnDbBlockReference& r) { r.setRotation(0.75); });
    script.generate = row.generate;
    script.rotationChecked = row.checked;
    EXPECT_EQ(wrap(center).doesActionMatchCurrentGeometry(), row.matches);
  }
}

TEST_F(CenterEvaluation, AssociativeWithOneLiveEdgeAndWithAll) {
  struct {
    const char* edges; // L live, E erased, B broken
    bool one, all;
  } const rows[] = {{"", false, false},   {"L", true, true},   {"E", false, false}, {"B", false, false},
                    {"LL", true, true},   {"LE", true, false}, {"EL", true, false}, {"LB", true, false},
                    {"BEL", true, false}, {"BE", false, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.edges);
    ScriptedBuilder builder(db_.get());
    std::vector<ZnDbObjectId> inputs;
    for (const char* edge = row.edges; *edge; ++edge) {
      inputs.push_back(addCircle({0.0, 0.0, 0.0}, 1.0));
      builder.addInputEdge(edgeOf(inputs.back()));
    }
    ZnDbObjectId body;
    ASSERT_EQ(builder.createActionAndActionBody(body), Quorl::eOk);
    for (size_t i = 0; i < inputs.size(); ++i) {
      if (row.edges[i] == 'E') erase(inputs[i]);
      if (row.edges[i] == 'B')
        change<Body>(
            body, [&](Body& held) { EXPECT_EQ(held.breakAssociativity(static_cast<int>(i)), Quorl::eOk); });
    }
    ZnDbHolder<Body> held(body);
    EXPECT_EQ(held->isAssociative(false), row.one);
    EXPECT_EQ(held->isAssociative(true), row.all);
    EXPECT_EQ(held->edgeRefCount(), static_cast<int>(inputs.size()));
  }
  changeBody(center_, [](Body& body) {
    EXPECT_EQ(body.breakAssociativity(1), Quorl::eNullObjectId);
    EXPECT_EQ(body.breakAssociativity(-1), Quorl::eNullObjectId);
    EXPECT_TRUE(body.isAssociative(true));
  });
}

TEST_F(CenterEvaluation, TheScaleOfTheLastViewportIsKept) {
  auto* window = new ZnDbViewport;
  window->setCustomScale(0.5);
  const ZnDbObjectId viewport = add(window, db_->paperSpaceId());
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  ScriptedBuilder builder(db_.get());
  builder.addInputEdge(edgeAlong({viewport, circle_}));
  ZnDbObjectId center;
  ASSERT_EQ(builder.createTorvi(center), Quorl::eOk);
  const auto cached = [&] {
    return ask(center, [](const Body& body) { return body.cachedViewportScale(); });
  };
  EXPECT_NEAR(cached(), 0.5, 1e-12);
  EXPECT_EQ(wrap(center).getDependentViewportId(), viewport);
  change<ZnDbViewport>(viewport, [](ZnDbViewport& seen) { seen.setCustomScale(0.25); });
  evaluateChanges();
  EXPECT_NEAR(cached(), 0.25, 1e-12);
  ScriptedBuilder plain(db_.get());
  plain.addInputEdge(edgeOf(circle_));
  EXPECT_EQ(plain.reassociateTorvi(center), Quorl::eOk);
  EXPECT_TRUE(wrap(center).getDependentViewportId().isNull());
  EXPECT_NEAR(cached(), 0.25, 1e-12);
}

} // namespace
