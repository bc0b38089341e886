// By layer, by block and defaults, through references in references.
#include "interchange/draw/trait_resolver.h"

#include "support/host_drawing.h"

#include <gtest/gtest.h>

using namespace interchange;

namespace {

constexpr std::uint32_t kWhitePaper = 0xffffff;

class TraitResolverTest : public testing::Test {
protected:
  void SetUp() override {
    dashed_ = drawing_.addLinetype(L"DASHED", {6, -3});
    parts_ = drawing_.addLayer(L"parts", [this](ZnDbLayerTableRecord& layer) {
      layer.setColor(ZnCmColor::fromIndex(3));
      layer.setLineWeight(ZnDb::kLineWeight050);
      layer.setLinetypeObjectId(dashed_);
      layer.setTransparency(ZnCmTransparency(51));
    });
    byLayer_.layerId = parts_;
    byLayer_.linetypeId = drawing_.db.byLayerLinetype();
    byBlock_ = byLayer_;
    byBlock_.layerId = drawing_.db.layerZero();
    byBlock_.color = ZnCmColor::fromIndex(0);
    byBlock_.lineWeight = ZnDb::kLineWeightByBlock;
    byBlock_.linetypeId = drawing_.db.byBlockLinetype();
    byBlock_.transparency.setMethod(ZnCmTransparency::kByBlock);
    own_.layerId = parts_;
    own_.color = ZnCmColor::fromRgb(1, 2, 3);
    own_.lineWeight = ZnDb::kLineWeight013;
    own_.linetypeId = drawing_.db.continuousLinetype();
    own_.transparency = ZnCmTransparency(102);
  }

  HostDrawing drawing_;
  ZnDbObjectId dashed_, parts_;
  ZnGiSubEntityTraits byLayer_, byBlock_, own_;
};

} // namespace

TEST_F(TraitResolverTest, traits_through_references) {
  TraitResolver resolver(drawing_.db, kWhitePaper);
  const ResolvedTraits layered = resolver.resolve(byLayer_, nullptr);
  const ResolvedTraits owned = resolver.resolve(own_, nullptr);
  // A reference that itself is by block within another one.
  const ResolvedTraits passed = resolver.resolve(byBlock_, &owned);
  ZnGiSubEntityTraits onLayerZero = byLayer_;
  onLayerZero.layerId = drawing_.db.layerZero();
  ZnGiSubEntityTraits byDefault = byLayer_;
  byDefault.lineWeight = ZnDb::kLineWeightByDefault;

  struct Case {
    const char* name;
    ZnGiSubEntityTraits traits;
    const ResolvedTraits* reference;
    std::uint32_t rgb;
    double opacity, width;
    bool dashed;
  };
  const Case kCases[] = {
      {"by layer", byLayer_, nullptr, 0x00ff00, 0.2, 0.5, true},
      {"own", own_, nullptr, 0x010203, 0.4, 0.13, false},
      {"by block outside blocks is the foreground", byBlock_, nullptr, 0x000000, 1, 0.25, false},
      {"by block takes the reference's layer", byBlock_, &layered, 0x00ff00, 0.2, 0.5, true},
      {"by block takes the reference's own", byBlock_, &owned, 0x010203, 0.4, 0.13, false},
      {"by block of by block", byBlock_, &passed, 0x010203, 0.4, 0.13, false},
      {"layer 0 within a reference is the reference's layer", onLayerZero, &owned, 0x00ff00, 0.2, 0.5, true},
      {"layer 0 outside is itself, white as black", onLayerZero, nullptr, 0x000000, 1, 0.25, false},
      {"own within a reference", own_, &layered, 0x010203, 0.4, 0.13, false},
      {"nothing stated, as for an entity in no drawing", {}, nullptr, 0x000000, 1, 0.25, false},
      {"default weight", byDefault, nullptr, 0x00ff00, 0.2, 0.25, true},
  };
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.name);
    const ResolvedTraits resolved = resolver.resolve(test.traits, test.reference);
    const Ink ink = resolver.inkOf(resolved, 2);
    EXPECT_EQ(ink.rgb, test.rgb);
    EXPECT_NEAR(ink.opacity, test.opacity, 1e-12);
    EXPECT_NEAR(ink.width, 2 * test.width, 1e-12);
    EXPECT_EQ(!resolver.patternOf(resolved, 1).lengths.empty(), test.dashed);
  }
}

TEST_F(TraitResolverTest, ink_shows_on_its_paper) {
  struct Case {
    std::uint32_t paper;
    ZnCmColor color;
    std::uint32_t ink;
  };
  const Case kCases[] = {
      {0xffffff, ZnCmColor::fromIndex(7), 0x000000}, {0xffffff, ZnCmColor::fromRgb(255, 255, 255), 0x000000},
      {0x000000, ZnCmColor::fromIndex(7), 0xffffff}, {0x000000, ZnCmColor::fromRgb(0, 0, 0), 0xffffff},
      {0xffffff, ZnCmColor::fromIndex(1), 0xff0000}, {0x202020, ZnCmColor::fromIndex(7), 0xffffff},
  };
  for (const Case& test : kCases) {
    TraitResolver resolver(drawing_.db, test.paper);
    own_.color = test.color;
    EXPECT_EQ(resolver.inkOf(resolver.resolve(own_, nullptr), 1).rgb, test.ink);
  }
}

TEST_F(TraitResolverTest, patterns_follow_both_scales) {
  drawing_.db.setLtscale(3);
  TraitResolver resolver(drawing_.db, kWhitePaper);
  const DashPattern pattern = resolver.patternOf(resolver.resolve(byLayer_, nullptr), 0.5);
  EXPECT_EQ(pattern.lengths, (std::vector<double>{9, -4.5}));
}

TEST_F(TraitResolverTest, layers_that_do_not_show) {
  using Record = ZnDbLayerTableRecord;
  const ZnDbObjectId off = drawing_.addLayer(L"off", [](Record& layer) { layer.setIsOff(true); });
  const ZnDbObjectId frozen = drawing_.addLayer(L"frozen", [](Record& layer) { layer.setIsFrozen(true); });
  const ZnDbObjectId kept = drawing_.addLayer(L"kept", [](Record& layer) { layer.setIsPlottable(false); });
  const ZnDbObjectId locked = drawing_.addLayer(L"locked", [](Record& layer) { layer.setIsLocked(true); });
  TraitResolver resolver(drawing_.db, kWhitePaper);
  EXPECT_FALSE(resolver.isShown(off));
  EXPECT_FALSE(resolver.isShown(frozen));
  EXPECT_FALSE(resolver.isShown(kept));
  EXPECT_TRUE(resolver.isShown(locked));
  EXPECT_TRUE(resolver.isShown(parts_));
}
