// Center objects whose shape is told by a script, so that the core's sequences can be watched and driven into
// every corner without a kind's own geometry.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "assoc/check_links.h"
#include "support/drawing_fixture.h"
#include "torvi/core/builder.h"
#include "torvi/core/layout.h"

using Curves = ZnArray<ZnGeCurve3d*>;
using Keys = ZnArray<ZnString>;

struct Script {
  std::string entities = "l";                         // l a line, a an arc, 0 none
  std::vector<std::wstring> keys;                     // of the entities, and of the curves
  std::function<void(Curves&)> generate = oneSegment; // what evaluation and comparison draw
  std::function<void(ZnArray<ZnDbEntity*>&)> createForKey;
  Quorl::ErrorStatus createStatus = Quorl::eOk, evaluateStatus = Quorl::eOk, compareStatus = Quorl::eOk;
  ZnGeMatrix3d transform;
  bool rotationChecked = true;
  std::vector<std::string> log; // what the core asked for, in order

  static void oneSegment(Curves& curves) {
    curves.append(new ZnGeLineSeg3d(ZnGePoint3d(0.0, 0.0, 0.0), ZnGePoint3d(1.0, 0.0, 0.0)));
  }
  int count(const std::string& what) const;
};
extern Script script;

class ScriptedLayout : public ZnDbTorviLayout {
public:
  explicit ScriptedLayout(ZnDbObjectId centerObject);
  Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, Keys& keys) override;
  Quorl::ErrorStatus evaluateGeometry(Curves& curves, Keys& keys) override;
  Quorl::ErrorStatus compareGeometry(Curves& curves, Keys& keys) override;
  Quorl::ErrorStatus adjustEntities(const ZnArray<ZnDbEntity*>& entities, const Keys& keys) override;
  Quorl::ErrorStatus createEntitiesForKey(ZnArray<ZnDbEntity*>& entities, const ZnString& key) override;
  using ZnDbTorviLayout::getInputCircles;
  using ZnDbTorviLayout::getInputLineSegments;
};

// Counts as a center mark, so that the wrapper finds it.
class ScriptedMarkBody : public ZnDbCenterMarkActionBody {
  ZNRX_DECLARE_MEMBERS(ScriptedMarkBody)

public:
  using ZnDbTorviActionBody::breakAssociativity;
  Quorl::ErrorStatus breakAssociativity() override;
  using ZnDbTorviActionBody::cachedViewportScale;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetype;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetypeScale;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLineWeight;
  using ZnDbTorviActionBody::getCachedAssociateStatus;
  using ZnDbTorviActionBody::getCenterObjGeometry;
  using ZnDbTorviActionBodyBase::getEdgeRef;

protected:
  ZnDbTorviLayout* getLayout() const override { return new ScriptedLayout(centerObjectId()); }
  bool rotationToBeChecked() const override { return script.rotationChecked; }
};

// Of no kind that the module knows.
class ScriptedPlainBody : public ZnDbTorviActionBody {
  ZNRX_DECLARE_MEMBERS(ScriptedPlainBody)

protected:
  ZnDbTorviLayout* getLayout() const override { return new ScriptedLayout(centerObjectId()); }
};

class ScriptedBuilder : public ZnTorviBuilder {
public:
  explicit ScriptedBuilder(ZnDbDatabase* database, ZnRxClass* bodyClass = ScriptedMarkBody::desc())
      : ZnTorviBuilder(bodyClass, database) {}
  using ZnTorviBuilder::centerObjId;
  using ZnTorviBuilder::convertEdgeRefToOriginalForm;
  using ZnTorviBuilder::createActionAndActionBody;
  using ZnTorviBuilder::createEntitiesInBTR;
  using ZnTorviBuilder::hasInputEdgeChangesInEdit;
  using ZnTorviBuilder::objectLoaded;
  using ZnTorviBuilder::reassociateActionBodyToInputEdge;

  mutable std::vector<ZnDbEdgeRef> addedToBody; // what the hook was given
  Quorl::ErrorStatus hookStatus = Quorl::eOk, initStatus = Quorl::eOk;

protected:
  ZnDbTorviLayout* getLayout() const override { return new ScriptedLayout(centerObjId()); }
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId) const override { return initStatus; }
  Quorl::ErrorStatus subAddInputEdgeToBody(ZnDbTorviActionBody* body, const ZnDbEdgeRef& edge) const override;
};

class ScriptedTest : public DrawingTest {
protected:
  void SetUp() override;
  void TearDown() override;
  void withdrawClasses() override;

  ZnDbObjectId make(const std::vector<ZnDbObjectId>& inputs, ZnRxClass* bodyClass = ScriptedMarkBody::desc());
  ZnDbObjectId addEmptyBlock();
  ZnDbObjectId addReference(ZnDbObjectId block, const ZnGeMatrix3d& transform = {}, ZnDbObjectId space = {});
  template<class Body = ScriptedMarkBody, class Ask> static auto ask(ZnDbObjectId center, Ask&& question) {
    ZnDbHolder<Body> body(bodyOf(center));
    EXPECT_TRUE(body.isOpen());
    return question(*body);
  }
  template<class Change> static void changeBody(ZnDbObjectId center, Change&& doIt) {
    change<ScriptedMarkBody>(bodyOf(center), doIt);
  }
  static ZnDbAssocStatus statusOf(ZnDbObjectId center) {
    return ask<ZnDbAssocActionBody>(center, [](const ZnDbAssocActionBody& body) { return body.status(); });
  }
  static ZnDbObjectId blockOf(ZnDbObjectId reference) {
    return ZnDbHolder<ZnDbBlockReference>(reference)->blockTableRecord();
  }
  static std::vector<ZnDbObjectId> liveEntities(ZnDbObjectId block);
};

class CircleTest : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
  }
  ZnDbObjectId circle_;
};

// With a center object on the circle.
class CenterTest : public CircleTest {
protected:
  void SetUp() override {
    CircleTest::SetUp();
    center_ = make({circle_});
  }
  ZnDbObjectId center_;
};

// Curves of a case, deleted with it.
struct OwnedCurves {
  ~OwnedCurves() {
    for (const ZnGeCurve3d* curve : curves) delete curve;
  }
  Curves curves;
};
