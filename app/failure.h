// What went wrong, for the user: where, what was found, and what would have been right.
#pragma once

#include <string>

#include "quorl/base/error_status.h"

namespace app {

struct Failure {
  std::string file; // or the name of the option or program part
  int line = 0;     // counted from 1; 0 when it is about the whole
  std::string what;
  std::string expected; // empty where the fault says it all

  // "file:line: what, expected what", leaving out what is not known.
  std::string text() const;
  // Fills in the fields and gives false, so that a step can return it at once.
  bool set(std::string inFile, int atLine, std::string found, std::string wanted = {});
};

// A status as a person would put it: "it is on a locked layer"; and what would have been right.
std::string statusSentence(Quorl::ErrorStatus status);
std::string statusExpectation(Quorl::ErrorStatus status);

} // namespace app
