// Cases told as text: a line of input, and under it what comes of it, a line each, set off by two blanks.
// "== name" begins a section, "# " a remark.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

inline Lines linesOf(const std::string& text) {
  Lines lines;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
    end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
  }
  return lines;
}

inline std::string textOf(const Lines& lines, const char* indent = "") {
  std::string text;
  for (const std::string& line : lines) text += indent + line + "\n";
  return text;
}

// In a line "\n" stands for a line's end.
inline std::string withLineEnds(std::string line) {
  for (std::size_t at; (at = line.find("\\n")) != std::string::npos;) line.replace(at, 2, "\n");
  return line;
}

// What a case comes to, given its section, its input and what is expected.
using ToldCase = std::function<Lines(const std::string&, const std::string&, const Lines&)>;

// Runs the cases of tests/PATH. What was found is left as a whole file beside the programs, so that a wanted
// change is looked over and taken.
inline void runToldCases(const std::string& path, int least, const ToldCase& run) {
  std::ifstream told(QUORL_SOURCE_DIR "/tests/" + path);
  std::ofstream found(QUORL_BIN_DIR "/" + path.substr(path.rfind('/') + 1) + ".found");
  std::string line, section, input;
  Lines expected;
  int cases = 0;
  const auto check = [&] {
    if (input.empty()) return;
    const Lines lines = run(section, input, expected);
    found << textOf(lines, "  ");
    EXPECT_EQ(textOf(lines), textOf(expected)) << input;
    input.clear();
    expected.clear();
    ++cases;
  };
  while (std::getline(told, line)) {
    if (line.starts_with("  ")) {
      expected.push_back(line.substr(2));
      continue;
    }
    check();
    found << line << "\n";
    if (line.starts_with("== "))
      section = line.substr(3);
    else if (!line.starts_with("# "))
      input = line;
  }
  check();
  EXPECT_GE(cases, least);
}
