// Evaluations under a callback: substitutes in place of the reference, and when a lost association is told.
#include "quorl/assoc/evaluation_pointer.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class Drag : public ZnDbAssocEvaluationCallback {
public:
  int state = 0;
  ZnDbObjectId replaced;
  ZnDbObject* substitute = nullptr;
  std::vector<std::pair<ZnDbObjectId, Quorl::ErrorStatus>> failures;

  void beginEvaluation(ZnDbAssocAction*) override {}
  void endEvaluation(ZnDbAssocAction*) override {}
  void reportFailure(ZnDbAssocAction* action, Quorl::ErrorStatus status, ZnDbObjectId id, ZnDbObject* object,
                     void* extra) override {
    EXPECT_TRUE(id.isNull() && !object && !extra);
    failures.push_back({action->actionBody(), status});
  }
  void beginUse(ZnDbAssocAction*, ZnDbObjectId id, bool, bool isWrite, ZnDbObject*& out) override {
    if (id != replaced) return;
    script.log.push_back(isWrite ? "use" : "look");
    out = substitute;
  }
  void endUse(ZnDbAssocAction*, ZnDbObjectId id, ZnDbObject* object) override {
    if (id != replaced) return;
    EXPECT_EQ(object, substitute);
    script.log.push_back("done");
  }
  int draggingState() const override { return state; }
};

class DraggedCenter : public CenterTest {
protected:
  Drag with(ZnDbObject& substitute) const {
    Drag drag;
    drag.replaced = center_;
    drag.substitute = &substitute;
    return drag;
  }
  void evaluateUnder(Drag& drag, ZnDbObjectId center) {
    script.log.clear();
    change<ZnDbAssocAction>(ZnDbAssocActionBody::parentAction(bodyOf(center)), [](ZnDbAssocAction& action) {
      action.setStatus(kChangedDirectlyAssocStatus, true, false);
    });
    EXPECT_EQ(ZnDbAssocManager::evaluateTopLevelNetwork(db_.get(), &drag), Quorl::eOk);
  }
};

TEST_F(DraggedCenter, ALostAssociationIsToldOnceAndNotWhileDragging) {
  const auto cached = [](const Body& body) { return body.getCachedAssociateStatus(); };
  for (const int state : {-1, 0, 1, 2, 3}) { // -1: no callback
    SCOPED_TRACE(state);
    const ZnDbObjectId input = addCircle({0.0, 0.0, 0.0}, 1.0), center = make({input});
    EXPECT_TRUE(ask(center, cached));
    Drag drag;
    drag.state = state;
    printed_.clear();
    erase(input);
    if (state < 0)
      evaluateChanges();
    else
      evaluateUnder(drag, center);
    EXPECT_EQ(printed_.isEmpty(), state == 1 || state == 2) << printed_.utf8();
    EXPECT_FALSE(ask(center, cached));
    printed_.clear();
    evaluate(center);
    EXPECT_TRUE(printed_.isEmpty()) << "a second time";
    EXPECT_EQ(ZnTorviLyxUtils::reAssociateCenterMark(center, edgeOf(circle_)), Quorl::eOk);
    EXPECT_TRUE(ask(center, cached));
    EXPECT_TRUE(printed_.isEmpty()) << "binding says nothing";
  }
}

TEST_F(DraggedCenter, ASubstituteIsMovedInsteadOfTheReference) {
  const ZnGeMatrix3d wanted = ZnGeMatrix3d::translation({9.0, 0.0, 0.0});
  for (const bool associated : {true, false}) {
    SCOPED_TRACE(associated);
    if (!associated) changeBody(center_, [](Body& body) { body.breakAssociativity(); });
    ZnDbBlockReference substitute({2.0, 2.0, 0.0}, blockOf(center_));
    substitute.setLinetype(db_->continuousLinetype());
    substitute.setLinetypeScale(associated ? 4.0 : 6.0);
    Drag drag = with(substitute);
    drag.state = 1;
    script.transform = wanted;
    evaluateUnder(drag, center_);
    // It is handed back when everything is done with it.
    EXPECT_EQ(script.log, (Log{"layout", "evaluate", "use", "adjust", "done"}));
    EXPECT_TRUE(
        near(substitute.position(), associated ? ZnGePoint3d(9.0, 0.0, 0.0) : ZnGePoint3d(2.0, 2.0, 0.0)));
    EXPECT_TRUE(wrap(center_).blockTransform().isEqualTo(ZnGeMatrix3d()));
    EXPECT_EQ(wrap(center_).subentLinetypeScale(), substitute.linetypeScale());
    EXPECT_TRUE(statusOf(center_) == kIsUpToDateAssocStatus && drag.failures.empty());
  }
  // So does a comparison within an evaluation, where the association is to be broken.
  changeBody(center_, [](Body& body) { body.setAssociationToBeBroken(true); });
  ZnDbBlockReference substitute({2.0, 2.0, 0.0}, blockOf(center_));
  Drag drag = with(substitute);
  evaluateUnder(drag, center_);
  EXPECT_EQ(script.log, (Log{"layout", "compare", "look", "done", "break"}));
  changeBody(center_, [](Body& body) { body.setAssociationToBeBroken(false); });
  // In the drawing a free object still gets the transform that the layout says.
  evaluate(center_);
  EXPECT_TRUE(wrap(center_).blockTransform().isEqualTo(wanted));
}

TEST_F(DraggedCenter, AReferenceThatDoesNotOpenFailsTheEvaluation) {
  ZnDbLine wrong;
  Drag drag = with(wrong);
  const double scale = wrap(center_).subentLinetypeScale();
  evaluateUnder(drag, center_);
  ASSERT_EQ(drag.failures.size(), 1u);
  EXPECT_EQ(drag.failures[0], std::make_pair(bodyOf(center_), Quorl::eWrongObjectClass));
  EXPECT_EQ(statusOf(center_), kFailedToEvaluateAssocStatus);
  EXPECT_EQ(script.log, (Log{"layout", "evaluate", "use", "done"}));
  EXPECT_TRUE(wrap(center_).isAssociative());
  EXPECT_EQ(wrap(center_).subentLinetypeScale(), scale);
  evaluate(center_);
  EXPECT_EQ(statusOf(center_), kIsUpToDateAssocStatus);
}

} // namespace
