#include "interchange/draw/svg_insertion.h"

namespace interchange {

namespace {

class MarkupScanner {
public:
  explicit MarkupScanner(std::string_view text)
      : text_(text) {}

  std::optional<RootTag> findRootEnd() {
    RootTag root;
    int depth = 0;
    for (at_ = text_.find('<'); at_ != npos; at_ = text_.find('<', at_)) {
      const std::size_t start = at_;
      if (skipNonElement()) continue;
      const bool isEnd = text_.substr(at_).starts_with("</");
      if (!skipTag()) return std::nullopt;
      const bool isEmpty = !isEnd && text_[at_ - 2] == '/';
      if (!isEnd && depth == 0) root.prefix = prefixOf(start + 1);
      if (isEnd && --depth == 0) {
        root.end = start;
        return root;
      }
      if (isEmpty && depth == 0) {
        root.end = at_ - 2;
        root.isEmpty = true;
        return root;
      }
      if (!isEnd && !isEmpty) ++depth;
    }
    return std::nullopt;
  }

private:
  static constexpr std::size_t npos = std::string_view::npos;

  void goBehind(std::string_view mark) {
    const std::size_t found = text_.find(mark, at_);
    at_ = found == npos ? text_.size() : found + mark.size();
  }

  // Comments, character data, instructions and declarations.
  bool skipNonElement() {
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("<!--")) return goBehind("-->"), true;
    if (rest.starts_with("<![CDATA[")) return goBehind("]]>"), true;
    if (rest.starts_with("<?")) return goBehind("?>"), true;
    if (!rest.starts_with("<!")) return false;
    skipDeclaration();
    return true;
  }

  // A document type may hold declarations of its own in brackets, with quotes and comments in them.
  void skipDeclaration() {
    int brackets = 0;
    for (++at_; at_ < text_.size(); ++at_) {
      const char c = text_[at_];
      if (c == '[') ++brackets;
      if (c == ']') --brackets;
      if (c == '>' && brackets <= 0) break;
      if (text_.substr(at_).starts_with("<!--")) {
        goBehind("-->");
        --at_;
      } else if (c == '"' || c == '\'') {
        at_ = text_.find(c, at_ + 1);
        if (at_ == npos) break;
      }
    }
    at_ = at_ == npos ? text_.size() : at_;
  }

  // Leaves the position behind the tag; attribute values may hold ">".
  bool skipTag() {
    for (++at_; at_ < text_.size(); ++at_) {
      const char c = text_[at_];
      if (c == '>') return ++at_, true;
      if (c != '"' && c != '\'') continue;
      at_ = text_.find(c, at_ + 1);
      if (at_ == npos) return false;
    }
    return false;
  }

  std::string prefixOf(std::size_t nameStart) const {
    const std::string_view name =
        text_.substr(nameStart, text_.find_first_of(" \t\r\n/>", nameStart) - nameStart);
    const std::size_t colon = name.find(':');
    return colon == npos ? std::string() : std::string(name.substr(0, colon + 1));
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

} // namespace

std::optional<RootTag> findRootEnd(std::string_view text) { return MarkupScanner(text).findRootEnd(); }

} // namespace interchange
