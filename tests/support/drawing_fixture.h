// A working drawing with the module loaded: adds shapes and center marks, changes and asks them, and checks
// at the end of every case that the drawing is sound.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/host_drawing.h"
#include "support/point_text.h"
#include "torvi/centermark/action_body.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/host/association.h"

class DrawingTest : public testing::Test {
protected:
  static constexpr const char* kModule = QUORL_BIN_DIR "/ZnDbTorvi.lyx";

  void SetUp() override {
    db_ = std::make_unique<ZnDbDatabase>();
    zndbHostApplicationServices()->setWorkingDatabase(db_.get());
    usualSink_ = znutSetPrintSink([this](const ZnString& text) { printed_ += text; });
    ASSERT_EQ(znrxLoadModule(ZnString::fromUtf8(kModule)), Quorl::eOk)
        << ZnRxDynamicLinker::instance().lastError().utf8();
  }

  void TearDown() override {
    for (const ZnString& fault : db_->audit(false)) ADD_FAILURE() << fault.utf8();
    zndbHostApplicationServices()->setWorkingDatabase(nullptr);
    db_.reset();
    withdrawClasses();
    znrxUnloadModule(L"ZnTorvi.pyx"); // which keeps the module, where it is loaded
    EXPECT_EQ(znrxUnloadModule(ZnString::fromUtf8(kModule)), Quorl::eOk);
    znutSetPrintSink(usualSink_);
  }

  // For classes of a test's own that derive from the module's: between the drawing's end and the module's.
  virtual void withdrawClasses() {}

  // Shapes, in model space
  ZnDbObjectId add(ZnDbEntity* entity, ZnDbObjectId space = {}) {
    entity->setDatabaseDefaults(db_.get());
    return append(space.isNull() ? db_->modelSpaceId() : space, entity);
  }
  ZnDbObjectId addCircle(const ZnGePoint3d& center, double radius,
                         const ZnGeVector3d& normal = ZnGeVector3d::kZAxis) {
    return add(new ZnDbCircle(center, normal, radius));
  }
  ZnDbObjectId addArc(const ZnGePoint3d& center, double radius, double startAngle, double endAngle) {
    return add(new ZnDbArc(center, radius, startAngle, endAngle));
  }
  ZnDbObjectId addLine(const ZnGePoint3d& start, const ZnGePoint3d& end) {
    return add(new ZnDbLine(start, end));
  }
  ZnDbObjectId addLineOf(const char* ends) { return addLine(pointsOf(ends).at(0), pointsOf(ends).at(1)); }
  static void setLine(ZnDbObjectId id, const ZnGePoint3d& start, const ZnGePoint3d& end) {
    change<ZnDbLine>(id, [&](ZnDbLine& line) {
      line.setStartPoint(start);
      line.setEndPoint(end);
    });
  }
  static void setLine(ZnDbObjectId id, const char* ends) {
    setLine(id, pointsOf(ends).at(0), pointsOf(ends).at(1));
  }
  void moveLine(ZnDbObjectId id, const char* ends) {
    setLine(id, ends);
    evaluateChanges();
  }
  ZnDbObjectId addLinetype(const ZnString& name, std::initializer_list<double> dashes, bool scaledToFit) {
    return addRecord<ZnDbLinetypeTableRecord>(db_->linetypeTableId(), name, [&](auto& record) {
      record.setDashCount(static_cast<int>(dashes.size()));
      int index = 0;
      for (const double dash : dashes) record.setDashLengthAt(index++, dash);
      record.setIsScaledToFit(scaledToFit);
    });
  }
  // A window on model space; the points say where it stands on paper and what is at its middle.
  ZnDbObjectId addViewport(double scale, const ZnGePoint3d& center = {}, const ZnGePoint2d& viewCenter = {},
                           double twist = 0.0) {
    auto* window = new ZnDbViewport;
    window->setCenterPoint(center);
    window->setViewCenter(viewCenter);
    window->setCustomScale(scale);
    window->setTwistAngle(twist);
    return add(window, db_->paperSpaceId());
  }

  // Blocks
  ZnDbObjectId addEmptyBlock() { return addRecord<ZnDbBlockTableRecord>(db_->blockTableId(), L"*U"); }
  ZnDbObjectId addReference(ZnDbObjectId block, const ZnGeMatrix3d& transform = {}, ZnDbObjectId space = {}) {
    auto* reference = new ZnDbBlockReference({0.0, 0.0, 0.0}, block);
    EXPECT_EQ(reference->setBlockTransform(transform), Quorl::eOk);
    return add(reference, space);
  }
  static ZnDbObjectId blockOf(ZnDbObjectId reference) {
    return ZnDbHolder<ZnDbBlockReference>(reference)->blockTableRecord();
  }
  static std::vector<ZnDbObjectId> liveEntities(ZnDbObjectId block) {
    std::vector<ZnDbObjectId> live;
    ZnDbHolder<ZnDbBlockTableRecord> record(block);
    EXPECT_TRUE(record.isOpen());
    for (const ZnDbObjectId id : record->entityIds())
      if (!id.isErased()) live.push_back(id);
    return live;
  }

  // Marks
  // An edge of the last id of a path.
  static ZnDbEdgeRef edgeAlong(const ZnArray<ZnDbObjectId>& path, std::int64_t index = 0) {
    return ZnDbEdgeRef(ZnDbFullSubentPath(path, ZnDbSubentId(ZnDb::kEdgeSubentType, index)));
  }
  static ZnDbEdgeRef edgeOf(ZnDbObjectId entity) {
    ZnDbEdgeRef edge;
    EXPECT_EQ(ZnTorviLyxUtils::createEdgeRef(ZnDbFullSubentPath(entity, ZnDb::kEdgeSubentType, 0), edge),
              Quorl::eOk);
    return edge;
  }
  ZnDbObjectId addMark(ZnDbObjectId circle) {
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createCenterMark(edgeOf(circle), id, db_.get()), Quorl::eOk);
    return id;
  }
  static ZnDbCenterMarkObjectWrapper wrap(ZnDbObjectId mark) { return ZnDbCenterMarkObjectWrapper(mark); }
  static ZnDbObjectId bodyOf(ZnDbObjectId mark) { return ZnTorviLyxUtils::getTorviActionBodyId(mark); }
  // Of any kind: asks and changes its body.
  template<class Body = ZnDbTorviActionBody, class Ask> static auto ask(ZnDbObjectId center, Ask&& question) {
    ZnDbHolder<Body> body(bodyOf(center));
    EXPECT_TRUE(body.isOpen());
    return question(const_cast<const Body&>(*body));
  }
  template<class Body, class Change> static void changeBody(ZnDbObjectId center, Change&& doIt) {
    change<Body>(bodyOf(center), doIt);
  }
  static ZnDbAssocStatus statusOf(ZnDbObjectId center) {
    return ask(center, [](const auto& body) { return body.status(); });
  }
  // Marks the object's action as changed and evaluates the drawing.
  static void evaluate(ZnDbObjectId mark) {
    EXPECT_EQ(ZnTorviLyxUtils::explicitlyEvaluateActionBody(bodyOf(mark)), Quorl::eOk);
  }
  void evaluateChanges() { ZnDbAssocManager::evaluateTopLevelNetwork(db_.get()); }

  static void setLocked(ZnDbObjectId layer, bool locked) {
    change<ZnDbLayerTableRecord>(layer, [=](ZnDbLayerTableRecord& record) { record.setIsLocked(locked); });
  }
  static ZnDbObjectId layerOf(ZnDbObjectId entity) { return ZnDbHolder<ZnDbEntity>(entity)->layerId(); }

  // A value as a drawing brings it along, which nobody has checked.
  void put(const wchar_t* variable, const ZnRxVariableValue& value) {
    db_->put(ZnString(variable).atom(), value);
  }
  void put(const wchar_t* variable, const wchar_t* text) { put(variable, ZnRxVariableValue::ofString(text)); }

  std::unique_ptr<ZnDbDatabase> db_;
  ZnString printed_;

private:
  ZnPrintSink usualSink_;
};

// Curves of a case, deleted with it.
struct OwnedCurves {
  ~OwnedCurves() {
    for (const ZnGeCurve3d* curve : curves) delete curve;
  }
  ZnArray<ZnGeCurve3d*> curves;
};

// Points and vectors to eight digits.
inline testing::AssertionResult near(const ZnGePoint3d& a, const ZnGePoint3d& b, double tolerance = 1e-8) {
  if (a.distanceTo(b) <= tolerance) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not (" << b.x
                                     << ", " << b.y << ", " << b.z << ")";
}
