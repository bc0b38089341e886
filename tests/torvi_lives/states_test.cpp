// What holds in every state of a center object: with its edges or without, moved, turned, mirrored or tilted
// by the user, small or large, near or far. It looks as it was left, and looking again changes nothing.
#include <cmath>

#include "quorl/file/drawing_file.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/centermark/mark_curves.h"
#include "torvi/centermark/props_provider.h"
#include "torvi_lives/lives.h"

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;
const ZnGeVector3d kX = ZnGeVector3d::kXAxis, kZ = ZnGeVector3d::kZAxis;
const ZnGePoint3d kPivot(4.0, 3.0, 0.0);

ZnGeMatrix3d turn(double degrees, const ZnGeVector3d& axis = kZ) {
  return ZnGeMatrix3d::rotation(degrees * kDegree, axis, kPivot);
}
// In the upright plane whose normal stands at the angle.
ZnGeMatrix3d mirror(double degrees) {
  const ZnGeVector3d normal(std::cos(degrees * kDegree), std::sin(degrees * kDegree), 0.0);
  return ZnGeMatrix3d::mirroring(ZnGePlane(kPivot, normal));
}

const struct Deed {
  const char* name;
  ZnGeMatrix3d map;
} kDeeds[] = {{"left alone", ZnGeMatrix3d()},
              {"moved", ZnGeMatrix3d::translation({0.1, -7.3, 2.0})},
              {"turned", turn(45.0)},
              {"turned round", turn(135.0)},
              {"turned about", turn(180.0)},
              {"tilted", turn(70.0, {1.0, 2.0, 0.5})},
              {"turned over", turn(180.0, kX)},
              {"mirrored across", mirror(0.0)},
              {"mirrored upwards", mirror(90.0)},
              {"mirrored at 45", mirror(45.0)},
              {"mirrored at 135", mirror(135.0)},
              {"mirrored askew", mirror(17.0)},
              {"mirrored through its plane", ZnGeMatrix3d::mirroring(ZnGePlane(kPivot, kZ))},
              {"mirrored and tilted", turn(40.0, {0.3, 1.0, 0.0}) * mirror(33.0)},
              {"scaled", ZnGeMatrix3d::scaling(2.7, kPivot)},
              {"scaled, mirrored and tilted", turn(20.0, kX) * ZnGeMatrix3d::scaling(0.3) * mirror(5.0)}};

enum class Edges { kThere, kOneErased, kAllErased, kLetGo };

class States : public LivesTest {
protected:
  using Line = ZnDbCenterLineObjectWrapper;

  // Each side its own lengths, one of them hidden.
  static void giveOwnLengths(ZnDbObjectId id) {
    if (wrapperOf(id).centerType() == kCenterMark) {
      auto mark = wrap(id);
      for (const ZnCenterMarkSubEntType side : torvi::kExtensionLines) {
        EXPECT_EQ(mark.setExtension(side, 3.0 + int{side}), Quorl::eOk);
        EXPECT_EQ(mark.setOvershoot(side, 0.25 * int{side}), Quorl::eOk);
      }
      EXPECT_EQ(mark.setSubEntVisibility(eLeftLine, false), Quorl::eOk);
    } else if (wrapperOf(id).centerType() == kCenterLine) {
      Line line(id);
      line.setStartExtension(3.0);
      line.setEndOvershoot(1.25);
    }
    evaluate(id);
  }
  void lose(const Center& center, Edges edges) {
    if (edges == Edges::kLetGo) EXPECT_EQ(wrapperOf(center.id).breakAssociativity(), Quorl::eOk);
    for (const ZnDbObjectId input : center.inputs)
      if (edges == Edges::kAllErased || (edges == Edges::kOneErased && input == center.inputs[0]))
        erase(input);
    evaluateChanges();
    if (edges == Edges::kLetGo) evaluate(center.id);
  }
  std::string bytes() {
    std::string written;
    ZnFileError error;
    EXPECT_EQ(zndbDrawingToBytes(*db_, ZnDrawingFormat::kText, written, error), Quorl::eOk) << error.text();
    return written;
  }
  // It counts as up to date, and evaluating it in any way leaves every byte and both directions of the
  // history.
  void expectAtRest(ZnDbObjectId id) {
    EXPECT_TRUE(wrapperOf(id).doesActionMatchCurrentGeometry());
    db_->undoRecorder().startStep();
    addLine({90.0, 90.0, 0.0}, {91.0, 90.0, 0.0});
    undo();
    const size_t depth = db_->undoRecorder().undoDepth();
    const std::string before = bytes();
    evaluateChanges();
    evaluate(id);
    wrapperOf(id).explicitlyEvaluateCenterObject();
    EXPECT_EQ(db_->undoRecorder().undoDepth(), depth);
    EXPECT_TRUE(bytes() == before);
    EXPECT_EQ(db_->undoRecorder().redo(), Quorl::eOk);
  }
  // As the user left it, not as it was before; again and again.
  static void expectStaysAsLeft(ZnDbObjectId id) {
    Portrait left = portraitOf(id);
    for (int i = 0; i < 3; ++i) {
      evaluate(id);
      left.object = portraitOf(id).object;
      EXPECT_TRUE(looksLike(id, left, PortraitPart::kAll));
    }
  }
  void beginAnew() {
    TearDown();
    SetUp();
  }
  double stored(ZnDbObjectId id, const wchar_t* name) {
    return ZnDbHolder<ZnDbTorviActionBody>(bodyOf(id))->valueOf(name, -1.0);
  }
};

TEST_F(States, AnObjectStaysAsTheUserLeftItAndRests) {
  for (const Sample& sample : kSamples) {
    if (sample.kind == kCenterMarkPattern) continue;
    for (const Edges edges : {Edges::kThere, Edges::kOneErased, Edges::kAllErased, Edges::kLetGo})
      for (const Deed& deed : kDeeds) {
        SCOPED_TRACE(testing::Message() << sample.name << ", " << int(edges) << ", " << deed.name);
        const Center center = make(sample);
        giveOwnLengths(center.id);
        lose(center, edges);
        move({center.id}, deed.map);
        // An edge extension that has one edge left goes back to it.
        const bool isFree =
            sample.kind == kCenterLine ? edges != Edges::kThere : !wrapperOf(center.id).isAssociative();
        if (isFree && deed.map.scale() == 1.0) expectStaysAsLeft(center.id);
        evaluate(center.id);
        expectAtRest(center.id);
        beginAnew();
      }
  }
}

TEST_F(States, AMarkInAnyPlaneStaysAsTheUserLeftIt) {
  for (const ZnGeVector3d& normal : {-kZ, kX, ZnGeVector3d(0.0, 1.0, 1.0), ZnGeVector3d(-1.0, 0.2, -0.5)})
    for (const Deed& deed : kDeeds)
      for (const bool withCircle : {false, true}) {
        SCOPED_TRACE(testing::Message() << normal.x << " " << normal.z << " " << deed.name << withCircle);
        if (deed.map.scale() != 1.0) continue; // what is scaled keeps its overshoots, and with its circle all
        const ZnDbObjectId circle = addCircle({3.0, 1.0, 0.0}, 5.0, normal), mark = addMark(circle);
        giveOwnLengths(mark);
        if (!withCircle) wrapperOf(mark).breakAssociativity();
        evaluate(mark);
        move(withCircle ? Ids{circle, mark} : Ids{mark}, deed.map);
        expectStaysAsLeft(mark);
        expectAtRest(mark);
      }
}

// Edges inside of a block that stands turned, mirrored and scaled, or behind a window.
TEST_F(States, OverEdgesThatAreSeenThroughOthersItRests) {
  for (const Sample& sample : kSamples)
    for (const Deed& deed : kDeeds)
      for (const bool behindWindow : {false, true}) {
        if (sample.kind == kCenterMarkPattern) continue;
        if (behindWindow && std::fabs((deed.map * kZ).normal().z) < 0.99) continue; // no circle is seen there
        SCOPED_TRACE(testing::Message() << sample.name << ", " << deed.name << ", " << behindWindow);
        const ZnDbObjectId block = addEmptyBlock(), reference = add(new ZnDbBlockReference({}, block));
        change<ZnDbBlockReference>(reference, [&](auto& held) { held.setBlockTransform(deed.map); });
        ZnArray<ZnDbObjectId> path{reference};
        if (behindWindow) path.insertAt(0, addViewport(0.3, {9.0, 5.0, 0.0}, {}, 0.4));
        if (behindWindow) ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
        std::vector<ZnDbEdgeRef> edges;
        for (const char* input : sample.inputs) {
          ZnArray<ZnDbObjectId> whole = path;
          whole.append(addInput(input, block));
          edges.push_back(edgeAlong(whole));
        }
        ZnDbObjectId id;
        ASSERT_EQ(builderOver(sample.kind, edges)->createTorvi(id), Quorl::eOk);
        giveOwnLengths(id);
        expectAtRest(id);
        change<ZnDbBlockReference>(reference, [](auto& held) { held.transformBy(turn(25.0)); });
        evaluateChanges();
        expectAtRest(id);
        wrapperOf(id).breakAssociativity();
        evaluate(id);
        expectStaysAsLeft(id);
        expectAtRest(id);
        beginAnew();
      }
}

TEST_F(States, TurningIsNoScaling) {
  const Center line = make(kSamples[2]);
  Ids all{line.id};
  for (int i = 0; i < 30; ++i) all.push_back(addMark(addCircle({i * 7.0, 1.0, 0.0}, 1.0 + i)));
  for (const ZnDbObjectId id : all) wrapperOf(id).breakAssociativity();
  for (const bool eachTime : {false, true})
    for (int i = 0; i < 20; ++i) {
      move(all, turn(0.7 + 17.3 * i));
      for (const ZnDbObjectId id : all)
        if (eachTime || i == 19) evaluate(id);
    }
  EXPECT_EQ(stored(line.id, L"EndExtLength"), 1e60);
  for (size_t i = 1; i < all.size(); ++i) EXPECT_EQ(stored(all[i], L"VerticalEndExtension"), 1e60) << i;
}

TEST_F(States, AMarkSeenThroughATwistedWindowStaysLevel) {
  const ZnDbObjectId window = addViewport(0.3, {100.0, 50.0, 0.0}, {10.0, 0.0}, 30.0 * kDegree);
  const ZnDbObjectId circle = addCircle({3.0, 4.0, 0.0}, 5.0);
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  ZnDbObjectId mark;
  ASSERT_EQ(ZnTorviLyxUtils::createCenterMark(edgeAlong({window, circle}), mark, db_.get()), Quorl::eOk);
  giveOwnLengths(mark);
  for (const Deed& deed : kDeeds) {
    if (std::fabs((deed.map * kZ).z) < 0.99) continue; // a circle seen at a slant is none
    SCOPED_TRACE(deed.name);
    move({circle}, deed.map);
    evaluateChanges();
    EXPECT_NEAR(std::fabs(wrap(mark).getSubentDirection(eRightLine).dotProduct(kX)), 1.0, 1e-14);
    expectAtRest(mark);
  }
}

TEST_F(States, AFreeLineWithoutLengthKnowsItsDirection) {
  const Center center = make(kSamples[2]);
  lose(center, Edges::kAllErased);
  Line line(center.id);
  const auto setLengths = [&](double length) {
    line.setStartExtension(length), line.setEndExtension(length);
    line.setStartOvershoot(0.0), line.setEndOvershoot(0.0);
    evaluate(center.id);
    expectAtRest(center.id);
  };
  setLengths(0.0);
  move({center.id}, ZnGeMatrix3d::rotation(120.0 * kDegree, kZ, {5.0, 2.0, 0.0}));
  evaluate(center.id);
  setLengths(5.0);
  ZnGeLineSeg3d drawn;
  ASSERT_EQ(line.getCenterLineGeometry(drawn, true), Quorl::eOk);
  EXPECT_TRUE(near(drawn.startPoint(), {7.5, 2.0 - 5.0 * std::sqrt(0.75), 0.0}));
  EXPECT_TRUE(near(drawn.endPoint(), {2.5, 2.0 + 5.0 * std::sqrt(0.75), 0.0}));
}

TEST_F(States, WhatShrinksToNothingStillMatches) {
  const Center line = make(kSamples[2]);
  Line(line.id).setStartExtension(0.0), Line(line.id).setEndExtension(0.0);
  Line(line.id).setStartOvershoot(0.0), Line(line.id).setEndOvershoot(0.0);
  evaluate(line.id);
  expectAtRest(line.id);
  const ZnDbObjectId mark = addMark(addCircle(kPivot, 10.0));
  wrap(mark).setExtension(eLeftLine, 0.5); // just to the end of the cross, with its overshoot
  evaluate(mark);
  expectAtRest(mark);
  wrapperOf(mark).breakAssociativity();
  wrap(mark).setExtension(eTopLine, -5.0); // hidden if it had its circle, as it was without
  evaluate(mark);
  expectAtRest(mark);
}

// An edge inside of a block is gone when any part of the way to it is.
TEST_F(States, AnErasedNestedEdgeIsNoneBeforeAndAfterSaving) {
  const ZnDbObjectId block = addEmptyBlock(), reference = add(new ZnDbBlockReference({}, block));
  const Ids lines{addInput("4,0 10,0", block), addInput("0,3 0,9", block)};
  ZnDbObjectId id;
  ASSERT_EQ(builderOver(kEdgeExtension, {edgeAlong({reference, lines[0]}), edgeAlong({reference, lines[1]})})
                ->createTorvi(id),
            Quorl::eOk);
  for (const ZnDbObjectId line : lines) {
    EXPECT_TRUE(wrapperOf(id).isAssociative());
    erase(line);
    evaluateChanges();
    EXPECT_FALSE(wrapperOf(id).isFullyAssociative());
    expectAtRest(id);
  }
  EXPECT_FALSE(wrapperOf(id).isAssociative());
  const std::string written = bytes();
  ZnFileError error;
  const auto opened = zndbDrawingFromBytes(written, error);
  ASSERT_TRUE(opened) << error.text();
  std::string again;
  EXPECT_EQ(zndbDrawingToBytes(*opened, ZnDrawingFormat::kText, again, error), Quorl::eOk);
  EXPECT_EQ(again, written);
}

// Told by its place and its size, as drawn and as computed from the same numbers.
TEST_F(States, MarksOfEverySizeAndPlace) {
  for (const double radius : {1e-3, 1.0, 1e7})
    for (const double away : {0.0, 1e5, 1e8}) {
      SCOPED_TRACE(testing::Message() << radius << " at " << away);
      const ZnGeVector3d normal(0.3, -0.2, 0.9);
      const ZnDbObjectId circle = addCircle({away, -0.7 * away, 0.1 * away}, radius, normal);
      const ZnDbObjectId mark = addMark(circle);
      const double slack = 1e-9 * radius + 1e-15 * away;
      for (const char* state : {"made", "turned", "moved", "free"}) {
        SCOPED_TRACE(state);
        if (state[0] == 't') wrap(mark).setRotation(0.7);
        if (state[0] == 'm') move({circle}, ZnGeMatrix3d::translation({radius, 2.0 * radius, 0.0}));
        if (state[0] == 'f') wrapperOf(mark).breakAssociativity();
        evaluate(mark);
        expectAtRest(mark);
        const ZnGeMatrix3d place = wrap(mark).blockTransform();
        EXPECT_TRUE(near(place * ZnGePoint3d(), ZnDbHolder<ZnDbCircle>(circle)->center(), 0.0));
        const ZnGeVector3d right = wrap(mark).getSubentDirection(eRightLine);
        EXPECT_NEAR(right.length(), 1.0, 1e-14);
        EXPECT_NEAR(right.dotProduct(normal), 0.0, 1e-14);
        EXPECT_NEAR(wrap(mark).rotation(), state[1] == 'a' ? 0.0 : 0.7, 1e-14);
        const ZnGeLineSeg3d line = wrap(mark).getSubentLineGeometry(eRightLine, false);
        EXPECT_NEAR(line.length(), 0.8 * radius, slack + 4e-8 * (away > 1e6));
      }
    }
}

// A mark that looks as another one would, as previews ask it.
class OtherMark : public ZnDbCenterMarkPropsProvider {
public:
  using ZnDbCenterMarkPropsProvider::ZnDbCenterMarkPropsProvider;
  double refCircleRadius() const override { return 4.0; }
  double overshoot(ZnCenterMarkSubEntType type) const override { return type == eLeftLine ? 2.0 : 0.0; }
  double extensionLength(ZnCenterMarkSubEntType type, double radius) const override {
    return type == eTopLine ? 7.0 : radius;
  }
};

TEST_F(States, TheGeneratorAsksTheProviderAlone) {
  const ZnDbObjectId circle = addCircle({0.0, 0.0, 0.0}, 10.0), mark = addMark(circle);
  ZnArray<ZnGeCurve3d*> curves;
  ASSERT_EQ(generateCenterMarkCurves(curves, OtherMark(mark)), Quorl::eOk);
  const double reaches[] = {6.0, 4.0, 4.0, 7.0};
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines) {
    const auto& drawn = static_cast<const ZnGeLineSeg3d&>(*curves[line]);
    const bool startsFar = line == eLeftLine || line == eBottomLine;
    EXPECT_NEAR((startsFar ? drawn.startPoint() : drawn.endPoint()).asVector().length(),
                reaches[line - eLeftLine], 1e-12);
  }
  ZnDbTorviActionBodyUtils::deleteCurves(curves);
  // The radius is remembered although somebody reads the body.
  const ZnDbHolder<ZnDbTorviActionBody> reader(bodyOf(mark));
  change<ZnDbCircle>(circle, [](ZnDbCircle& held) { held.setRadius(6.0); });
  evaluateChanges();
  EXPECT_EQ(stored(mark, L"CachedCircleRadius"), 6.0);
}

TEST_F(States, OnlyMarksCountAsMarks) {
  int marks = 0;
  for (const Sample& sample : kSamples) {
    make(sample);
    marks += sample.kind == kCenterMark;
  }
  ZnArray<ZnDbObjectId> actions;
  for (int i = 0; i < 2; ++i) ZnTorviLyxUtils::getAllCenterMarkActions(actions, db_.get());
  EXPECT_EQ(actions.length(), marks);
}

TEST_F(States, LoadingASecondObjectForgetsTheFirst) {
  const Center first = make(kSamples[5]), second = make(kSamples[5]);
  const auto builder = builderOver(kCenterMarkPattern, {});
  ASSERT_EQ(builder->loadTorvi(first.id), Quorl::eOk);
  builder->addInputEdge(edgeOf(addCircle({0.0, 20.0, 0.0}, 2.0)));
  builder->removeInputEdge(edgeOf(first.inputs[1]));
  ASSERT_EQ(builder->loadTorvi(second.id), Quorl::eOk);
  EXPECT_EQ(builder->modifyTorvi(), Quorl::eOk);
  EXPECT_TRUE(looksLike(second.id, second.before));
}

// What could not be placed stays with the caller, who hears of it.
TEST_F(States, ABlockThatCannotBeFilledSaysSo) {
  ZnDbHolder<ZnDbBlockTableRecord> space;
  ASSERT_EQ(space.openForWrite(db_->modelSpaceId()), Quorl::eOk);
  const std::unique_ptr<ZnDbEntity> looping(new ZnDbBlockReference({}, db_->modelSpaceId()));
  ZnDbObjectId reference;
  ZnArray<ZnDbObjectId> placed;
  const ZnArray<ZnDbEntity*> entities{new ZnDbLine, nullptr, looping.get()};
  EXPECT_EQ(ZnDbTorviActionBodyUtils::createSubBlockForEntities(space.object(), entities, reference, placed),
            Quorl::eNullObjectPointer);
  EXPECT_EQ(placed.length(), 1);
  EXPECT_EQ(looping->database(), nullptr);
}

} // namespace
