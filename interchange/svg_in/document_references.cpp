// References of the document walker: what `use` draws, and the block definitions that come of it.
//
// A reference whose transform keeps circles round becomes an insert of a block definition, which is built
// once for each style that its content inherits: a thousand pads cost one. Any other reference is drawn in
// place, because a round hole that it squeezes is no round hole, and an ellipse that it rounds is one.
#include "interchange/svg_in/document_walker.h"

#include "interchange/recognize/limits.h"
#include "interchange/svg_in/number_scanner.h"
#include "interchange/tolerance.h"

#include <algorithm>

namespace interchange {

namespace {

constexpr ZnGeMatrix2d kFlip = ZnGeMatrix2d::scaling({1, -1});

std::string_view hrefOf(const pugi::xml_node& node) {
  if (const pugi::xml_attribute href = node.attribute("href")) return trimmed(href.value());
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (std::string_view(attribute.name()).ends_with(":href")) return trimmed(attribute.value());
  }
  return {};
}

bool isViewport(std::string_view name) { return name == "symbol" || name == "svg"; }

// What holds nothing but paths with an empty text, as fonts have for blanks, is meant to draw nothing.
class EmptyOnPurpose : public pugi::xml_tree_walker {
public:
  bool for_each(pugi::xml_node& node) override {
    if (node.type() != pugi::node_element) return true;
    const pugi::xml_attribute data = node.attribute("d");
    return node.first_child() || (data && trimmed(data.value()).empty());
  }
};

bool isEmptyOnPurpose(pugi::xml_node node) {
  EmptyOnPurpose walker;
  return node.traverse(walker);
}

bool holdsId(const pugi::xml_node& node) {
  return !node.find_node([](const pugi::xml_node& inner) { return !inner.attribute("id").empty(); }).empty();
}

} // namespace

void DocumentWalker::visitUse(const pugi::xml_node& node, std::string_view name, const State& state) {
  const std::string_view href = hrefOf(node);
  if (href.empty()) return skip(node, "a reference to nothing");
  if (href.front() != '#') return skip(node, "a reference to another file");
  const auto target = byId_.find(std::string(href.substr(1)));
  if (target == byId_.end()) {
    report(node, "refers to \"" + std::string(href) + "\", which is not there", "the id of an element");
    return skip(node, "a reference to a missing element");
  }
  if (active_.contains(target->second.hash_value())) {
    report(node, "refers to \"" + std::string(href) + "\", which holds the reference itself",
           "an element that does not repeat itself");
    return skip(node, "a reference that repeats itself");
  }
  referenced_.insert(target->second.hash_value());
  placeReference(node, target->second, enter(node, name, state));
}

void DocumentWalker::placeReference(const pugi::xml_node& use, const pugi::xml_node& target, State state) {
  DrawnContours unread;
  const auto read = [&](const pugi::xml_node& node, const char* attribute, LengthAxis axis, double missing) {
    return lengthAttribute(node, attribute, state.lengths, axis, missing, unread);
  };
  const ZnGeVector2d at{read(use, "x", LengthAxis::X, 0), read(use, "y", LengthAxis::Y, 0)};
  state.toOwner = state.toOwner * ZnGeMatrix2d::translation(at);
  const std::string_view name = localName(target);
  if (isViewport(name)) {
    if (name == "svg") {
      const ZnGeVector2d corner{read(target, "x", LengthAxis::X, 0), read(target, "y", LengthAxis::Y, 0)};
      state.toOwner = state.toOwner * ZnGeMatrix2d::translation(corner);
    }
    const auto size = [&](const char* attribute, LengthAxis axis, double viewport) {
      return read(use, attribute, axis, read(target, attribute, axis, viewport));
    };
    const double width = size("width", LengthAxis::X, state.lengths.viewportWidth);
    const double height = size("height", LengthAxis::Y, state.lengths.viewportHeight);
    const std::optional<State> viewport = enterViewport(target, state, width, height);
    if (!viewport) return skip(use, "zero size");
    state = *viewport;
  }
  if (!unread.problem.empty()) report(use, unread.problem, unread.expected);
  state.inReference = true;
  if (!isFinite(state.toOwner)) return skip(use, "a place beyond the limits of a drawing");
  if (!state.toOwner.isUniformlyScaled({tolerance::kSimilarity, tolerance::kSimilarity}))
    return expandInPlace(target, state);

  const std::optional<std::size_t> block = blockFor(target, state);
  if (refusal_) return;
  if (!block || scene_.blocks[*block].elements.empty()) {
    if (!isEmptyOnPurpose(target)) skip(use, "a reference that draws nothing");
    return;
  }
  const double size = blockSize_[*block];
  if (state.out == &scene_.elements) {
    pageSize_ += size;
    if (!isWithinBudget(use, pageSize_)) return;
  }
  // The content brings its own paint; only what hides the whole reference hides the insert.
  ComputedStyle shown = state.style;
  shown.visibility = true;
  shown.fill.painted = true;
  shown.fillOpacity = 1;
  emit(use, "use", state, shown, Insert{*block, state.toOwner * kFlip}, 0, 0);
}

void DocumentWalker::expandInPlace(const pugi::xml_node& target, const State& state) {
  active_.insert(target.hash_value());
  drawTarget(target, state);
  active_.erase(target.hash_value());
}

// A viewport's transform is part of the reference; every other target brings its own.
void DocumentWalker::drawTarget(const pugi::xml_node& target, const State& state) {
  const std::string_view name = localName(target);
  if (!isViewport(name)) return visit(target, state);
  State inner = state;
  ++inner.depth;
  inner.style = computeStyle(target, name, state.style, sheet_, state.lengths);
  if (!inner.style.displayed) inner.hidden = "display:none on " + describe(target);
  visitChildren(target, inner);
}

std::optional<std::size_t> DocumentWalker::blockFor(const pugi::xml_node& target, const State& state) {
  const auto key = std::pair(target.hash_value(), state.style.key());
  if (const auto known = blockByKey_.find(key); known != blockByKey_.end()) return known->second;

  Block block;
  block.name = target.attribute("id").value();
  block.line = lineOf(target);
  for (int i = 2; !blockNames_.insert(block.name).second; ++i) {
    block.name = std::string(target.attribute("id").value()) + "_" + std::to_string(i);
  }
  State inner = state;
  inner.toOwner = kFlip;
  inner.ownerToPage = state.ownerToPage * state.toOwner.meanScale();
  if (!(inner.ownerToPage > 0)) inner.ownerToPage = 1;
  inner.layer = 0;
  inner.hidden.clear();
  inner.out = &block.elements;
  expandInPlace(target, inner);
  if (refusal_) return std::nullopt;

  double size = 1;
  for (const Element& element : block.elements) {
    const Insert* insert = std::get_if<Insert>(&element.shape);
    size += insert ? blockSize_[insert->block] : 1;
  }
  if (!isWithinBudget(target, size)) return std::nullopt;
  const std::size_t index = scene_.blocks.size();
  scene_.blocks.push_back(std::move(block));
  blockSize_.push_back(size);
  blockByKey_[key] = index;
  return index;
}

void DocumentWalker::buildUnusedDefinitions(const State& base) {
  for (std::size_t i = 0; i < definitions_.size() && !refusal_; ++i) {
    const pugi::xml_node definition = definitions_[i];
    if (referenced_.contains(definition.hash_value())) continue;
    if (std::string_view(definition.attribute("id").value()).empty()) {
      // A group may be there just to hold definitions together.
      if (!holdsId(definition)) skip(definition, "a definition without an id");
      continue;
    }
    State state = base;
    state.inReference = true;
    state.depth = 1;
    const std::optional<std::size_t> block = blockFor(definition, state);
    if (block && scene_.blocks[*block].elements.empty() && !isEmptyOnPurpose(definition))
      skip(definition, "a definition that draws nothing");
  }
}

bool DocumentWalker::isWithinBudget(const pugi::xml_node& node, double size) {
  const auto limit = static_cast<double>(options_.largestExpansion);
  if (size <= limit) return true;
  refuse(node, "references repeat so much that the drawing grows beyond all measure",
         "no more than " + std::to_string(options_.largestExpansion) + " elements");
  return false;
}

} // namespace interchange
