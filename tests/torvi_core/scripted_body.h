// Center objects whose shape is told by a script, so that the core's sequences can be watched and driven into
// every corner without a kind's own geometry.
#pragma once

#include <algorithm>
#include <functional>

#include "assoc/check_links.h"
#include "support/drawing_fixture.h"
#include "torvi/core/builder.h"
#include "torvi/core/layout.h"

using Curves = ZnArray<ZnGeCurve3d*>;
using Keys = ZnArray<ZnString>;
using Log = std::vector<std::string>;

struct Script {
  std::string entities = "l";                         // l a line, a an arc, 0 none
  std::vector<std::wstring> keys;                     // of the entities, and of the curves
  std::function<void(Curves&)> generate = oneSegment; // what evaluation and comparison draw
  std::function<void(ZnArray<ZnDbEntity*>&)> createForKey;
  Quorl::ErrorStatus evaluateStatus = Quorl::eOk, compareStatus = Quorl::eOk;
  ZnGeMatrix3d transform;
  Log log; // what the core asked for, in order

  static void oneSegment(Curves& curves) {
    curves.append(new ZnGeLineSeg3d(ZnGePoint3d(0.0, 0.0, 0.0), ZnGePoint3d(1.0, 0.0, 0.0)));
  }
  auto count(const char* what) const { return std::count(log.begin(), log.end(), what); }
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
};

// Counts as a center mark, so that the wrapper finds it.
class ScriptedMarkBody : public ZnDbCenterMarkActionBody {
  ZNRX_DECLARE_MEMBERS(ScriptedMarkBody)

public:
  using ZnDbTorviActionBody::breakAssociativity;
  Quorl::ErrorStatus breakAssociativity() override;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetype;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetypeScale;
  using ZnDbTorviActionBody::doesActionMatchCurrentSubEntLineWeight;
  using ZnDbTorviActionBody::getCachedAssociateStatus;
  using ZnDbTorviActionBody::getCenterObjGeometry;
  using ZnDbTorviActionBodyBase::getEdgeRef;

protected:
  ZnDbTorviLayout* getLayout() const override { return new ScriptedLayout(centerObjectId()); }
  bool rotationToBeChecked() const override { return true; }
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
  using ZnTorviBuilder::hasInputEdgeChangesInEdit;
  using ZnTorviBuilder::objectLoaded;

protected:
  ZnDbTorviLayout* getLayout() const override { return new ScriptedLayout(centerObjId()); }
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId) const override { return Quorl::eOk; }
};

class ScriptedTest : public DrawingTest {
protected:
  void SetUp() override;
  void TearDown() override;
  void withdrawClasses() override;

  ZnDbObjectId make(const std::vector<ZnDbObjectId>& inputs, ZnRxClass* bodyClass = ScriptedMarkBody::desc());
  template<class Ask> static auto ask(ZnDbObjectId center, Ask&& question) {
    return DrawingTest::ask<ScriptedMarkBody>(center, question);
  }
  template<class Change> static void changeBody(ZnDbObjectId center, Change&& doIt) {
    DrawingTest::changeBody<ScriptedMarkBody>(center, doIt);
  }
  ZnDbObjectId circle_; // of radius 5 about the origin
};

// With a center object on the circle.
class CenterTest : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    center_ = make({circle_});
  }
  ZnDbObjectId center_;
};
