// What modules hang on entities: drawing and listing overrules, matching of properties, kinds of references,
// and the drawing of dimensions.
#include <cmath>

#include "db/entity_samples.h"
#include "db/sampling_draw.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/block_reference_meta_data.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/match_properties.h"
#include "quorl/db/entity/properties_overrule.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/entity_list.h"
#include "quorl/rx/print.h"
#include "support/host_drawing.h"

using namespace dbTest;

namespace {

class EntityServices : public HostDrawingTest {
protected:
  ZnString printed;
  ZnPrintSink before = znutSetPrintSink([this](const ZnString& text) { printed += text.view(); });
  ~EntityServices() override { znutSetPrintSink(before); }
};

class TitleOnly : public ZnDbPropertiesOverrule {
public:
  bool isApplicable(const ZnRxObject* object) const override { return ZnDbCircle::cast(object) != nullptr; }
  void list(const ZnDbEntity* entity) const override {
    znutPrintf(L"TITLE\n");
    ZnDbPropertiesOverrule::list(entity);
  }
};

TEST_F(EntityServices, ListingNamesTheCommonAttributes) {
  const ZnDbHolder<ZnDbEntity> circle(add(new ZnDbCircle({0, 0, 0}, ZnGeVector3d::kZAxis, 1.0)));
  TitleOnly overrule;
  ZnRxOverrule::addOverrule(ZnDbEntity::desc(), &overrule);
  ShareDB::listEntity(circle.object());
  ZnRxOverrule::removeOverrule(ZnDbEntity::desc(), &overrule);
  const std::string text = printed.utf8();
  EXPECT_EQ(text.find("TITLE\nCIRCLE\n"), 0u) << text;
  for (const char* line : {"Layer: 0\n", "Color: BYLAYER\n", "Linetype: ByLayer\n", "Linetype scale: 1\n",
                           "Lineweight: BYLAYER\n", "Transparency: BYLAYER\n", "Visible: yes\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
  const size_t length = text.size();
  ShareDB::listEntity(circle.object());
  EXPECT_EQ(printed.utf8().find("TITLE", length), std::string::npos);
}

TEST_F(EntityServices, MatchingCopiesWhatTheFlagsName) {
  const ZnDbObjectId layer = addRecord<ZnDbLayerTableRecord>(db.layerTableId(), L"other");
  ZnDbHolder<ZnDbEntity> source, target;
  ASSERT_EQ(source.openForWrite(add(new ZnDbLine)), Quorl::eOk);
  source->setLayer(layer);
  source->setColorIndex(4);
  source->setLinetype(db.continuousLinetype());
  source->setLinetypeScale(2.5);
  source->setLineWeight(ZnDb::kLineWeight100);
  source->setTransparency(ZnCmTransparency(40));
  const auto* match = dynamic_cast<ZnDbMatchProperties*>(source->queryX(ZnDbMatchProperties::desc()));
  ASSERT_NE(match, nullptr);

  using Flag = ZnDbMatchProperties::Flags;
  const struct {
    Flag flag;
    bool (*same)(const ZnDbEntity&, const ZnDbEntity&);
  } rows[] = {
      {Flag::kColor, [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.color() == b.color(); }},
      {Flag::kLayer, [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.layerId() == b.layerId(); }},
      {Flag::kLinetype,
       [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.linetypeId() == b.linetypeId(); }},
      {Flag::kLinetypeScale,
       [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.linetypeScale() == b.linetypeScale(); }},
      {Flag::kLineWeight,
       [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.lineWeight() == b.lineWeight(); }},
      {Flag::kTransparency,
       [](const ZnDbEntity& a, const ZnDbEntity& b) { return a.transparency() == b.transparency(); }},
  };
  for (const auto& row : rows) {
    ASSERT_EQ(target.openForWrite(add(new ZnDbLine)), Quorl::eOk);
    match->copyProperties(source.object(), target.object(), row.flag);
    for (const auto& other : rows)
      EXPECT_EQ(other.same(*source, *target), other.flag == row.flag) << row.flag << " and " << other.flag;
  }
  match->copyProperties(nullptr, target.object(), Flag::kAllFlags);
  EXPECT_EQ(target->colorIndex(), 256);

  ZnDbDatabase elsewhere;
  ZnDbHolder<ZnDbBlockTableRecord> space;
  ASSERT_EQ(space.openForWrite(elsewhere.modelSpaceId()), Quorl::eOk);
  auto* foreign = new ZnDbLine;
  ASSERT_EQ(space->appendZnDbEntity(foreign), Quorl::eOk);
  match->copyProperties(source.object(), foreign, Flag::kAllFlags);
  EXPECT_EQ(foreign->layerId(), elsewhere.layerZero()) << "a layer of another drawing";
  EXPECT_EQ(foreign->colorIndex(), 4);
  foreign->close();
}

class LargeOnes : public ZnDbBlockReferenceMetaDataExtension {
public:
  bool isApplicable(const ZnDbBlockReference* r) const override { return r->scaleFactors().x > 1.5; }
  ZnString runtimeClassName(const ZnDbBlockReference*) const override { return L"Large"; }
  Quorl::ErrorStatus localizedTypeName(const ZnDbBlockReference*, ZnString&) const override {
    return Quorl::eOk;
  }
  Quorl::ErrorStatus globalTypeName(const ZnDbBlockReference*, ZnString&, int) const override {
    return Quorl::eOk;
  }
  Quorl::ErrorStatus isPropertyShown(const ZnDbBlockReference*, int, bool&) const override {
    return Quorl::eOk;
  }
  Quorl::ErrorStatus isPropertyReadOnly(const ZnDbBlockReference*, int, bool&) const override {
    return Quorl::eOk;
  }
  bool showsBlockProperties(const ZnDbBlockReference*) const override { return false; }
  Quorl::ErrorStatus selectionTypeName(const ZnDbBlockReference*, ZnString&) const override {
    return Quorl::eOk;
  }
  Quorl::ErrorStatus filterTypeName(const ZnDbBlockReference*, ZnString&) const override {
    return Quorl::eOk;
  }
};

TEST_F(EntityServices, KindsOfReferencesAreFoundByTheirCollection) {
  ZnDbBlockReference plain, large;
  large.setBlockTransform(ZnGeMatrix3d::scaling(2.0));
  auto* kinds = dynamic_cast<ZnDbBlockReferenceMetaDataPECollection*>(
      plain.queryX(ZnDbBlockReferenceMetaDataPECollection::desc()));
  ASSERT_NE(kinds, nullptr);
  LargeOnes kind;
  EXPECT_EQ(kinds->regExtension(nullptr), Quorl::eNullObjectPointer);
  EXPECT_EQ(kinds->regExtension(&kind), Quorl::eOk);
  EXPECT_EQ(kinds->regExtension(&kind), Quorl::eDuplicateKey);
  EXPECT_EQ(kinds->extensionOf(&plain), nullptr);
  EXPECT_EQ(kinds->extensionOf(&large), &kind);
  EXPECT_EQ(kinds->unregExtension(&kind), Quorl::eOk);
  EXPECT_EQ(kinds->unregExtension(&kind), Quorl::eKeyNotFound);
  EXPECT_EQ(kinds->extensionOf(&large), nullptr);
}

class DrawsACross : public ZnGiDrawableOverrule {
public:
  bool isApplicable(const ZnRxObject* object) const override { return ZnDbCircle::cast(object) != nullptr; }
  bool worldDraw(const ZnGiDrawable* drawable, ZnGiWorldDraw& draw) const override {
    draw.point({});
    return ZnGiDrawableOverrule::worldDraw(drawable, draw);
  }
};

TEST_F(EntityServices, DrawingOverrulesStandInFront) {
  const ZnDbCircle circle({0, 0, 0}, ZnGeVector3d::kZAxis, 1.0);
  DrawsACross overrule;
  ZnRxOverrule::addOverrule(ZnDbEntity::desc(), &overrule);
  SamplingDraw draw(0.1);
  EXPECT_TRUE(circle.worldDraw(draw));
  EXPECT_EQ(draw.calls, (std::vector<std::string>{"point", "curve"}));
  ZnRxOverrule::removeOverrule(ZnDbEntity::desc(), &overrule);
  draw.calls.clear();
  EXPECT_TRUE(circle.worldDraw(draw));
  EXPECT_EQ(draw.calls, (std::vector<std::string>{"curve"}));
}

TEST_F(EntityServices, DimensionsMeasureAndWriteByTheirStyle) {
  const ZnDbObjectId styleId = addRecord<ZnDbDimStyleTableRecord>(db.dimStyleTableId(), L"inch");
  change<ZnDbDimStyleTableRecord>(styleId, [](ZnDbDimStyleTableRecord& style) {
    style.setLengthFactor(0.5);
    style.setDecimals(3);
    style.setOverallScale(2.0);
  });
  ZnDbHolder<ZnDbDimension> dimension;
  const ZnDbObjectId id = add(new ZnDbAlignedDimension({0, 0, 0}, {30, 40, 0}, {-8, 6, 0}));
  ASSERT_EQ(dimension.openForWrite(id), Quorl::eOk);
  EXPECT_EQ(dimension->dimensionStyle(), db.dimstyle());
  EXPECT_DOUBLE_EQ(dimension->measurement(), 50.0);
  EXPECT_TRUE(dimension->formattedText() == L"50.00");
  ASSERT_EQ(dimension->setDimensionStyle(styleId), Quorl::eOk);
  EXPECT_TRUE(dimension->formattedText() == L"25.000");
  dimension->setDimensionText(L"<> mm");
  EXPECT_TRUE(dimension->formattedText() == L"25.000 mm");
  EXPECT_EQ(dimension->setDimensionStyle(db.layerZero()), Quorl::eInvalidInput);

  // The line stands ten units off the measured points, and its arrows have twice the style's length.
  const ZnDbDimensionGraphics drawn = dimension->graphics();
  ASSERT_EQ(drawn.lines.size(), 3u);
  EXPECT_TRUE(drawn.lines[0].startPoint().isEqualTo({-8, 6, 0}));
  EXPECT_TRUE(drawn.lines[0].endPoint().isEqualTo({22, 46, 0}));
  ASSERT_EQ(drawn.arrowHeads.size(), 2u);
  for (const auto& head : drawn.arrowHeads) {
    const ZnGePoint3d back = head[1] + (head[2] - head[1]) * 0.5;
    EXPECT_NEAR(head[0].distanceTo(back), 5.0, kRounding);
    EXPECT_LE(drawn.lines[0].distanceTo(head[0]), kRounding);
    EXPECT_LE(drawn.lines[0].distanceTo(back), kRounding) << "heads lie within the line";
  }
  EXPECT_NEAR(drawn.lines[0].distanceTo(drawn.textPosition), 2.0 * 0.625, kRounding);
  ASSERT_EQ(dimension->setTextPosition({1, 2, 3}), Quorl::eOk);
  EXPECT_TRUE(dimension->textPosition().isEqualTo({1, 2, 3}));

  const ZnDbRadialDimension radius({0, 0, 0}, {3, 4, 0});
  EXPECT_TRUE(radius.formattedText() == L"R5.00");
  const ZnDbDiametricDimension diameter({3, 4, 0}, {-3, -4, 0});
  EXPECT_TRUE(diameter.formattedText() == L"\u00d810.00");
}

TEST_F(EntityServices, DimensionTextIsReadFromBelowOrFromTheRight) {
  const struct {
    ZnGePoint3d second;
    ZnGeVector3d direction;
  } cases[] = {
      {{10, 0, 0}, {1, 0, 0}},
      {{-10, 0, 0}, {1, 0, 0}},
      {{0, 10, 0}, {0, 1, 0}},
      {{0, -10, 0}, {0, 1, 0}},
      {{-10, 10, 0}, {std::sqrt(0.5), -std::sqrt(0.5), 0}},
  };
  for (const auto& c : cases) {
    const ZnDbAlignedDimension dimension({0, 0, 0}, c.second, {5, 5, 0});
    EXPECT_TRUE(dimension.graphics().textDirection.isEqualTo(c.direction));
  }
}

} // namespace
