#include "interchange/svg_in/document_walker.h"

#include "interchange/recognize/contour_shapes.h"
#include "interchange/recognize/limits.h"
#include "interchange/svg_in/number_scanner.h"
#include "interchange/svg_in/path_data.h"
#include "interchange/svg_in/text_runs.h"
#include "interchange/svg_in/transform_list.h"
#include "interchange/tolerance.h"

#include <algorithm>
#include <cmath>

namespace interchange {

namespace {

// Drawings nest a dozen deep, generated ones a hundred; the walk recurses, so that there must be an end.
constexpr int kDeepest = 1000;

// The value of an attribute by its name behind any prefix.
std::string_view prefixedAttribute(const pugi::xml_node& node, std::string_view suffix) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (std::string_view(attribute.name()).ends_with(suffix)) return attribute.value();
  }
  return {};
}

bool flattens(const ZnGeMatrix2d& map) {
  const double size = map.scale();
  return !(std::abs(map.det()) > tolerance::kFlatMap * size * size);
}

} // namespace

const DocumentWalker::HandlerEntry DocumentWalker::kHandlers[] = {
    {"g", &DocumentWalker::visitGroup},
    {"path", &DocumentWalker::visitPath},
    {"line", &DocumentWalker::visitBasicShape},
    {"polyline", &DocumentWalker::visitBasicShape},
    {"polygon", &DocumentWalker::visitBasicShape},
    {"rect", &DocumentWalker::visitBasicShape},
    {"circle", &DocumentWalker::visitBasicShape},
    {"ellipse", &DocumentWalker::visitBasicShape},
    {"text", &DocumentWalker::visitText},
    {"use", &DocumentWalker::visitUse},
    {"a", &DocumentWalker::visitGroup},
    {"svg", &DocumentWalker::visitNestedSvg},
    {"switch", &DocumentWalker::visitSwitch},
    {"defs", &DocumentWalker::visitDefinitions},
    {"symbol", &DocumentWalker::visitDefinitions},
    {"title", &DocumentWalker::passOver},
    {"desc", &DocumentWalker::passOver},
    {"metadata", &DocumentWalker::passOver},
    {"style", &DocumentWalker::passOver},
};

DocumentWalker::DocumentWalker(const LineIndex& lines, const std::string& fileName,
                               const ReadOptions& options, Scene& scene)
    : lines_(lines)
    , file_(fileName)
    , options_(options)
    , scene_(scene) {}

std::optional<Quorl::Failure> DocumentWalker::walk(const pugi::xml_node& root, const std::string& hint) {
  const std::string_view rootName = root.name();
  rootPrefix_ = rootName.substr(0, rootName.find(':') + 1); // npos + 1 is 0
  if (localName(root) != "svg") {
    refuse(root, "the root element is <" + std::string(rootName) + ">", "<svg>");
    return refusal_;
  }
  index(root);
  const PageSetup page = setUpPage(root, hint, options_);
  scene_.document = page.facts;
  if (!page.problem.empty()) report(root, page.problem, "a positive size with a unit, or four numbers");
  scene_.layers.push_back({"0", true});
  layerByName_["0"] = 0;

  State base;
  base.toOwner = page.toPage;
  base.ownerToPage = 1;
  base.lengths = page.lengths;
  base.out = &scene_.elements;
  State state = base;
  state.style = computeStyle(root, "svg", base.style, sheet_, page.lengths);
  if (!state.style.displayed) state.hidden = "display:none on " + describe(root);
  state.topLevel = true;
  visitChildren(root, state);
  if (!refusal_) buildUnusedDefinitions(base);
  return refusal_;
}

// Walks without recursion: the depth has not been checked yet.
void DocumentWalker::index(const pugi::xml_node& root) {
  pugi::xml_node node = root;
  while (node) {
    if (node.type() == pugi::node_element) {
      if (const pugi::xml_attribute id = node.attribute("id")) byId_.try_emplace(id.value(), node);
      if (localName(node) == "style") {
        std::string text;
        for (const pugi::xml_node& child : node.children()) text += child.value();
        sheet_.add(text);
      }
    }
    if (node.first_child()) {
      node = node.first_child();
      continue;
    }
    while (node && node != root && !node.next_sibling()) node = node.parent();
    if (!node || node == root) break;
    node = node.next_sibling();
  }
  for (const std::string& selector : sheet_.refused()) {
    scene_.skipped.push_back(
        {"style rule \"" + selector + "\"", 0, "only type, class and id selectors are followed"});
  }
}

void DocumentWalker::visitChildren(const pugi::xml_node& node, const State& state) {
  for (const pugi::xml_node& child : node.children()) {
    if (refusal_) return;
    if (child.type() == pugi::node_element) visit(child, state);
  }
}

void DocumentWalker::visit(const pugi::xml_node& node, const State& state) {
  if (state.depth > kDeepest) {
    refuse(node, "elements are nested or refer to each other too deeply",
           "no more than " + std::to_string(kDeepest) + " levels");
    return;
  }
  if (state.inReference && ++referenceVisits_ > options_.largestExpansion) {
    isWithinBudget(node, static_cast<double>(referenceVisits_));
    return;
  }
  const std::string_view name = localName(node);
  for (const HandlerEntry& entry : kHandlers) {
    if (entry.name == name) return (this->*entry.handler)(node, name, state);
  }
  skipUndrawn(node, name, state);
}

void DocumentWalker::visitGroup(const pugi::xml_node& node, std::string_view name, const State& state) {
  if (options_.withoutAnnotation && std::string_view(node.attribute("id").value()) == kAnnotationId)
    return skip(node, "an earlier annotation: it is made anew");
  visitChildren(node, enter(node, name, state));
}

// The first child whose conditions a plain renderer meets.
void DocumentWalker::visitSwitch(const pugi::xml_node& node, std::string_view name, const State& state) {
  const State inner = enter(node, name, state);
  for (const pugi::xml_node& child : node.children()) {
    if (child.type() != pugi::node_element || localName(child).empty()) continue;
    const std::string_view language = child.attribute("systemLanguage").value();
    const bool understood = child.attribute("systemLanguage").empty() || language.find("en") != language.npos;
    if (!child.attribute("requiredExtensions").empty() || !understood) {
      skip(child, "its condition in the switch is not met");
      continue;
    }
    visit(child, inner);
    return;
  }
}

void DocumentWalker::visitNestedSvg(const pugi::xml_node& node, std::string_view name, const State& state) {
  State inner = enter(node, name, state);
  DrawnContours unread;
  const auto read = [&](const char* attribute, LengthAxis axis, double missing) {
    return lengthAttribute(node, attribute, state.lengths, axis, missing, unread);
  };
  const ZnGeVector2d corner{read("x", LengthAxis::X, 0), read("y", LengthAxis::Y, 0)};
  const double width = read("width", LengthAxis::X, state.lengths.viewportWidth);
  const double height = read("height", LengthAxis::Y, state.lengths.viewportHeight);
  if (!unread.problem.empty()) report(node, unread.problem, unread.expected);
  inner.toOwner = inner.toOwner * ZnGeMatrix2d::translation(corner);
  if (const std::optional<State> viewport = enterViewport(node, inner, width, height)) {
    visitChildren(node, *viewport);
  } else {
    skip(node, "zero size");
  }
}

std::optional<DocumentWalker::State>
DocumentWalker::enterViewport(const pugi::xml_node& node, const State& state, double width, double height) {
  State inner = state;
  const pugi::xml_attribute text = node.attribute("viewBox");
  const std::optional<ViewBox> box = parseViewBox(text.value());
  if (text && !box)
    report(node, "viewBox=\"" + std::string(text.value()) + "\" is no view box", "four numbers");
  if (!box) {
    inner.lengths.viewportWidth = width;
    inner.lengths.viewportHeight = height;
    return inner;
  }
  // A page of unknown size gives its viewports no size either; the box then is its own.
  if (width == 0 && !node.attribute("width")) width = box->width;
  if (height == 0 && !node.attribute("height")) height = box->height;
  if (!(width > 0) || !(height > 0)) return std::nullopt;
  inner.toOwner =
      inner.toOwner * fitViewBox(*box, width, height, node.attribute("preserveAspectRatio").value());
  inner.lengths.viewportWidth = box->width;
  inner.lengths.viewportHeight = box->height;
  return inner;
}

void DocumentWalker::visitPath(const pugi::xml_node& node, std::string_view name, const State& state) {
  const State inner = enter(node, name, state);
  const pugi::xml_attribute text = node.attribute("d");
  const std::string_view written = text.value();
  pathData_ += written.size();
  if (pathData_ > options_.largestPathData)
    return refuse(node, "the paths up to here have " + std::to_string(pathData_) + " bytes",
                  std::to_string(options_.largestPathData) + " at most in a drawing");
  PathData data = parsePath(written);
  if (data.error)
    report(node, data.error->what + " at character " + std::to_string(data.error->position + 1),
           data.error->expected);
  if (data.contours.empty()) {
    // The blanks of a font, which the reference to them judges.
    if (state.inReference && text && trimmed(text.value()).empty()) return;
    skip(node, trimmed(text.value()).empty() ? "a path without data" : "a path that draws nothing");
    return;
  }
  emitContours(node, name, inner, data.contours);
}

void DocumentWalker::visitBasicShape(const pugi::xml_node& node, std::string_view name, const State& state) {
  const State inner = enter(node, name, state);
  DrawnContours drawn;
  readBasicShape(node, name, inner.lengths, drawn);
  if (!drawn.problem.empty()) report(node, drawn.problem, drawn.expected);
  if (!drawn.skipReason.empty()) {
    skip(node, drawn.skipReason);
    return;
  }
  emitContours(node, name, inner, drawn.contours);
}

void DocumentWalker::visitText(const pugi::xml_node& node, std::string_view name, const State& state) {
  const State inner = enter(node, name, state);
  std::vector<TextRun> runs = readText(node, inner.style, sheet_, inner.lengths);
  if (runs.empty()) skip(node, "a text without letters");
  int run = 0;
  for (TextRun& piece : runs) {
    placeText(piece.text, inner.toOwner);
    if (!isUsable(piece.text.position) || !(piece.text.height > 0) || !std::isfinite(piece.text.height)) {
      skip(node, "its size is zero or its place beyond the limits of a drawing");
      continue;
    }
    emit(piece.node, name, inner, piece.style, std::move(piece.text), 0, run++);
  }
}

// Definitions are drawn where they are used; those that are not are made into blocks at the end.
void DocumentWalker::visitDefinitions(const pugi::xml_node& node, std::string_view name, const State& state) {
  if (state.inReference) return;
  if (name == "symbol") {
    definitions_.push_back(node);
    return;
  }
  for (const pugi::xml_node& child : node.children()) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view childName = localName(child);
    const bool drawable = std::any_of(std::begin(kHandlers), std::end(kHandlers), [&](const HandlerEntry& e) {
      return e.name == childName && e.handler != &DocumentWalker::passOver;
    });
    if (childName == "defs") {
      State inner = state;
      ++inner.depth;
      visit(child, inner);
    } else if (drawable) {
      definitions_.push_back(child);
      if (childName == "g" && child.attribute("id").empty()) visitDefinitions(child, childName, state);
    } else if (childName != "style" && childName != "title" && childName != "desc" &&
               childName != "metadata") {
      skipUndrawn(child, childName, state);
    }
  }
}

void DocumentWalker::passOver(const pugi::xml_node&, std::string_view, const State&) {}

void DocumentWalker::skipUndrawn(const pugi::xml_node& node, std::string_view name, const State&) {
  struct Known {
    std::string_view name;
    const char* why;
  };
  static constexpr Known kKnown[] = {
      {"", "an element of another namespace"},
      {"image", "pictures are not read"},
      {"foreignObject", "content of another language is not read"},
      {"clipPath", "clipping is not applied"},
      {"mask", "masks are not applied"},
      {"filter", "filters are not applied"},
      {"marker", "markers are not drawn"},
      {"pattern", "patterns are not drawn"},
      {"linearGradient", "gradients are not drawn"},
      {"radialGradient", "gradients are not drawn"},
      {"script", "scripts are not run"},
  };
  for (const Known& known : kKnown) {
    if (known.name == name) return skip(node, known.why);
  }
  skip(node, "an unknown element");
}

DocumentWalker::State DocumentWalker::enter(const pugi::xml_node& node, std::string_view name,
                                            const State& state) {
  State inner = state;
  ++inner.depth;
  inner.topLevel = false;
  inner.style = computeStyle(node, name, state.style, sheet_, state.lengths);
  inner.lengths.fontSize = inner.style.fontSize;
  if (const pugi::xml_attribute text = node.attribute("transform")) {
    std::string expected;
    if (const std::optional<ZnGeMatrix2d> transform = parseTransform(text.value(), expected)) {
      inner.toOwner = state.toOwner * *transform;
    } else {
      report(node, "transform=\"" + std::string(text.value()).substr(0, 60) + "\" is not applied", expected);
    }
  }
  if (inner.hidden.empty() && !inner.style.displayed) inner.hidden = "display:none on " + describe(node);
  if (inner.hidden.empty() && flattens(inner.toOwner)) inner.hidden = "flattened by a transform";
  if (name == "g") inner.layer = layerOf(node, state, inner.style.displayed);
  for (const char* property : {"clip-path", "mask"}) {
    if (hasReference(node, property))
      skip(node, std::string(property) + " of the element: it is drawn whole");
  }
  return inner;
}

std::size_t DocumentWalker::layerOf(const pugi::xml_node& node, const State& state, bool displayed) {
  if (state.inReference) return state.layer;
  const bool labelled = prefixedAttribute(node, ":groupmode") == "layer";
  if (!labelled && !state.topLevel) return state.layer;
  std::string name(trimmed(prefixedAttribute(node, ":label")));
  if (name.empty()) name = node.attribute("id").value();
  if (name.empty()) return state.layer;
  const auto [known, added] = layerByName_.try_emplace(name, scene_.layers.size());
  if (added) scene_.layers.push_back({name, false});
  // Groups of one name are one layer; it is seen when one of them is.
  Layer& layer = scene_.layers[known->second];
  layer.visible = layer.visible || (displayed && state.hidden.empty());
  return known->second;
}

void DocumentWalker::emitContours(const pugi::xml_node& node, std::string_view name, const State& state,
                                  std::vector<Contour>& contours) {
  FitOptions fit = options_.fit;
  fit.millimetresPerUnit = state.ownerToPage;
  int subpath = -1;
  for (Contour& contour : contours) {
    ++subpath;
    contour.transform(state.toOwner);
    if (!contour.isUsable()) {
      report(node, "a coordinate is beyond the limits of a drawing", "numbers that place it on a page");
      skip(node, "a coordinate beyond the limits of a drawing");
      continue;
    }
    if (const int loops = tidy(contour, fit))
      skip(node, std::to_string(loops) + " loops of no area at corners");
    if (contour.segments.empty()) {
      skip(node, "a piece without length");
      continue;
    }
    int run = 0;
    for (Shape& shape : shapesOf(contour, fit)) {
      emit(node, name, state, state.style, std::move(shape), subpath, run++);
    }
  }
}

void DocumentWalker::emit(const pugi::xml_node& node, std::string_view name, const State& state,
                          const ComputedStyle& style, Shape shape, int subpath, int run) {
  Element element;
  element.layer = state.layer;
  element.style = styleOf(style, state, std::holds_alternative<Text>(shape));
  element.source = {std::string(name), node.attribute("id").value(), lineOf(node), subpath, run};
  element.hiddenReason = !state.hidden.empty() ? state.hidden : style.hiddenReason();
  element.visible = element.hiddenReason.empty();
  element.shape = std::move(shape);
  state.out->push_back(std::move(element));
  if (state.out != &scene_.elements) return;
  if (++pageSize_ > static_cast<double>(options_.largestExpansion))
    refuse(node, "the drawing has too many elements", std::to_string(options_.largestExpansion) + " at most");
}

Style DocumentWalker::styleOf(const ComputedStyle& style, const State& state, bool isText) const {
  Style result;
  const double scale = state.toOwner.meanScale() * state.ownerToPage;
  result.stroked = style.stroke.painted && style.strokeOpacity > 0;
  result.filled = style.fill.painted && style.fillOpacity > 0;
  // Letters are areas: their outline is an ornament, their fill is the ink.
  const bool byFill = result.filled && (isText || !result.stroked);
  result.color = byFill ? style.fill.color : style.stroke.color;
  result.opacity = style.opacity * (byFill ? style.fillOpacity : style.strokeOpacity);
  if (!result.stroked) return result;
  result.width = style.strokeWidth * scale;
  result.dash.reserve(style.dash.size());
  for (const double dash : style.dash) result.dash.push_back(dash * scale);
  return result;
}

std::string_view DocumentWalker::localName(const pugi::xml_node& node) const {
  std::string_view name = node.name();
  if (!rootPrefix_.empty() && name.starts_with(rootPrefix_)) return name.substr(rootPrefix_.size());
  if (name.starts_with("svg:")) return name.substr(4);
  return name.find(':') == name.npos ? name : std::string_view();
}

std::string DocumentWalker::describe(const pugi::xml_node& node) const {
  std::string text = "<" + std::string(node.name());
  const std::string_view id = node.attribute("id").value();
  if (!id.empty()) text += " id=\"" + std::string(id) + "\"";
  return text + ">";
}

void DocumentWalker::skip(const pugi::xml_node& node, std::string why) {
  scene_.skipped.push_back({describe(node), lineOf(node), std::move(why)});
}

void DocumentWalker::report(const pugi::xml_node& node, const std::string& what, std::string expected) {
  scene_.problems.emplace_back().set(file_, lineOf(node), describe(node) + ": " + what, std::move(expected));
}

void DocumentWalker::refuse(const pugi::xml_node& node, std::string what, std::string expected) {
  if (!refusal_) refusal_.emplace().set(file_, lineOf(node), std::move(what), std::move(expected));
}

} // namespace interchange
