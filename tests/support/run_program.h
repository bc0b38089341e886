// Runs the built program as a person would, in a folder of its own that goes with the test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct ProgramRun {
  int exitCode = -1; // -1 when the program did not end by itself
  std::string out, err;
};

class ProgramFolder {
public:
  ProgramFolder();
  ~ProgramFolder(); // removes it
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // One command line as typed in a shell, in this folder; "quorl" is the built program, and $EXAMPLES and
  // $SCENES name those folders. Standard error is no terminal.
  ProgramRun run(const std::string& commandLine) const;
  // The same with another program, such as a copy without its modules.
  ProgramRun runWith(const std::string& program, const std::string& commandLine) const;

  void write(const std::string& name, const std::string& text) const;
  std::string read(const std::string& name) const; // empty for a file that is not there
  bool has(const std::string& name) const { return std::filesystem::exists(path_ / name); }
  // Names of all files in it, sorted, those that begin with a dot too.
  std::vector<std::string> files() const;

private:
  std::filesystem::path path_;
};

// Whether the text holds every piece; the first missing one is told as a test failure.
bool holdsAll(const std::string& text, const std::vector<std::string>& pieces);
