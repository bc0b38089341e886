// Turns the traits that entities state into what is drawn: by layer, by block, defaults and paper color.
#pragma once

#include "interchange/draw/dash_layout.h"
#include "interchange/draw/stroke_target.h"

#include "quorl/db/entity/world_draw.h"

#include <unordered_map>

class ZnDbDatabase;

namespace interchange {

// Traits without by layer and by block.
struct ResolvedTraits {
  ZnDbObjectId layerId;
  std::uint32_t rgb = 0;
  std::uint8_t alpha = 255;
  int weight = 25; // hundredths of a millimetre
  ZnDbObjectId linetypeId;
};

class TraitResolver {
public:
  // The drawing must outlive the resolver and not change meanwhile.
  TraitResolver(const ZnDbDatabase& database, std::uint32_t paper);

  // Of a reference or entity; `reference` is the resolved reference whose content it is, null outside blocks.
  // An entity of a block on layer "0" takes the layer of the reference. Ids of nothing count as by layer.
  ResolvedTraits resolve(const ZnGiSubEntityTraits& traits, const ResolvedTraits* reference);
  // White on white paper is drawn black, as is black on black paper white.
  Ink inkOf(const ResolvedTraits& traits, double lineWeightFactor) const;
  // In drawing units; empty for a continuous line.
  DashPattern patternOf(const ResolvedTraits& traits, double linetypeScale);
  // Not off, not frozen and plottable; entities without a layer count as on layer "0".
  bool isShown(ZnDbObjectId layerId);
  // The layer that decides for an entity on `layerId` within a reference.
  ZnDbObjectId effectiveLayer(ZnDbObjectId layerId, const ResolvedTraits* reference) const;

private:
  struct LayerFacts {
    ResolvedTraits traits;
    bool shown = true;
  };
  const LayerFacts& layer(ZnDbObjectId id);

  const ZnDbDatabase& database_;
  std::uint32_t paper_;
  std::unordered_map<ZnDbObjectId, LayerFacts> layers_;
  std::unordered_map<ZnDbObjectId, DashPattern> patterns_;
};

} // namespace interchange
