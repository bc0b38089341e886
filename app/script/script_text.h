// The text of a script as lines of words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/failure.h"

namespace app {

struct ScriptWord {
  std::string text;
  bool quoted = false; // stood in quotes, so it is a text and nothing else
};

struct ScriptLine {
  int number = 0;      // in the file, from 1
  std::string command; // in upper case
  std::vector<ScriptWord> words;
  std::string name; // given by AS to what the line makes; may be empty
};

// One command a line. A "#" at the start of a line, or before a blank, begins a comment; "#1A" within a line
// is a handle. Texts with blanks stand in double quotes, in which \" and \\ stand for themselves. False, with
// the failure filled in, for an open quote or an AS without a usable name; the file's name is for messages.
bool parseScript(std::string_view text, const std::string& file, std::vector<ScriptLine>& lines,
                 Failure& failure);

// A letter, then letters, digits, "_", "-" and ".".
bool isScriptName(std::string_view text);

} // namespace app
