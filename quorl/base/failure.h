// What went wrong, for a person: where, what was found, and what would have been right.
#pragma once

#include <cstdint>
#include <string>

namespace Quorl {

struct Failure {
  std::string file{};     // or the name of an option or a part of the program; empty for data in memory
  std::uint64_t line = 0; // of a text, counted from 1; 0 when no line is at fault
  std::string what{};
  std::string expected{}; // empty where the fault says it all
  std::string place{};    // within the file where it has no lines: "byte 123", "object 2A (ZnDbLine)"

  // "file:line: place: what, expected what", leaving out what is not known; empty without a fault.
  std::string text() const;
  // Fills in all but the place and gives false, so that a step can return it at once.
  bool set(std::string inFile, std::uint64_t atLine, std::string found, std::string wanted = {});
};

} // namespace Quorl
