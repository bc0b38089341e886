#include "interchange/svg_in/style_sheet.h"

#include "interchange/svg_in/number_scanner.h"

#include <algorithm>

namespace interchange {

namespace {

std::string withoutComments(std::string_view text) {
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    const std::size_t open = text.find("/*");
    clean.append(text.substr(0, open));
    if (open == text.npos) break;
    const std::size_t close = text.find("*/", open + 2);
    text = close == text.npos ? std::string_view() : text.substr(close + 2);
  }
  return clean;
}

// Position of the brace that closes the one before `at`, or the end.
std::size_t closingBrace(std::string_view text, std::size_t at) {
  for (int depth = 1; at < text.size(); ++at) {
    if (text[at] == '{') ++depth;
    if (text[at] == '}' && --depth == 0) break;
  }
  return at;
}

// The words of a class attribute.
std::vector<std::string_view> splitWords(std::string_view text) {
  std::vector<std::string_view> words;
  const char* const kSpaces = " \t\r\n\f";
  for (std::size_t first = text.find_first_not_of(kSpaces); first != text.npos;) {
    const std::size_t last = std::min(text.find_first_of(kSpaces, first), text.size());
    words.push_back(text.substr(first, last - first));
    first = text.find_first_not_of(kSpaces, last);
  }
  return words;
}

} // namespace

std::vector<Declaration> parseDeclarations(std::string_view text) {
  const std::string clean = withoutComments(text);
  std::string_view rest = clean;
  std::vector<Declaration> declarations;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(';'), rest.size());
    const std::string_view one = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t colon = one.find(':');
    if (colon == one.npos) continue;
    std::string_view value = trimmed(one.substr(colon + 1));
    const std::size_t mark = value.find('!');
    const bool important = mark != value.npos && value.substr(mark).find("important") != value.npos;
    if (important) value = trimmed(value.substr(0, mark));
    declarations.push_back({std::string(trimmed(one.substr(0, colon))), std::string(value), important});
  }
  return declarations;
}

void StyleSheet::add(std::string_view text) {
  const std::string clean = withoutComments(text);
  std::string_view rest = trimmed(clean);
  while (!rest.empty()) {
    const std::size_t open = rest.find('{');
    // Looked for where it matters only: a sheet may have none to its end, and thousands of rules.
    const std::size_t statement = rest.front() == '@' ? rest.find(';') : rest.npos;
    if (statement < open) { // @import, @charset
      refused_.emplace_back(rest.substr(0, statement));
      rest = trimmed(rest.substr(statement + 1));
      continue;
    }
    if (open == rest.npos) break;
    const std::size_t close = closingBrace(rest, open + 1);
    const std::string_view head = trimmed(rest.substr(0, open));
    // Blocks with a condition hold for a medium that a drawing may not be meant for.
    if (head.starts_with("@")) {
      refused_.emplace_back(head);
    } else {
      addRule(head, rest.substr(open + 1, close - open - 1));
    }
    rest = close < rest.size() ? trimmed(rest.substr(close + 1)) : std::string_view();
  }
}

void StyleSheet::addRule(std::string_view selectors, std::string_view body) {
  const std::vector<Declaration> declarations = parseDeclarations(body);
  // A frame of a document that was pasted into markup may stand before the first rule.
  if (selectors.starts_with("<!--")) selectors.remove_prefix(4);
  while (!selectors.empty()) {
    const std::size_t comma = std::min(selectors.find(','), selectors.size());
    const std::string_view one = trimmed(selectors.substr(0, comma));
    selectors.remove_prefix(std::min(comma + 1, selectors.size()));
    Rule rule;
    if (!parseSelector(one, rule)) {
      refused_.emplace_back(one);
      continue;
    }
    std::string key = "*";
    if (!rule.id.empty()) {
      key = "#" + rule.id;
    } else if (!rule.classes.empty()) {
      key = "." + rule.classes.front();
    } else if (!rule.element.empty()) {
      key = rule.element;
    }
    rule.declarations = declarations;
    index_[key].push_back(rules_.size());
    rules_.push_back(std::move(rule));
  }
}

bool StyleSheet::parseSelector(std::string_view text, Rule& rule) {
  if (text.empty() || text.find_first_of(" \t\r\n>+~[:") != text.npos) return false;
  std::size_t end = std::min(text.find_first_of(".#"), text.size());
  const std::string_view element = text.substr(0, end);
  if (element != "*") rule.element = element;
  rule.weight = rule.element.empty() ? 0 : 1;
  while (end < text.size()) {
    const char mark = text[end];
    const std::size_t next = std::min(text.find_first_of(".#", end + 1), text.size());
    const std::string_view name = text.substr(end + 1, next - end - 1);
    if (name.empty()) return false;
    if (mark == '#') {
      rule.id = name;
      rule.weight += 10000;
    } else {
      rule.classes.emplace_back(name);
      rule.weight += 100;
    }
    end = next;
  }
  return true;
}

std::vector<std::size_t> StyleSheet::matching(std::string_view element, std::string_view classes,
                                              std::string_view id) const {
  std::vector<std::size_t> found;
  if (rules_.empty()) return found;
  const std::vector<std::string_view> words = splitWords(classes);
  const auto hasClass = [&](const std::string& name) {
    return std::find(words.begin(), words.end(), name) != words.end();
  };
  const auto collect = [&](const std::string& key) {
    const auto bucket = index_.find(key);
    if (bucket == index_.end()) return;
    for (const std::size_t index : bucket->second) {
      const Rule& rule = rules_[index];
      const bool matches = (rule.element.empty() || rule.element == element) &&
                           (rule.id.empty() || rule.id == id) &&
                           std::all_of(rule.classes.begin(), rule.classes.end(), hasClass);
      if (matches) found.push_back(index);
    }
  };
  collect("*");
  collect(std::string(element));
  for (const std::string_view word : words) collect("." + std::string(word));
  if (!id.empty()) collect("#" + std::string(id));
  std::sort(found.begin(), found.end(), [&](std::size_t one, std::size_t other) {
    return std::pair(rules_[one].weight, one) < std::pair(rules_[other].weight, other);
  });
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

} // namespace interchange
