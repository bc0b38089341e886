// Every setter of every class, then undo: the drawing is to the byte what it was. And the values that setters
// refuse, which leave it so.
#include <limits>

#include "file/every_class_drawing.h"
#include "quorl/assoc/action_body.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/edge_action_param.h"
#include "quorl/assoc/network.h"
#include "quorl/assoc/vertex_action_param.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/point.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/layout.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/view/view_rep_block_reference.h"

using namespace fileTest;

namespace {

struct Row {
  const ZnRxClass* cls;
  const char* call;
  void (*set)(ZnDbObject&);
};
// On an object of the class the call, in which it is called o.
#define ROW(CLASS, CALL)                                                                                     \
  Row {                                                                                                      \
    CLASS::desc(), #CALL, [](ZnDbObject& object) {                                                           \
      auto& o = static_cast<CLASS&>(object);                                                                 \
      CALL;                                                                                                  \
    }                                                                                                        \
  }

using Style = ZnDbDimStyleTableRecord;
using Layer = ZnDbLayerTableRecord;
using Linetype = ZnDbLinetypeTableRecord;
const ZnGePoint3d kPlace(9, 8, 7);

ZnDbObjectId anotherLayer(const ZnDbObject& object) {
  return ZnDbHolder<ZnDbLayerTable>(object.database()->layerTableId())->recordIds()[1];
}

// clang-format off
std::vector<Row> rows() {
  return {
      ROW(ZnDbLine, o.setStartPoint(kPlace)),
      ROW(ZnDbLine, o.setEndPoint(kPlace)),
      ROW(ZnDbLine, o.transformBy(ZnGeMatrix3d::scaling(2.0))),
      ROW(ZnDbLine, o.setLayer(anotherLayer(o))),
      ROW(ZnDbLine, o.setLinetype(o.database()->continuousLinetype())),
      ROW(ZnDbLine, o.setColorIndex(3)),
      ROW(ZnDbLine, o.setLinetypeScale(3.5)),
      ROW(ZnDbLine, o.setLineWeight(ZnDb::kLineWeight211)),
      ROW(ZnDbLine, o.setTransparency(ZnCmTransparency(31))),
      ROW(ZnDbLine, o.setVisibility(ZnDb::kInvisible)),
      ROW(ZnDbArc, o.setDatabaseDefaults()),
      ROW(ZnDbCircle, o.setCenter(kPlace)),
      ROW(ZnDbCircle, o.setRadius(7.5)),
      ROW(ZnDbCircle, o.setNormal(ZnGeVector3d::kXAxis)),
      ROW(ZnDbCircle, o.transformBy(ZnGeMatrix3d::scaling(2.0))),
      ROW(ZnDbArc, o.setStartAngle(0.125)),
      ROW(ZnDbArc, o.setEndAngle(3.125)),
      ROW(ZnDbEllipse, o.setCenter(kPlace)),
      ROW(ZnDbEllipse, o.set(ZnGeEllipticalArc3d(kPlace, {5, 0, 0}, {0, 3, 0}))),
      ROW(ZnDbSpline, o.transformBy(ZnGeMatrix3d::scaling(2.0))),
      ROW(ZnDbPoint, o.setPosition({1, 1, 1})),
      ROW(ZnDbPolyline, o.addVertexAt(1, {1, 1}, 0.5)),
      ROW(ZnDbPolyline, o.removeVertexAt(0)),
      ROW(ZnDbPolyline, o.setPointAt(0, {4, 4})),
      ROW(ZnDbPolyline, o.setBulgeAt(0, 0.75)),
      ROW(ZnDbPolyline, o.setClosed(!o.isClosed())),
      ROW(ZnDbPolyline, o.setElevation(11.0)),
      ROW(ZnDbPolyline, o.setNormal(ZnGeVector3d::kYAxis)),
      ROW(ZnDbPolyline, o.transformBy(ZnGeMatrix3d::scaling(2.0))),
      ROW(ZnDbText, o.setTextString(L"other")),
      ROW(ZnDbText, o.setPosition(kPlace)),
      ROW(ZnDbText, o.setHeight(9.0)),
      ROW(ZnDbText, o.setRotation(1.5)),
      ROW(ZnDbText, o.setWidthFactor(1.5)),
      ROW(ZnDbText, o.setHorizontalAlign(ZnDb::kTextCenter)),
      ROW(ZnDbText, o.setNormal(ZnGeVector3d::kYAxis)),
      ROW(ZnDbViewport, o.setCenterPoint(kPlace)),
      ROW(ZnDbViewport, o.setWidth(77.0)),
      ROW(ZnDbViewport, o.setHeight(77.0)),
      ROW(ZnDbViewport, o.setViewCenter({7, 7})),
      ROW(ZnDbViewport, o.setViewHeight(7.0)),
      ROW(ZnDbViewport, o.setCustomScale(0.3)),
      ROW(ZnDbViewport, o.setTwistAngle(1.25)),
      ROW(ZnDbViewport, o.setOn(!o.isOn())),
      ROW(ZnDbViewport, o.setLayerFrozen(anotherLayer(o), true)),
      ROW(ZnDbRadialDimension, o.setPointOnCircle(kPlace)),
      ROW(ZnDbRadialDimension, o.setLeaderLength(12.0)),
      ROW(ZnDbRadialDimension, o.setTextPosition(kPlace)),
      ROW(ZnDbRadialDimension, o.setDimensionText(L"d")),
      ROW(ZnDbRadialDimension, o.setNormal(ZnGeVector3d::kYAxis)),
      ROW(ZnDbAlignedDimension, o.setDimensionLinePoint(kPlace)),
      ROW(ZnDbDiametricDimension, o.setDimensionStyle(ZnDbHolder<ZnDbSymbolTable>(o.database()->dimStyleTableId())->recordIds()[0])),
      ROW(ZnDbBlockReference, o.setPosition(kPlace)),
      ROW(ZnDbBlockReference, o.setRotation(1.0)),
      ROW(ZnDbBlockReference, o.setBlockTableRecord(o.database()->modelSpaceId())),
      ROW(ZnDbBlockReference, o.setBlockTransform(ZnGeMatrix3d::scaling(3.0))),
      ROW(ZnDbViewRepBlockReference, o.setViewId(o.database()->modelSpaceId())),
      ROW(Layer, o.setName(L"other")),
      ROW(Layer, o.setColor(ZnCmColor::fromIndex(2))),
      ROW(Layer, o.setLinetypeObjectId(o.database()->byLayerLinetype())),
      ROW(Layer, o.setLineWeight(ZnDb::kLineWeight100)),
      ROW(Layer, o.setTransparency(ZnCmTransparency(9))),
      ROW(Layer, o.setIsOff(true)),
      ROW(Layer, o.setIsLocked(true)),
      ROW(Layer, o.setIsPlottable(!o.isPlottable())),
      ROW(Linetype, o.setDescription(L"other")),
      ROW(Linetype, o.setDashCount(7)),
      ROW(Linetype, o.setDashLengthAt(0, 7.0)),
      ROW(Linetype, o.setTextAt(0, L"x")),
      ROW(Linetype, o.setIsScaledToFit(!o.isScaledToFit())),
      ROW(Style, o.setOverallScale(3.0)),
      ROW(Style, o.setArrowLength(3.0)),
      ROW(Style, o.setDecimals(9)),
      ROW(ZnDbLayout, o.setLayoutName(L"other")),
      ROW(ZnDbLayout, o.setTabOrder(9)),
      ROW(ZnDbLayout, o.setPaperSize(3.0, 4.0)),
      ROW(ZnDbLayout, o.setBlockTableRecordId({})),
      ROW(ZnDbAssocAction, o.setValue(ZnAtom::of(L"single"), 0, {ZnDbEvalVariant(7.25), {}, {}})),
      ROW(ZnDbAssocAction, o.setValue(ZnAtom::of(L"new"), 0, {ZnDbEvalVariant(1), {}, {}})),
      ROW(ZnDbAssocAction, o.removeValue(ZnAtom::of(L"single"))),
      ROW(ZnDbAssocAction, o.setStatus(kSuppressedAssocStatus)),
      ROW(ZnDbAssocAction, o.removeAllDependencies(true)),
      ROW(ZnDbAssocDependency, o.setIsReadDependency(!o.isReadDependency())),
      ROW(ZnDbAssocDependency, o.setIsWriteDependency(true)),
      ROW(ZnDbAssocDependency, o.setOrder(77)),
      ROW(ZnDbAssocDependency, o.detachFromObject()),
      ROW(ZnDbAssocEdgeActionParam, o.setName(L"other")),
      ROW(ZnDbAssocEdgeActionParam, o.emptyEdge(true)),
      ROW(ZnDbAssocVertexActionParam, o.setVertexRef(ZnDbVertexRef(kPlace))),
      ROW(ZnDbAssocVertexActionParam, o.emptyVertex(true)),
      ROW(ZnDbDimAssoc, o.setReferences({})),
  };
}
// clang-format on

struct Refusal {
  const ZnRxClass* cls;
  const char* call;
  Quorl::ErrorStatus status;
  Quorl::ErrorStatus (*set)(ZnDbObject&);
};
#define REFUSED(CLASS, STATUS, CALL)                                                                         \
  Refusal {                                                                                                  \
    CLASS::desc(), #CALL, Quorl::STATUS, [](ZnDbObject& object) { return static_cast<CLASS&>(object).CALL; } \
  }

const double kNan = std::numeric_limits<double>::quiet_NaN(),
             kInfinity = std::numeric_limits<double>::infinity();
const ZnGePoint3d kNowhere(0.0, kNan, 0.0);
const ZnGeVector3d kZero;

// clang-format off
std::vector<Refusal> refusals() {
  return {
      REFUSED(ZnDbLine, eInvalidInput, setStartPoint(kNowhere)),
      REFUSED(ZnDbLine, eInvalidInput, setEndPoint(ZnGePoint3d(kInfinity, 0, 0))),
      REFUSED(ZnDbLine, eInvalidInput, transformBy(ZnGeMatrix3d::translation(ZnGeVector3d(kNan, 0, 0)))),
      REFUSED(ZnDbLine, eOutOfRange, setLinetypeScale(0.0)),
      REFUSED(ZnDbLine, eOutOfRange, setLinetypeScale(kNan)),
      REFUSED(ZnDbLine, eOutOfRange, setColorIndex(257)),
      REFUSED(ZnDbLine, eOutOfRange, setLineWeight(static_cast<ZnDb::LineWeight>(33))),
      REFUSED(ZnDbLine, eInvalidInput, setLayer(ZnDbObjectId())),
      REFUSED(ZnDbLine, eKeyNotFound, setLayer(L"absent")),
      REFUSED(ZnDbLine, eInvalidInput, setLinetype(ZnDbObjectId())),
      REFUSED(ZnDbLine, eOutOfRange, setVisibility(static_cast<ZnDb::Visibility>(7))),
      REFUSED(ZnDbArc, eOutOfRange, setRadius(-0.5)),
      REFUSED(ZnDbArc, eInvalidInput, setRadius(kNan)),
      REFUSED(ZnDbArc, eInvalidInput, setStartAngle(kInfinity)),
      REFUSED(ZnDbArc, eInvalidInput, setEndAngle(kNan)),
      REFUSED(ZnDbArc, eDegenerateGeometry, setNormal(kZero)),
      REFUSED(ZnDbArc, eInvalidInput, setCenter(kNowhere)),
      REFUSED(ZnDbCircle, eOutOfRange, setRadius(-1.0)),
      REFUSED(ZnDbCircle, eInvalidInput, setNormal(ZnGeVector3d(kNan, 0, 1))),
      REFUSED(ZnDbCircle, eDegenerateGeometry, transformBy(ZnGeMatrix3d({}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}))),
      REFUSED(ZnDbEllipse, eInvalidInput, setCenter(kNowhere)),
      REFUSED(ZnDbEllipse, eDegenerateGeometry, set(ZnGeEllipticalArc3d({}, {1, 0, 0}, {0, 0, 0}))),
      REFUSED(ZnDbSpline, eDegenerateGeometry, setCurve(ZnGeNurbCurve3d())),
      REFUSED(ZnDbPolyline, eOutOfRange, addVertexAt(5, {})),
      REFUSED(ZnDbPolyline, eInvalidInput, addVertexAt(0, ZnGePoint2d(kNan, 0))),
      REFUSED(ZnDbPolyline, eInvalidInput, setBulgeAt(0, kInfinity)),
      REFUSED(ZnDbPolyline, eOutOfRange, setBulgeAt(-1, 0)),
      REFUSED(ZnDbPolyline, eOutOfRange, removeVertexAt(4)),
      REFUSED(ZnDbPolyline, eOutOfRange, setPointAt(4, {})),
      REFUSED(ZnDbPolyline, eDegenerateGeometry, setNormal(kZero)),
      REFUSED(ZnDbPolyline, eInvalidInput, setElevation(kNan)),
      REFUSED(ZnDbText, eOutOfRange, setHeight(0.0)),
      REFUSED(ZnDbText, eOutOfRange, setWidthFactor(-1.0)),
      REFUSED(ZnDbText, eOutOfRange, setHorizontalAlign(static_cast<ZnDb::TextAlign>(3))),
      REFUSED(ZnDbPoint, eInvalidInput, setPosition(kNowhere)),
      REFUSED(ZnDbViewport, eOutOfRange, setWidth(0.0)),
      REFUSED(ZnDbViewport, eOutOfRange, setCustomScale(-2.0)),
      REFUSED(ZnDbViewport, eInvalidInput, setLayerFrozen({}, true)),
      REFUSED(ZnDbRadialDimension, eOutOfRange, setLeaderLength(-1.0)),
      REFUSED(ZnDbRadialDimension, eInvalidInput, setDimensionStyle({})),
      REFUSED(ZnDbBlockReference, eDegenerateGeometry, setBlockTransform(ZnGeMatrix3d({}, {1, 0, 0}, {2, 0, 0}, {0, 0, 1}))),
      REFUSED(ZnDbBlockReference, eInvalidInput, setBlockTableRecord({})),
      REFUSED(ZnDbBlockReference, eWrongObjectClass, setBlockTableRecord(object.database()->layerZero())),
      REFUSED(Layer, eInvalidInput, setLinetypeObjectId(object.database()->layerZero())),
      REFUSED(Layer, eInvalidInput, setLinetypeObjectId(ZnDbDatabase().continuousLinetype())),
      REFUSED(Layer, eOutOfRange, setLineWeight(ZnDb::kLineWeightByLayer)),
      REFUSED(Layer, eOutOfRange, setLineWeight(static_cast<ZnDb::LineWeight>(34))),
      REFUSED(Layer, eInvalidInput, setIsFrozen(true)), // the current one
      REFUSED(Linetype, eOutOfRange, setDashLengthAt(3, 1.0)),
      REFUSED(Style, eOutOfRange, setOverallScale(0.0)),
      REFUSED(Style, eOutOfRange, setExtensionOffset(-1.0)),
      REFUSED(Style, eOutOfRange, setExtensionBeyond(-1.0)),
      REFUSED(Style, eOutOfRange, setArrowLength(-1.0)),
      REFUSED(Style, eOutOfRange, setTextHeight(-1.0)),
      REFUSED(Style, eOutOfRange, setTextGap(-1.0)),
      REFUSED(Style, eOutOfRange, setLengthFactor(-1.0)),
      REFUSED(Style, eOutOfRange, setDecimals(-1)),
      REFUSED(ZnDbLayout, eInvalidName, setLayoutName(L"a/b")),
      REFUSED(ZnDbLayout, eOutOfRange, setPaperSize(-1.0, 5.0)),
  };
}
// clang-format on

class SetterUndo : public testing::Test {
protected:
  // Of exactly that class, and the one made last: tables begin with records that must stay as they are.
  ZnDbObjectId one(const ZnRxClass* cls) const {
    ZnDbObjectId found;
    for (const ZnDbObjectId id : drawing->allObjectIds())
      if (!id.isErased() && id.objectClass() == cls) found = id;
    return found;
  }
  std::string text() const { return zndbDrawingText(*drawing); }
  static std::string bytesOf(const ZnDbObject& object) {
    ZnDbMemoryFiler filer(ZnDbFiler::kFile);
    object.bdocOutFields(filer);
    return filer.takeBytes();
  }

  std::unique_ptr<ZnDbDatabase> drawing = opened(written(*everyClassDrawing(), ZnDrawingFormat::kBinary));
};

TEST_F(SetterUndo, GivesTheSameDrawing) {
  for (const Row& row : rows()) {
    SCOPED_TRACE(row.cls->name().utf8() + ", " + row.call);
    const ZnDbObjectId id = one(row.cls);
    ASSERT_TRUE(id.isValid());
    const std::string before = text();
    drawing->undoRecorder().startStep();
    change<ZnDbObject>(id, row.set);
    const std::string after = text();
    EXPECT_NE(after, before) << "the setter changes something";
    ASSERT_EQ(drawing->undoRecorder().undo(), Quorl::eOk);
    EXPECT_EQ(text(), before);
    ASSERT_EQ(drawing->undoRecorder().redo(), Quorl::eOk);
    EXPECT_EQ(text(), after);
    ASSERT_EQ(drawing->undoRecorder().undo(), Quorl::eOk);
  }
}

// What was kept for a transaction that was given up is no longer there; the next change keeps its own.
TEST_F(SetterUndo, WorksAfterATransactionThatWasGivenUp) {
  const Row first = ROW(ZnDbCircle, o.setRadius(7.5)), then = ROW(ZnDbCircle, o.setCenter(kPlace));
  const ZnDbObjectId id = one(ZnDbCircle::desc());
  const std::string before = text();
  for (const bool changedBefore : {false, true}) {
    drawing->undoRecorder().startStep();
    if (changedBefore) change<ZnDbObject>(id, then.set);
    const std::string middle = text();
    {
      const ZnDbTransaction transaction(*drawing);
      change<ZnDbObject>(id, first.set);
    }
    EXPECT_EQ(text(), middle);
    change<ZnDbObject>(id, first.set);
    EXPECT_NE(text(), middle);
    ASSERT_EQ(drawing->undoRecorder().undo(), Quorl::eOk);
    EXPECT_EQ(text(), before);
  }
}

TEST_F(SetterUndo, HasNothingToDoWhereTheValueIsRefused) {
  for (const Refusal& row : refusals()) {
    SCOPED_TRACE(row.cls->name().utf8() + ", " + row.call);
    change<ZnDbObject>(one(row.cls), [&](ZnDbObject& object) {
      const std::string before = bytesOf(object);
      EXPECT_EQ(row.set(object), row.status);
      EXPECT_TRUE(bytesOf(object) == before);
    });
  }
}

} // namespace
