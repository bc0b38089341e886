// Wrappers on what is no center object, or not any more: each operation has its neutral answer.
#include "torvi/core/object_pointer.h"
#include "torvi/style/style.h"
#include "torvi_core/scripted_body.h"

namespace {

using Wrapper = ZnDbTorviObjectWrapper;

class DeadWrapper : public ScriptedTest {
protected:
  struct Subject {
    const char* what;
    Wrapper wrapper;
    Quorl::ErrorStatus writing; // of what goes to the body
    bool hasReference;          // the reference still opens
  };

  std::vector<Subject> subjects() {
    const ZnDbObjectId plain = addReference(addEmptyBlock(), ZnGeMatrix3d::translation({1.0, 2.0, 0.0}));
    const ZnDbObjectId dead = addMark(circle_), bodiless = addMark(circle_);
    const Wrapper wrapperOfDead(dead), wrapperOfBodiless(bodiless);
    for (const ZnDbObjectId mark : {dead, bodiless}) {
      const ZnDbObjectId body = bodyOf(mark), action = ZnDbAssocActionBody::parentAction(body);
      erase(body);
      erase(action);
    }
    erase(dead);
    return {{"null", Wrapper(ZnDbObjectId()), Quorl::eNullObjectId, false},
            {"circle", Wrapper(circle_), Quorl::eNullObjectId, false},
            {"plain reference", Wrapper(plain), Quorl::eNullObjectId, true},
            {"erased", wrapperOfDead, Quorl::eWasErased, false},
            {"without body", wrapperOfBodiless, Quorl::eWasErased, true}};
  }
};

TEST_F(DeadWrapper, ReadingGivesNeutralValues) {
  put(L"CENTERLTSCALE", ZnRxVariableValue::ofDouble(2.5));
  for (const Subject& subject : subjects()) {
    SCOPED_TRACE(subject.what);
    const Wrapper& wrapper = subject.wrapper;
    ZnArray<ZnDbEdgeRef> edges(1);
    ZnArray<ZnDbObjectId> ids{wrapper.centerObjId()};
    Keys keys{ZnString(L"k")};
    OwnedCurves owned;
    for (const Quorl::ErrorStatus status :
         {wrapper.getEdgeRefs(edges), wrapper.getAssociatedEntitiesIds(ids), wrapper.getCenterEntitesIds(ids),
          wrapper.getOutputEdgeKeys(keys), wrapper.getCenterObjGeometry(owned.curves)})
      EXPECT_EQ(status, Quorl::eOk);
    EXPECT_EQ(edges.length() + ids.length() + keys.length() + owned.curves.length(), 2);
    EXPECT_TRUE(wrapper.styleDepId().isNull() && wrapper.getOutputEdge(L"1").isNull() &&
                wrapper.getDependentViewportId().isNull() && wrapper.doesActionMatchCurrentGeometry());
    EXPECT_FALSE(wrapper.isAssociative() || wrapper.isFullyAssociative() ||
                 wrapper.isExplicitlyDeassociatived() || wrapper.associationToBeBroken() ||
                 wrapper.isCenterEvaluationSupressed() || wrapper.isAutoMatchExtension(1e60));
    EXPECT_EQ(wrapper.edgeRefCount() + wrapper.cachedViewportScale() + wrapper.autoMatchExtension(), 0.0);
    EXPECT_TRUE(wrapper.subentLineWeight() == -1 && wrapper.subentLinetypeScale() == 2.5);
    EXPECT_EQ(wrapper.subentLineType(), ZnTorviStyle::getCenterLineTypeName());
    if (subject.hasReference) continue;
    EXPECT_TRUE(wrapper.colorIndex() == 256 && wrapper.subentColorIndex() == 256);
    EXPECT_EQ(wrapper.subentColor(), ZnCmColor());
    EXPECT_EQ(wrapper.linetype(), ZnTorviStyle::getCenterLineTypeName());
    EXPECT_TRUE(wrapper.lineWeight() == -1 && wrapper.linetypeScale() == 2.5);
    EXPECT_TRUE(wrapper.blockTransform().isEqualTo(ZnGeMatrix3d()));
  }
}

TEST_F(DeadWrapper, WritingGivesTheStatusOfTheOpening) {
  for (Subject& subject : subjects()) {
    SCOPED_TRACE(subject.what);
    Wrapper& wrapper = subject.wrapper;
    for (const Quorl::ErrorStatus status :
         {wrapper.setStyleDepId({}), wrapper.breakAssociativity(), wrapper.setSubentLineWeight(1),
          wrapper.supressCenterEvaluation()})
      EXPECT_EQ(status, subject.writing);
    EXPECT_EQ(wrapper.setSubentColorIndex(4) == Quorl::eOk, subject.hasReference);
    EXPECT_EQ(wrapper.setSubentColor(ZnCmColor::fromIndex(5)) == Quorl::eOk, subject.hasReference);
    if (subject.hasReference) EXPECT_EQ(wrapper.colorIndex(), 5);
  }
}

TEST_F(DeadWrapper, KindIsAMatterOfTheBodysClass) {
  const ZnDbObjectId mark = addMark(circle_), derived = make({circle_}),
                     unknown = make({circle_}, ScriptedPlainBody::desc());
  ZnResBufList context(znutBuildList(5003, 7, 5000));
  for (const ZnDbObjectId id :
       {mark, derived, unknown, addReference(addEmptyBlock()), circle_, ZnDbObjectId()}) {
    const bool isMark = id == mark || id == derived, hasBody = isMark || id == unknown;
    const ZnDbTorviType kind = isMark ? kCenterMark : kTorviNone;
    const Wrapper wrapper(id);
    EXPECT_EQ(wrapper.centerObjId(), id);
    EXPECT_EQ(wrapper.centerType(), kind);
    EXPECT_EQ(wrapper.isCenterObject(), isMark);
    EXPECT_EQ(wrapper.actionBody().isNull(), !hasBody);
    EXPECT_EQ(Wrapper::getCenterType(id), kind);
    EXPECT_EQ(Wrapper::isCenterObject(id), hasBody);
    const ZnDbTorviObjectPointer<Wrapper> pointer(id);
    EXPECT_EQ(pointer.openStatus(), isMark ? Quorl::eOk : Quorl::eInvalidInput);
    EXPECT_EQ(pointer.object() != nullptr, isMark);
    EXPECT_EQ(pointer.centerObject(), id);
    EXPECT_EQ(dynamic_cast<ZnDbCenterMarkObjectWrapper*>(pointer.object()) != nullptr, isMark);
    for (const ZnDbTorviType type :
         {kCenterMark, kCenterLine, kEdgeExtension, kCenterMarkPattern, kTorviAny}) {
      EXPECT_EQ(ZnTorviLyxUtils::isCenterObject(id, type), isMark) << type;
      EXPECT_EQ(ZnTorviLyxUtils::isCenterObjectOfType(id, type),
                isMark && (type == kTorviAny || type == kCenterMark));
      EXPECT_EQ(ZnTorviLyxUtils::isCenterObject(id, type, context), isMark);
      ASSERT_TRUE(context) << "only a pattern asked as one changes it";
    }
  }
  EXPECT_FALSE(ZnTorviLyxUtils::isCenterObject(static_cast<Wrapper*>(nullptr), kTorviAny, context));
  EXPECT_EQ(Wrapper::getCenterTypeFromActionBody(circle_), kTorviNone);
  // A body brought down with its reference still names it as a center object.
  erase(mark);
  EXPECT_TRUE(Wrapper::isCenterObject(mark));
  EXPECT_EQ(Wrapper(mark).centerType(), kCenterMark);
}

} // namespace
