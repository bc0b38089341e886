// The part of CSS that drawings use: rules by element type, class and id, without combinators.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace interchange {

struct Declaration {
  std::string property;
  std::string value;
  bool important = false;
};

// The declarations of a style attribute or of a rule's braces; broken ones are left out.
std::vector<Declaration> parseDeclarations(std::string_view text);

class StyleSheet {
public:
  // Adds the rules of one style element; later ones win over earlier of the same weight.
  void add(std::string_view text);

  // Calls `use(const Declaration&)` for everything that applies to the element, weakest first.
  template<class Use>
  void forEach(std::string_view element, std::string_view classes, std::string_view id, Use use) const {
    for (const std::size_t index : matching(element, classes, id)) {
      for (const Declaration& declaration : rules_[index].declarations) use(declaration);
    }
  }
  // Selectors that this style sheet cannot follow, as written.
  const std::vector<std::string>& refused() const { return refused_; }
  bool empty() const { return rules_.empty(); }

private:
  struct Rule {
    std::string element;
    std::string id;
    std::vector<std::string> classes;
    int weight = 0;
    std::vector<Declaration> declarations;
  };

  void addRule(std::string_view selectors, std::string_view body);
  // Of a selector like path.cut#a; false when it is none.
  static bool parseSelector(std::string_view text, Rule& rule);
  std::vector<std::size_t> matching(std::string_view element, std::string_view classes,
                                    std::string_view id) const;

  std::vector<Rule> rules_;
  // By the most telling part of the selector: "#id", ".class", "element" or "*".
  std::unordered_map<std::string, std::vector<std::size_t>> index_;
  std::vector<std::string> refused_;
};

} // namespace interchange
