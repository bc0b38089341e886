#include "app/script/script_text.h"

#include <algorithm>
#include <cctype>

namespace app {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string upperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

// Takes a quoted text off the front of the rest; false when the quote is never closed.
bool takeQuoted(std::string_view& rest, ScriptWord& word) {
  word.quoted = true;
  for (size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      return true;
    }
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    word.text += rest[i];
  }
  return false;
}

ScriptWord takeWord(std::string_view& rest) {
  const auto end = static_cast<size_t>(std::find_if(rest.begin(), rest.end(), isBlank) - rest.begin());
  ScriptWord word{std::string(rest.substr(0, end)), false};
  rest.remove_prefix(end);
  return word;
}

bool isComment(std::string_view rest, bool atStart) {
  return rest.front() == '#' && (atStart || rest.size() == 1 || isBlank(rest[1]));
}

bool splitWords(std::string_view rest, std::vector<ScriptWord>& words) {
  while (true) {
    while (!rest.empty() && isBlank(rest.front())) rest.remove_prefix(1);
    if (rest.empty() || isComment(rest, words.empty())) return true;
    if (rest.front() != '"') {
      words.push_back(takeWord(rest));
    } else if (!takeQuoted(rest, words.emplace_back())) {
      return false;
    }
  }
}

// Splits the name that AS gives off the end of the line; false when there is none or it can't be one.
bool takeName(ScriptLine& line) {
  const auto as = std::find_if(line.words.begin(), line.words.end(), [](const ScriptWord& word) {
    return !word.quoted && upperCase(word.text) == "AS";
  });
  if (as == line.words.end()) return true;
  if (line.words.end() - as != 2 || !isScriptName((as + 1)->text)) return false;
  line.name = (as + 1)->text;
  line.words.erase(as, line.words.end());
  return true;
}

} // namespace

bool isScriptName(std::string_view text) {
  const auto isNamePart = [](unsigned char c) { return std::isalnum(c) || c == '_' || c == '-' || c == '.'; };
  return !text.empty() && std::isalpha(static_cast<unsigned char>(text.front())) &&
         std::all_of(text.begin(), text.end(), isNamePart);
}

bool parseScript(std::string_view text, const std::string& file, std::vector<ScriptLine>& lines,
                 Failure& failure) {
  constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf"; // some editors begin a text with it
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  for (int number = 1; !text.empty(); ++number) {
    const size_t end = std::min(text.find('\n'), text.size());
    ScriptLine line;
    line.number = number;
    if (!splitWords(text.substr(0, end), line.words))
      return failure.set(file, number, "a text without its closing quote", "\"");
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.words.empty()) continue;
    line.command = upperCase(line.words.front().text);
    line.words.erase(line.words.begin());
    if (!takeName(line))
      return failure.set(file, number, line.command + ": AS without a name at the end of the line",
                         "AS and a word that begins with a letter");
    lines.push_back(std::move(line));
  }
  return true;
}

} // namespace app
