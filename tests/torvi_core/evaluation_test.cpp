// What an evaluation does to a center object, in which order, and when the object counts as out of date.
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;
using CenterEvaluation = CenterTest;

void otherSegment(Curves& curves) {
  curves.append(new ZnGeLineSeg3d(ZnGePoint3d(0.0, 0.0, 0.0), ZnGePoint3d(2.0, 0.0, 0.0)));
}
void twoSegments(Curves& curves) {
  Script::oneSegment(curves);
  Script::oneSegment(curves);
}

TEST_F(CenterEvaluation, EndsInItsStatusAfterItsSteps) {
  const auto kFine = kIsUpToDateAssocStatus, kFailed = kFailedToEvaluateAssocStatus,
             kErased = kErasedAssocStatus;
  struct {
    std::string what; // words of the situation
    ZnDbAssocStatus status;
    std::vector<std::string> steps;
    bool associative;
  } const rows[] = {{"moved", kFine, {"layout", "evaluate", "adjust"}, true},
                    {"stuck", kFine, {"layout", "evaluate"}, true}, // more curves than entities
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
    if (is("stuck")) script.generate = twoSegments;
    if (is("failing")) script.evaluateStatus = script.compareStatus = Quorl::eDegenerateGeometry;
    script.log.clear();
    EXPECT_EQ(ZnTorviLyxUtils::explicitlyEvaluateActionBody(body), Quorl::eOk);
    EXPECT_EQ(script.log, row.steps);
    ZnDbHolder<Body> held(body);
    EXPECT_EQ(held->status(), row.status);
    EXPECT_EQ(held->isAssociative(false), row.associative);
    EXPECT_EQ(held->edgeRefCount(), 1) << "an emptied parameter stays";
    EXPECT_EQ(held->associationToBeBroken(), is("breaking")) << "whoever set it clears it";
  }
}

TEST_F(CenterEvaluation, OnlyAMarkKeepsItsRotationInADocumentOfViews) {
  const ZnGeMatrix3d place = ZnGeMatrix3d::translation({3.0, 4.0, 0.0}),
                     turned = ZnGeMatrix3d::rotation(1.0, {0.0, 0.0, 1.0});
  const ZnDbObjectId plain = make({circle_}, ScriptedPlainBody::desc());
  script.transform = place * ZnGeMatrix3d::rotation(0.5, {0.0, 0.0, 1.0});
  for (const bool views : {true, false}) {
    setHostDocumentKind(views);
    for (const ZnDbObjectId center : {center_, plain}) {
      change<ZnDbBlockReference>(center, [&](ZnDbBlockReference& r) { r.setBlockTransform(turned); });
      evaluate(center);
      const ZnGeMatrix3d expected = views && center == center_ ? place * turned : script.transform;
      EXPECT_TRUE(ZnDbHolder<ZnDbBlockReference>(center)->blockTransform().isEqualTo(expected)) << views;
    }
  }
}

TEST_F(CenterEvaluation, ColorAndLayerOfTheReferenceFlowIntoTheEntities) {
  const ZnDbObjectId layer = layerOf(circle_);
  change<ZnDbLayerTableRecord>(layer, [](ZnDbLayerTableRecord& record) { record.setIsFrozen(true); });
  change<ZnDbBlockReference>(center_, [&](ZnDbBlockReference& reference) {
    reference.setColorIndex(3);
    EXPECT_EQ(reference.setLayer(layer, true, true), Quorl::eOk);
  });
  evaluate(center_);
  ZnDbHolder<ZnDbEntity> entity(liveEntities(blockOf(center_)).at(0));
  EXPECT_EQ(entity->colorIndex(), 0) << "by block";
  EXPECT_EQ(entity->transparency(), ZnTorviLyxUtils::getByBlockTransparency());
  EXPECT_EQ(entity->transparency().method(), ZnCmTransparency::kByBlock);
  EXPECT_EQ(entity->layerId(), layer) << "a frozen layer too";
  EXPECT_EQ(wrap(center_).subentColorIndex(), 3);
}

TEST_F(CenterEvaluation, NeedsAnUpdateAfter) {
  using Reference = ZnDbBlockReference;
  const ZnDbObjectId dots = addLinetype(L"Dots", {1.0, -1.0}, false);
  const ZnGeMatrix3d mirrored = ZnGeMatrix3d::mirroring(ZnGePlane({}, {1.0, 0.0, 0.0}));
  const ZnGePoint3d place(0.0, 0.1, 0.0);
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
      {"place", [&](Reference& r) { r.setPosition(place); }, "u"},
      {"rotation", [](Reference& r) { r.setRotation(0.1); }, "u"},
      {"size", [](Reference& r) { r.setBlockTransform(ZnGeMatrix3d::scaling(2.0)); }, ""},
      {"mirrored", [&](Reference& r) { r.setBlockTransform(mirrored); }, "u"},
      {"erased", [](Reference& r) { r.erase(); }, "u"},
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
    EXPECT_EQ(ask(center, [](const Body& body) { return body.doesActionNeedUpdate(); }), center.isErased());
  }
}

TEST_F(CenterEvaluation, AssociativeWithOneLiveEdgeAndWithAll) {
  for (const std::string edges : {"L", "E", "B", "LE", "EL", "BEL", "BE"}) { // live, erased, broken
    std::vector<ZnDbObjectId> inputs;
    for (size_t i = 0; i < edges.size(); ++i) inputs.push_back(addCircle({0.0, 0.0, 0.0}, 1.0));
    const ZnDbObjectId center = make(inputs);
    for (size_t i = 0; i < edges.size(); ++i) {
      if (edges[i] == 'E') erase(inputs[i]);
      if (edges[i] == 'B')
        changeBody(center,
                   [&](Body& b) { EXPECT_EQ(b.breakAssociativity(static_cast<int>(i)), Quorl::eOk); });
    }
    const bool one = edges.find('L') != std::string::npos;
    EXPECT_EQ(ask(center, [](const Body& body) { return body.isAssociative(false); }), one) << edges;
    EXPECT_EQ(ask(center, [](const Body& body) { return body.isAssociative(true); }), edges == "L") << edges;
  }
  changeBody(center_, [](Body& body) {
    for (const int index : {1, -1}) EXPECT_EQ(body.breakAssociativity(index), Quorl::eNullObjectId);
  });
}

} // namespace
