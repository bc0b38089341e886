// Walks the tree of a drawing and fills the scene: groups, styles, layers, shapes and references.
#pragma once

#include "interchange/svg_in/basic_shapes.h"
#include "interchange/svg_in/computed_style.h"
#include "interchange/svg_in/line_index.h"
#include "interchange/svg_in/page_setup.h"
#include "interchange/svg_in/read_options.h"
#include "interchange/svg_in/scene.h"

#include "quorl/base/failure.h"

#include <pugixml.hpp>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace interchange {

// Scene names stay alive with the walker; the XML document must outlive it. Use one walker for one file.
class DocumentWalker {
public:
  DocumentWalker(const LineIndex& lines, const std::string& fileName, const ReadOptions& options,
                 Scene& scene);

  // Returns the error for which the file is refused; the scene is then incomplete.
  std::optional<Quorl::Failure> walk(const pugi::xml_node& root, const std::string& hint);

private:
  // What an element inherits. The owner is the page or the block definition being built.
  struct State {
    ZnGeMatrix2d toOwner;   // user units, y down, to the owner's, y up
    double ownerToPage = 1; // millimetres of an owner unit
    ComputedStyle style;
    LengthContext lengths;
    std::size_t layer = 0;
    std::string hidden; // why everything below is hidden
    int depth = 0;
    bool inReference = false; // below a use or in a definition
    bool topLevel = false;    // child of the root
    std::vector<Element>* out = nullptr;
  };
  using Handler = void (DocumentWalker::*)(const pugi::xml_node&, std::string_view, const State&);
  struct HandlerEntry {
    std::string_view name;
    Handler handler;
  };
  static const HandlerEntry kHandlers[];

  // Document-wide facts, collected before anything is drawn.
  void index(const pugi::xml_node& root);

  void visit(const pugi::xml_node& node, const State& state);
  void visitChildren(const pugi::xml_node& node, const State& state);
  void visitGroup(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitSwitch(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitNestedSvg(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitPath(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitBasicShape(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitText(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitDefinitions(const pugi::xml_node& node, std::string_view name, const State& state);
  void visitUse(const pugi::xml_node& node, std::string_view name, const State& state);
  void skipUndrawn(const pugi::xml_node& node, std::string_view name, const State& state);
  void passOver(const pugi::xml_node& node, std::string_view name, const State& state);

  // State for the content of an element: its style, transform, layer and whether it hides.
  State enter(const pugi::xml_node& node, std::string_view name, const State& state);
  std::size_t layerOf(const pugi::xml_node& node, const State& state, bool displayed);
  // A viewport with a view box; nothing when it has no area.
  std::optional<State> enterViewport(const pugi::xml_node& node, const State& state, double width,
                                     double height);

  // References and block definitions (document_references.cpp).
  void placeReference(const pugi::xml_node& use, const pugi::xml_node& target, State state);
  void expandInPlace(const pugi::xml_node& target, const State& state);
  std::optional<std::size_t> blockFor(const pugi::xml_node& target, const State& state);
  void drawTarget(const pugi::xml_node& target, const State& state);
  void buildUnusedDefinitions(const State& base);
  bool isWithinBudget(const pugi::xml_node& node, double size);

  void emitContours(const pugi::xml_node& node, std::string_view name, const State& state,
                    std::vector<Contour>& contours);
  void emit(const pugi::xml_node& node, std::string_view name, const State& state, const ComputedStyle& style,
            Shape shape, int subpath, int run);
  Style styleOf(const ComputedStyle& style, const State& state, bool isText) const;

  std::string_view localName(const pugi::xml_node& node) const; // empty for other namespaces
  std::string describe(const pugi::xml_node& node) const;
  int lineOf(const pugi::xml_node& node) const { return lines_.lineOf(node.offset_debug()); }
  void skip(const pugi::xml_node& node, std::string why);
  void report(const pugi::xml_node& node, const std::string& what, std::string expected);
  void refuse(const pugi::xml_node& node, std::string what, std::string expected);

  const LineIndex& lines_;
  const std::string& file_;
  const ReadOptions& options_;
  Scene& scene_;
  std::string rootPrefix_;
  StyleSheet sheet_;
  std::unordered_map<std::string, pugi::xml_node> byId_;
  std::unordered_map<std::string, std::size_t> layerByName_;
  std::vector<pugi::xml_node> definitions_;
  std::map<std::pair<std::size_t, std::string>, std::size_t> blockByKey_;
  std::vector<double> blockSize_; // elements of a block with all that it repeats
  std::set<std::size_t> active_;  // targets being drawn
  std::set<std::size_t> referenced_;
  std::set<std::string> blockNames_;
  double pageSize_ = 0; // elements on the page with all that is repeated
  std::size_t referenceVisits_ = 0, pathData_ = 0;
  std::optional<Quorl::Failure> refusal_;
};

} // namespace interchange
