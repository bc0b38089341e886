#include "app/drawing_report.h"

#include <map>

#include <fmt/format.h>

#include "app/center_module.h"
#include "app/number_text.h"
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

std::string pointOf(const Json& coordinates) {
  if (!coordinates.is_array()) return "-";
  return pointText(
      {coordinates[0].get<double>(), coordinates[1].get<double>(), coordinates[2].get<double>()});
}

std::string numberOf(const Json& number) {
  return number.is_number() ? numberText(number.get<double>()) : "-";
}

std::string curveLine(const Json& curve) {
  std::string line =
      fmt::format("    {} {} {} to {}", curve["index"].get<int>(), curve["type"].get<std::string>(),
                  pointOf(curve["start"]), pointOf(curve["end"]));
  if (!curve["radius"].is_null())
    line += fmt::format(" round {} radius {}", pointOf(curve["center"]), numberOf(curve["radius"]));
  line += fmt::format("  {}{}", curve["linetype"].get<std::string>(),
                      curve["visible"].get<bool>() ? "" : "  hidden");
  // Where an object draws several things, the key says of which the curve is a part.
  if (const std::string key = curve["key"].get<std::string>(); !key.empty()) line += "  [" + key + "]";
  return line + "\n";
}

// What only center lines tell.
std::string lengthLine(const Json& center) {
  if (!center.contains("startExtension")) return {};
  return fmt::format("    from its middle {} and {}, overshoots {} and {}\n",
                     numberOf(center["startExtension"]), numberOf(center["endExtension"]),
                     numberOf(center["startOvershoot"]), numberOf(center["endOvershoot"]));
}

// What only objects with members tell.
std::string memberLines(const Json& center) {
  if (!center.contains("members")) return {};
  std::string lines = "    " + center["type"].get<std::string>();
  if (center["fullPCD"].get<bool>()) lines += ", closed";
  if (center["showCenterMark"].get<bool>()) lines += ", center marked";
  if (!center["referenceEdge"].is_null())
    lines += ", reference #" + center["referenceEdge"].get<std::string>();
  lines += "\n    members";
  for (const Json& member : center["members"])
    lines += fmt::format(" [{}] #{}", member["key"].get<std::string>(), member["edge"].get<std::string>());
  for (const Json& overshoot : center["overshoots"])
    lines += fmt::format("\n    [{}] overshoots by {} and {}", overshoot["key"].get<std::string>(),
                         numberOf(overshoot["start"]), numberOf(overshoot["end"]));
  return lines + "\n";
}

std::string centerLines(const Json& center) {
  std::string edges;
  for (const Json& edge : center["edges"]) edges += " #" + edge.get<std::string>();
  std::string lines =
      fmt::format("  #{} {} {}  layer \"{}\"  linetype {}\n    center {}  radius {}\n",
                  center["handle"].get<std::string>(), center["kind"].get<std::string>(),
                  center["associative"].get<bool>() ? "follows" + edges : std::string("follows nothing"),
                  center["layer"].get<std::string>(), center["linetype"].get<std::string>(),
                  pointOf(center["center"]), numberOf(center["radius"]));
  lines += lengthLine(center);
  lines += memberLines(center);
  for (const Json& curve : center["curves"]) lines += curveLine(curve);
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
  if (runCommand(L"TORVI.REPORT", call, missing)) json["centers"] = toJson(call.result().at(L"centers"));
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
  for (const Json& center : report["centers"]) text += centerLines(center);
  return text;
}

} // namespace app
