// What the program says and does, told as text in program_cases.txt. The section says how an input is run.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>

#include "support/run_program.h"
#include "support/told_cases.h"

namespace {

using Json = nlohmann::json;

std::string circle(double x, double y, double radius) {
  return fmt::format("<circle cx='{:.4f}' cy='{:.4f}' r='{}'/>", x, y, radius);
}

// Holes of radius 3, each off its place by that much to one side and the other in turn: count, radius and off
// of a ring around (100, 100), or count, y and off of a row.
std::string holes(const std::string& kind, int count, double where, double off) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / count, arm = where + (i % 2 ? off : -off);
    all += kind == "ring" ? circle(100 + arm * std::cos(angle), 100 + arm * std::sin(angle), 3)
                          : circle(30 + 15 * i, where + (i % 2 ? off : 0.0), 3);
  }
  return all;
}

// A sheet of 200 x 200 mm; "{ring 6 40 0.002}" and "{row 4 20}" stand for holes.
std::string sheet(std::string content) {
  for (size_t at; (at = content.find('{')) != std::string::npos;) {
    const size_t end = content.find('}', at);
    std::istringstream words(content.substr(at + 1, end - at - 1));
    std::string kind;
    int count = 0;
    double where = 0.0, off = 0.0;
    words >> kind >> count >> where >> off;
    content.replace(at, end + 1 - at, holes(kind, count, where, off));
  }
  return "<svg xmlns='http://www.w3.org/2000/svg' width='200mm' height='200mm' viewBox='0 0 200 200' "
         "fill='none' stroke='black'>" +
         content + "</svg>\n";
}

// A script of which the last line fails: why. It is told with its place, and nothing is saved.
Lines fault(const std::string& script) {
  const ProgramFolder folder;
  folder.write("in.quorl", script);
  const ProgramRun run = folder.run("quorl run in.quorl -o out.bdoc");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(folder.files(), Lines{"in.quorl"});
  const std::string place = fmt::format("in.quorl:{}: ", linesOf(script).size());
  return linesOf(run.err.starts_with(place) ? run.err.substr(place.size()) : run.err);
}

// What a script has made, as LIST tells it.
Lines list(const std::string& script) {
  const ProgramFolder folder;
  folder.write("in.quorl", script + "\nLIST\n");
  const ProgramRun run = folder.run("quorl run in.quorl");
  EXPECT_EQ(run.exitCode, 0) << run.err;
  return linesOf(run.out);
}

// The drawings that a command line may read stand there beforehand. "out" and "err" expect a piece of what is
// said, "left" names all files that come to those; who succeeds says nothing on standard error.
Lines commandLine(const std::string& line, const Lines& expected) {
  const ProgramFolder folder;
  std::filesystem::copy(QUORL_SOURCE_DIR "/examples/flange-plate.svg", folder.path() / "plate.svg");
  folder.write("bad.svg", "<svg xmlns='http://www.w3.org/2000/svg'>\n<circle r='3'\n</svg>\n");
  folder.write("bare.svg", "<svg xmlns='http://www.w3.org/2000/svg'><circle r='3' stroke='black'/></svg>\n");
  folder.write("one.svg", sheet("<circle cx='50' cy='50' r='10'/>"));
  folder.write("ring.svg", sheet("{ring 6 40}"));
  folder.write("rough.svg", sheet("{ring 6 40 0.01}"));
  const std::vector<std::string> before = folder.files();
  const ProgramRun run = folder.run(line);
  Lines lines;
  if (run.exitCode != 0) lines.push_back(fmt::format("exit {}", run.exitCode));
  for (const std::string& piece : expected) {
    const std::string& said = piece.starts_with("out ") ? run.out : run.err;
    if (!piece.starts_with("out ") && !piece.starts_with("err ")) continue;
    lines.push_back(said.find(piece.substr(4)) != std::string::npos ? piece : piece.substr(0, 4) + said);
  }
  if (run.exitCode == 0 && !run.err.empty()) lines.push_back("err " + run.err);
  std::string left;
  for (const std::string& file : folder.files())
    if (std::find(before.begin(), before.end(), file) == before.end()) left += " " + file;
  if (!left.empty()) lines.push_back("left" + left);
  return lines;
}

// What annotate sees in the content of a sheet, "| options" behind it: the single marks in the order of
// drawing, then the other finds. Annotating the result again adds nothing.
Lines annotated(const std::string& input) {
  const ProgramFolder folder;
  const size_t bar = input.find(" | ");
  folder.write("in.svg", sheet(input.substr(0, bar)));
  const std::string options = bar == std::string::npos ? "" : input.substr(bar + 3);
  Lines lines;
  size_t centers = 0;
  for (const char* pass : {"in.svg -o a.bdoc", "a.bdoc -o b.bdoc"}) {
    const ProgramRun run = folder.run(fmt::format("quorl annotate {} --report r.json {}", pass, options));
    EXPECT_EQ(run.exitCode, 0) << run.err;
    const Json report = Json::parse(folder.read("r.json"));
    const bool first = pass[0] == 'i';
    if (!first) EXPECT_EQ(report["centers"].size(), centers) << "made a second time";
    centers = report["centers"].size();
    for (const std::string kind : {"slot", "strip"})
      for (const Json& find : report[kind + "s"]) {
        EXPECT_EQ(find["isNew"], first);
        EXPECT_EQ(find["edges"].size(), 2u);
        EXPECT_FALSE(find["evidence"].get<std::string>().empty());
        if (first) lines.push_back(kind);
      }
    if (!first) break;
    std::map<std::string, int> members;
    for (const Json& hole : report["holes"]) ++members[hole["belongsTo"]];
    for (const Json& pattern : report["patterns"]) {
      EXPECT_FALSE(pattern["evidence"].get<std::string>().empty());
      EXPECT_LE(pattern["aligned"].get<double>(), 0.06); // 2 percent of the holes' radius
      lines.push_back(fmt::format("{} of {}{}", pattern["type"].get<std::string>(),
                                  members[pattern["handle"]],
                                  pattern["showsCenterMark"].get<bool>() ? ", center marked" : ""));
    }
    std::sort(lines.begin(), lines.end());
    size_t marks = 0;
    for (const Json& center : report["centers"]) {
      EXPECT_TRUE(center["associative"].get<bool>());
      if (center["kind"] != "CENTERMARK") continue;
      lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(marks++),
                   fmt::format("mark {:.4g}", center["radius"].get<double>()));
    }
    EXPECT_EQ(centers, lines.size());
  }
  return lines;
}

TEST(Program, SaysAndDoesWhatIsTold) {
  const std::string after = "faults after ";
  runToldCases("app/program_cases.txt", 200,
               [&](const std::string& section, const std::string& input, const Lines& expected) {
                 if (section.starts_with(after))
                   return fault(withLineEnds(section.substr(after.size()) + "\\n" + input));
                 if (section == "faults") return fault(withLineEnds(input));
                 if (section == "lists") return list(withLineEnds(input));
                 return section == "annotate" ? annotated(input) : commandLine(input, expected);
               });
}

} // namespace
