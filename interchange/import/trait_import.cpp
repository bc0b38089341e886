#include "interchange/import/trait_import.h"

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace interchange {

namespace {

// Patterns of more elements are no linetype but a drawing in dashes.
constexpr std::size_t kMostDashes = 24;
// A dash shorter than this part of the line's width is drawn for a dot.
constexpr double kDotShare = 0.1;
constexpr double kHundredths = 100;

ZnCmColor colorOf(const Color& color) { return ZnCmColor::fromRgb(color.red, color.green, color.blue); }

// The most used color of each layer, black for one without elements; of equals the smaller number.
std::vector<ZnCmColor> mostUsedColors(const Scene& scene) {
  std::vector<std::map<std::uint32_t, std::size_t>> counts(scene.layers.size());
  const auto count = [&counts](const std::vector<Element>& elements) {
    for (const Element& element : elements)
      if (element.layer < counts.size()) ++counts[element.layer][colorOf(element.style.color).packed()];
  };
  count(scene.elements);
  for (const Block& block : scene.blocks) count(block.elements);

  std::vector<ZnCmColor> colors;
  for (const auto& byColor : counts) {
    const auto most = std::max_element(byColor.begin(), byColor.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    colors.push_back(most == byColor.end() ? ZnCmColor::fromIndex(7) : ZnCmColor::fromPacked(most->first));
  }
  return colors;
}

std::string shortLength(double length) {
  char text[32];
  const auto [end, status] = std::to_chars(text, text + sizeof text, length, std::chars_format::general, 4);
  return {text, end};
}

std::string lowerCase(const ZnString& name) {
  std::wstring folded(name.view());
  std::transform(folded.begin(), folded.end(), folded.begin(), Quorl::foldCase);
  return Quorl::toUtf8(folded);
}

} // namespace

ZnString freeName(const std::string& wanted, std::set<std::string>& taken) {
  const ZnString repaired = ZnDbSymbolUtilities::repairSymbolName(ZnString::fromUtf8(wanted));
  ZnString name = repaired;
  for (int number = 2; !taken.insert(lowerCase(name)).second; ++number)
    name = repaired + L"_" + ZnString(std::to_wstring(number));
  return name;
}

TraitImport::TraitImport(const Scene& scene, ZnDbDatabase& database)
    : database_(database) {
  const std::vector<ZnCmColor> colors = mostUsedColors(scene);
  std::set<std::string> taken;
  ZnDbHolder<ZnDbLayerTable> table;
  if (table.openForWrite(database.layerTableId()) != Quorl::eOk) return;
  for (std::size_t i = 0; i < scene.layers.size(); ++i) {
    const ZnString name = freeName(scene.layers[i].name, taken);
    ZnDbObjectId id;
    if (table->getIdAt(name, id) == Quorl::eOk) {
      const ZnDbHolder<ZnDbLayerTableRecord> there(id);
      layers_.push_back({id, there.isOpen() ? there->color() : ZnCmColor()});
      continue;
    }
    auto* record = new ZnDbLayerTableRecord;
    record->setName(name);
    if (table->add(id, record) != Quorl::eOk) {
      delete record;
      layers_.push_back({database.layerZero(), ZnCmColor()});
      continue;
    }
    record->setLinetypeObjectId(database.continuousLinetype());
    record->setColor(colors[i]);
    record->setIsOff(!scene.layers[i].visible);
    record->close();
    layers_.push_back({id, colors[i]});
  }
}

void TraitImport::apply(const Element& element, ZnDbEntity& entity) {
  const LayerEntry layer = element.layer < layers_.size() ? layers_[element.layer]
                                                          : LayerEntry{database_.layerZero(), ZnCmColor()};
  entity.setLayer(layer.id, false, true);
  const ZnCmColor color = colorOf(element.style.color);
  entity.setColor(color == layer.color ? ZnCmColor() : color, false);
  // An area without a stroke keeps its outline as thin as can be.
  const double width = element.style.stroked ? element.style.width : 0;
  const double widest = std::numeric_limits<std::int16_t>::max();
  const double hundredths = std::clamp(std::round(width * kHundredths), 0.0, widest);
  entity.setLineWeight(ZnDbDatabase::getNearestLineWeight(static_cast<int>(hundredths)), false);
  const ZnDbObjectId linetype = linetypeFor(element.style);
  entity.setLinetype(linetype.isNull() ? database_.byLayerLinetype() : linetype, false);
  if (element.style.opacity < 1) {
    const double alpha = std::round(std::clamp(element.style.opacity, 0.0, 1.0) * 255);
    entity.setTransparency(ZnCmTransparency(static_cast<std::uint8_t>(alpha)), false);
  }
  // What is hidden comes along, so that nothing of the source is lost.
  entity.setVisibility(element.visible ? ZnDb::kVisible : ZnDb::kInvisible, false);
}

ZnDbObjectId TraitImport::linetypeFor(const Style& style) {
  const std::vector<double>& dash = style.dash;
  if (dash.empty() || dash.size() > kMostDashes) return {};
  std::vector<double> lengths = dash;
  // An array of odd length is used twice, so that dashes and gaps change places.
  if (lengths.size() % 2 != 0) lengths.insert(lengths.end(), dash.begin(), dash.end());
  std::string name = "DASHES";
  double gaps = 0;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (!(lengths[i] >= 0) || !std::isfinite(lengths[i])) return {};
    if (i % 2 == 0 && lengths[i] < kDotShare * style.width) lengths[i] = 0;
    name += "_" + shortLength(lengths[i]);
    if (i % 2 != 0) gaps += lengths[i];
  }
  if (!(gaps > 0)) return {};
  if (const auto known = linetypes_.find(name); known != linetypes_.end()) return known->second;

  ZnDbHolder<ZnDbLinetypeTable> table;
  ZnDbObjectId id;
  if (table.openForWrite(database_.linetypeTableId()) != Quorl::eOk) return {};
  if (table->getIdAt(ZnString::fromUtf8(name), id) != Quorl::eOk) {
    auto* record = new ZnDbLinetypeTableRecord;
    record->setName(ZnString::fromUtf8(name));
    record->setDescription(L"Dashes of an imported drawing");
    record->setDashCount(static_cast<int>(lengths.size()));
    for (std::size_t i = 0; i < lengths.size(); ++i)
      record->setDashLengthAt(static_cast<int>(i), i % 2 == 0 ? lengths[i] : -lengths[i]);
    if (table->add(id, record) != Quorl::eOk) {
      delete record;
      return {};
    }
    record->close();
  }
  return linetypes_[name] = id;
}

} // namespace interchange
