#include "app/drawing_report.h"

#include <map>

#include <fmt/format.h>

#include "app/center_module.h"
#include "app/number_text.h"
#include "exchange/report.h"
#include "quorl/db/table/block_table.h"

namespace app {

namespace {

struct UnitName {
  int number;
  const char* name;
};

// By the number in the drawing's header.
constexpr UnitName kUnitNames[] = {{0, "none"}, {1, "in"}, {2, "ft"}, {4, "mm"}, {5, "cm"}, {6, "m"}};

std::string unitsOf(const ZnDbDatabase& database) {
  for (const UnitName& row : kUnitNames)
    if (row.number == database.insertionUnits()) return row.name;
  return std::to_string(database.insertionUnits());
}

Json entitiesOf(const ZnDbDatabase& database) {
  std::map<std::string, int> counts;
  ZnDbHolder<ZnDbBlockTable> table(database.blockTableId());
  if (!table.isOpen()) return Json::object();
  for (const ZnDbObjectId recordId : table->recordIds()) {
    ZnDbHolder<ZnDbBlockTableRecord> record(recordId);
    if (!record.isOpen() || !record->isLayout()) continue;
    for (const ZnDbObjectId id : record->entityIds())
      if (!id.isErased()) ++counts[id.objectClass()->name().utf8()];
  }
  Json json = Json::object();
  for (const auto& [name, count] : counts) json[name] = count;
  return json;
}

std::string placeIn(const std::string& file, int line) {
  return line > 0 ? fmt::format("{}:{}", file, line) : file;
}

Json skippedOf(const Drawing& drawing) {
  Json json = Json::array();
  if (!drawing.import()) return json;
  for (const interchange::Skipped& skipped : drawing.import()->skipped)
    json.push_back(
        {{"what", skipped.what}, {"where", placeIn(drawing.path(), skipped.line)}, {"why", skipped.why}});
  return json;
}

struct SpellingName {
  interchange::RoundSpelling spelling;
  const char* name;
};

constexpr SpellingName kSpellings[] = {
    {interchange::RoundSpelling::Whole, "whole"},
    {interchange::RoundSpelling::Arcs, "arcs"},
    {interchange::RoundSpelling::Curves, "curves"},
    {interchange::RoundSpelling::Polygon, "polygon"},
};

const char* spellingName(interchange::RoundSpelling spelling) {
  for (const SpellingName& row : kSpellings)
    if (row.spelling == spelling) return row.name;
  return "";
}

Json circlesOf(const Drawing& drawing) {
  Json json = Json::array();
  if (!drawing.import()) return json;
  for (const interchange::FoundCircle& found : drawing.import()->circles) {
    const interchange::Circle& circle = found.circle;
    json.push_back({{"handle", handleText(found.entity.handle()).utf8()},
                    {"center", Json::array({toJson(circle.center.x), toJson(circle.center.y)})},
                    {"radius", toJson(circle.radius)},
                    {"deviation", toJson(circle.fit.deviation)},
                    {"relative", toJson(circle.fit.relative)},
                    {"spelling", spellingName(circle.fit.spelling)},
                    {"pieces", circle.fit.pieces},
                    {"visible", found.visible}});
  }
  return json;
}

std::string pointOf(const std::optional<exchange::Point>& point) {
  return point ? pointText({(*point)[0], (*point)[1], (*point)[2]}) : "-";
}

std::string numberOf(const std::optional<double>& number) { return number ? numberText(*number) : "-"; }

std::string curveLine(const exchange::ReportedCurve& curve) {
  const exchange::Shape& shape = curve.shape;
  std::string line =
      fmt::format("    {} {} {} to {}", curve.index, shape.type, pointOf(shape.start), pointOf(shape.end));
  if (shape.radius) line += fmt::format(" round {} radius {}", pointOf(shape.center), numberOf(shape.radius));
  line += fmt::format("  {}{}", curve.linetype, curve.visible ? "" : "  hidden");
  // Where an object draws several things, the key says of which the curve is a part.
  if (!curve.key.empty()) line += "  [" + curve.key + "]";
  return line + "\n";
}

std::string lengthLine(const exchange::ReportedLengths& lengths) {
  return fmt::format("    from its middle {} and {}, overshoots {} and {}\n",
                     numberOf(lengths.startExtension), numberOf(lengths.endExtension),
                     numberOf(lengths.startOvershoot), numberOf(lengths.endOvershoot));
}

std::string patternLines(const exchange::ReportedPattern& pattern) {
  std::string lines = "    " + pattern.type;
  if (pattern.fullPCD) lines += ", closed";
  if (pattern.showCenterMark) lines += ", center marked";
  if (pattern.referenceEdge) lines += ", reference #" + *pattern.referenceEdge;
  lines += "\n    members";
  for (const exchange::PatternMember& member : pattern.members)
    lines += fmt::format(" [{}] #{}", member.key, member.edge);
  for (const exchange::Overshoot& overshoot : pattern.overshoots)
    lines += fmt::format("\n    [{}] overshoots by {} and {}", overshoot.key, numberOf(overshoot.start),
                         numberOf(overshoot.end));
  return lines + "\n";
}

std::string centerLines(const exchange::ReportedCenter& center) {
  std::string edges;
  for (const std::string& edge : center.edges) edges += " #" + edge;
  std::string lines =
      fmt::format("  #{} {} {}  layer \"{}\"  linetype {}\n    center {}  radius {}\n", center.handle,
                  center.kind, center.associative ? "follows" + edges : std::string("follows nothing"),
                  center.layer, center.linetype, pointOf(center.center), numberOf(center.radius));
  if (center.lengths) lines += lengthLine(*center.lengths);
  if (center.pattern) lines += patternLines(*center.pattern);
  for (const exchange::ReportedCurve& curve : center.curves) lines += curveLine(curve);
  return lines;
}

} // namespace

Json drawingReport(const Drawing& drawing, std::string& missing, Progress& progress) {
  Json json = Json::object();
  json["units"] = unitsOf(drawing.database());
  json["entities"] = entitiesOf(drawing.database());
  json["skipped"] = skippedOf(drawing);
  json["circles"] = circlesOf(drawing);
  json["centers"] = nullptr;
  CommandCall call;
  call.onProgress = [&progress](size_t done, size_t total) { progress.update(done, total); };
  if (runCommand(L"TORVI.REPORT", call, missing)) json["centers"] = call.result()["centers"];
  return json;
}

std::string reportText(const Json& report) {
  std::string text = fmt::format("units: {}\nentities:\n", report["units"].get<std::string>());
  for (const auto& [name, count] : report["entities"].items())
    text += fmt::format("  {} {}\n", name, count.get<int>());
  if (!report["circles"].empty()) text += fmt::format("circles found: {}\n", report["circles"].size());
  if (!report["skipped"].empty()) text += fmt::format("passed over: {}\n", report["skipped"].size());
  for (const Json& skipped : report["skipped"])
    text += fmt::format("  {}: {}, {}\n", skipped["where"].get<std::string>(),
                        skipped["what"].get<std::string>(), skipped["why"].get<std::string>());
  if (report["centers"].is_null()) return text + "center objects: not known\n";
  text += fmt::format("center objects: {}\n", report["centers"].size());
  std::vector<exchange::ReportedCenter> centers;
  if (exchange::fromJson(report["centers"], centers))
    for (const exchange::ReportedCenter& center : centers) text += centerLines(center);
  return text;
}

} // namespace app
