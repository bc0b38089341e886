#include "interchange/draw/trait_resolver.h"

#include "quorl/db/core/database.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

namespace interchange {

namespace {

constexpr std::uint32_t kWhite = 0xffffff;
constexpr int kDefaultWeight = 25;
constexpr double kHundredths = 100;

} // namespace

TraitResolver::TraitResolver(const ZnDbDatabase& database, std::uint32_t paper)
    : database_(database)
    , paper_(paper) {}

const TraitResolver::LayerFacts& TraitResolver::layer(ZnDbObjectId id) {
  const auto [place, isNew] = layers_.try_emplace(id);
  LayerFacts& facts = place->second;
  if (!isNew) return facts;
  facts.traits.layerId = id;
  facts.traits.rgb = kWhite;
  const ZnDbHolder<ZnDbLayerTableRecord> record(id);
  if (!record.isOpen()) return facts;
  if (const ZnCmColor color = record->color(); color.method() >= ZnCmColor::kIndex)
    facts.traits.rgb = color.rgb();
  facts.traits.alpha = record->transparency().alpha();
  facts.traits.weight = record->lineWeight() < 0 ? kDefaultWeight : record->lineWeight();
  facts.traits.linetypeId = record->linetypeObjectId();
  facts.shown = record->isShown() && record->isPlottable();
  return facts;
}

ZnDbObjectId TraitResolver::effectiveLayer(ZnDbObjectId layerId, const ResolvedTraits* reference) const {
  if (layerId.isNull()) layerId = database_.layerZero();
  return reference && layerId == database_.layerZero() ? reference->layerId : layerId;
}

ResolvedTraits TraitResolver::resolve(const ZnGiSubEntityTraits& traits, const ResolvedTraits* reference) {
  ResolvedTraits resolved = layer(effectiveLayer(traits.layerId, reference)).traits;
  // Outside of blocks, by block means what an entity gets that states nothing.
  ResolvedTraits unstated;
  unstated.rgb = kWhite;
  const ResolvedTraits& block = reference ? *reference : unstated;

  if (traits.color.method() == ZnCmColor::kByBlock)
    resolved.rgb = block.rgb;
  else if (traits.color.method() != ZnCmColor::kByLayer)
    resolved.rgb = traits.color.rgb();

  if (traits.transparency.method() == ZnCmTransparency::kByBlock)
    resolved.alpha = block.alpha;
  else if (traits.transparency.method() == ZnCmTransparency::kByAlpha)
    resolved.alpha = traits.transparency.alpha();

  if (traits.lineWeight == ZnDb::kLineWeightByBlock)
    resolved.weight = block.weight;
  else if (traits.lineWeight == ZnDb::kLineWeightByDefault)
    resolved.weight = kDefaultWeight;
  else if (traits.lineWeight != ZnDb::kLineWeightByLayer)
    resolved.weight = traits.lineWeight;

  if (traits.linetypeId == database_.byBlockLinetype() && !traits.linetypeId.isNull())
    resolved.linetypeId = block.linetypeId;
  else if (!traits.linetypeId.isNull() && traits.linetypeId != database_.byLayerLinetype())
    resolved.linetypeId = traits.linetypeId;
  return resolved;
}

Ink TraitResolver::inkOf(const ResolvedTraits& traits, double lineWeightFactor) const {
  Ink ink;
  const bool vanishes = traits.rgb == paper_ && (paper_ == kWhite || paper_ == 0);
  ink.rgb = vanishes ? kWhite - traits.rgb : traits.rgb;
  ink.opacity = traits.alpha / 255.0;
  ink.width = traits.weight / kHundredths * lineWeightFactor;
  return ink;
}

DashPattern TraitResolver::patternOf(const ResolvedTraits& traits, double linetypeScale) {
  const auto [place, isNew] = patterns_.try_emplace(traits.linetypeId);
  if (isNew) {
    const ZnDbHolder<ZnDbLinetypeTableRecord> record(traits.linetypeId);
    if (record.isOpen()) {
      for (int i = 0; i < record->numDashes(); ++i) place->second.lengths.push_back(record->dashLengthAt(i));
      place->second.scaledToFit = record->isScaledToFit();
    }
  }
  DashPattern pattern = place->second;
  for (double& length : pattern.lengths) length *= linetypeScale * database_.ltscale();
  return pattern;
}

bool TraitResolver::isShown(ZnDbObjectId layerId) { return layer(layerId).shown; }

} // namespace interchange
