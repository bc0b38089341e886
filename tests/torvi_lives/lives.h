// Center objects of every kind as they are made, for tests that ask the same of all.
#pragma once

#include "assoc/check_links.h"
#include "quorl/db/core/undo.h"
#include "support/drawing_fixture.h"
#include "support/point_text.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/builder.h"
#include "torvi_lives/portrait.h"

using Ids = std::vector<ZnDbObjectId>;

struct Sample {
  const char* name;
  ZnDbTorviType kind;
  std::vector<const char*> inputs; // two points make a line; one point and "r" a circle; "r a b" an arc
};

inline const Sample kSamples[] = {
    {"mark on a circle", kCenterMark, {"3,4 r5"}},
    {"mark on an arc", kCenterMark, {"3,4 r5 0.5 2.5"}},
    {"line between parallels", kCenterLine, {"0,0 10,0", "0,4 10,4"}},
    {"line in a corner", kCenterLine, {"1,0 9,0", "0,2 0,8"}},
    {"chamfered corner", kEdgeExtension, {"4,0 10,0", "0,3 0,9"}},
    {"closed ring", kCenterMarkPattern, {"10,0 r2", "0,10 r2", "-10,0 r2", "0,-10 r2"}},
    {"open ring of arcs", kCenterMarkPattern, {"10,0 r2 0 4", "0,10 r2 0 4", "-10,0 r2 0 4"}},
    {"row", kCenterMarkPattern, {"0,0 r2", "7,1 r2", "14,2 r3"}},
    {"ring of three", kCenterMarkPattern, {"10,0 r2", "-5,8.660254037844386 r2", "-5,-8.660254037844386 r2"}},
    {"grid", kCenterMarkPattern, {"0,0 r1", "5,0 r1", "10,0 r1", "15,0 r1", "0,6 r1", "5,6 r1", "10,6 r1"}},
};

class LivesTest : public DrawingTest {
protected:
  struct Center {
    ZnDbObjectId id;
    Ids inputs;
    Portrait before; // as it was made
  };

  void TearDown() override {
    for (const ZnString& fault : linkFaults(*db_)) ADD_FAILURE() << fault.utf8();
    DrawingTest::TearDown();
  }

  ZnDbObjectId addInput(const std::string& text, ZnDbObjectId space = {}) {
    const size_t round = text.find('r');
    const std::vector<ZnGePoint3d> points = pointsOf(text.substr(0, round));
    if (round == std::string::npos) return add(new ZnDbLine(points.at(0), points.at(1)), space);
    std::istringstream numbers(text.substr(round + 1));
    double radius = 0.0, from = 0.0, to = 0.0;
    numbers >> radius;
    if (numbers >> from >> to) return add(new ZnDbArc(points.at(0), radius, from, to), space);
    return add(new ZnDbCircle(points.at(0), ZnGeVector3d::kZAxis, radius), space);
  }
  Ids addInputs(const Sample& sample) {
    Ids ids;
    for (const char* input : sample.inputs) ids.push_back(addInput(input));
    return ids;
  }
  // Through the record of the kind, as a command that knows no kind does it. Edges are picked at the origin.
  std::unique_ptr<ZnTorviBuilder> builderOver(ZnDbTorviType kind, const std::vector<ZnDbEdgeRef>& edges) {
    static const ZnGePoint3d picks[2];
    torvi::BuilderInput input{{}, picks, db_.get()};
    for (const ZnDbEdgeRef& edge : edges) input.edges.append(edge);
    return torvi::kindOfType(kind)->makeBuilder(input);
  }
  static std::vector<ZnDbEdgeRef> edgesOf(const Ids& inputs) {
    std::vector<ZnDbEdgeRef> edges;
    for (const ZnDbObjectId input : inputs) edges.push_back(edgeOf(input));
    return edges;
  }
  Center make(const Sample& sample) {
    Center center;
    center.inputs = addInputs(sample);
    db_->undoRecorder().startStep();
    EXPECT_EQ(builderOver(sample.kind, edgesOf(center.inputs))->createTorvi(center.id), Quorl::eOk);
    EXPECT_EQ(wrapperOf(center.id).centerType(), sample.kind);
    center.before = portraitOf(center.id);
    db_->undoRecorder().startStep();
    return center;
  }
  static ZnDbTorviObjectWrapper wrapperOf(ZnDbObjectId id) { return ZnDbTorviObjectWrapper(id); }
  static void move(const Ids& ids, const ZnGeMatrix3d& by) {
    for (const ZnDbObjectId id : ids)
      change<ZnDbEntity>(id, [&](ZnDbEntity& entity) { EXPECT_EQ(entity.transformBy(by), Quorl::eOk); });
  }
  void undo() { ASSERT_EQ(db_->undoRecorder().undo(), Quorl::eOk); }
  void redo() { ASSERT_EQ(db_->undoRecorder().redo(), Quorl::eOk); }
};
