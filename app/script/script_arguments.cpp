#include "app/script/script_arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

#include "app/number_text.h"
#include "app/tolerance.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/external_link.h"
#include "quorl/ge/angles.h"

namespace app {

namespace {

constexpr const char* kEntity = "an entity: #handle, a name or a point";
constexpr const char* kEdge = "an edge: #handle, a name or a point";

bool isHandle(const ScriptWord& word) { return !word.quoted && word.text.size() > 1 && word.text[0] == '#'; }

bool isInRange(double number) { return std::abs(number) <= kLargestNumber; }

bool isInRange(const ZnGePoint3d& point) {
  return isInRange(point.x) && isInRange(point.y) && isInRange(point.z);
}

std::string rangeText() { return fmt::format("numbers from {:g} to {:g}", -kLargestNumber, kLargestNumber); }

bool equalsNoCase(const std::string& a, const char* b) {
  return ZnString::fromUtf8(a).equalsNoCase(ZnString::fromUtf8(b));
}

} // namespace

bool readScriptNumber(const std::string& text, double& number) {
  const char* first = text.data();
  const char* last = first + text.size();
  if (first != last && *first == '+') ++first;
  const auto [end, error] = std::from_chars(first, last, number);
  return error == std::errc() && end == last && std::isfinite(number);
}

bool readScriptPoint(const std::string& text, ZnGePoint3d& point) {
  double coordinates[3] = {0.0, 0.0, 0.0};
  size_t from = 0;
  for (int i = 0; i < 3; ++i) {
    const size_t comma = std::min(text.find(',', from), text.size());
    if (!readScriptNumber(text.substr(from, comma - from), coordinates[i])) return false;
    if (comma == text.size()) {
      point.set(coordinates[0], coordinates[1], coordinates[2]);
      return i > 0;
    }
    from = comma + 1;
  }
  return false;
}

std::string describeEntity(ZnDbObjectId id) {
  const std::string cls = id.objectClass() ? id.objectClass()->name().utf8() : "nothing";
  return fmt::format("#{} {}", handleText(id.handle()).utf8(), cls);
}

bool ScriptArguments::fail(const std::string& what, const std::string& expected) {
  what_ = what;
  expected_ = expected;
  return false;
}

bool ScriptArguments::fail(Quorl::ErrorStatus status, const std::string& about) {
  return fail((about.empty() ? std::string() : about + ": ") + statusSentence(status),
              statusExpectation(status));
}

bool ScriptArguments::check(Quorl::ErrorStatus status, const std::string& about) {
  return status == Quorl::eOk || fail(status, about);
}

bool ScriptArguments::failAtNext(const std::string& expected) {
  if (left() == 0) return fail("the line ends too early", expected);
  return fail(fmt::format("\"{}\"", line_.words[next_].text), expected);
}

const ScriptWord* ScriptArguments::take(const char* what) {
  if (left() > 0) return &line_.words[next_++];
  fail("the line ends too early", what);
  return nullptr;
}

bool ScriptArguments::point(ZnGePoint3d& point, const char* what) {
  const ScriptWord* word = take(what);
  if (!word) return false;
  if (!readScriptPoint(word->text, point)) return fail(fmt::format("\"{}\"", word->text), what);
  return isInRange(point) || fail(fmt::format("{} is out of range", word->text), rangeText());
}

bool ScriptArguments::pickPoint(ZnGePoint3d& point, bool& isThere) {
  isThere = left() > 0 && !line_.words[next_].quoted && line_.words[next_].text.starts_with('@');
  if (!isThere) return true;
  const std::string& word = line_.words[next_++].text;
  if (!readScriptPoint(word.substr(1), point)) return fail(fmt::format("\"{}\"", word), "a pick @x,y");
  return isInRange(point) || fail(fmt::format("{} is out of range", word), rangeText());
}

bool ScriptArguments::number(double& number, const char* what) {
  const ScriptWord* word = take(what);
  if (!word) return false;
  if (!readScriptNumber(word->text, number)) return fail(fmt::format("\"{}\"", word->text), what);
  return isInRange(number) || fail(fmt::format("{} is out of range", word->text), rangeText());
}

bool ScriptArguments::positive(double& value, const char* what) {
  if (!number(value, what)) return false;
  if (value <= 0.0) return fail(fmt::format("{}", value), what);
  return value >= kLeastSize ||
         fail(fmt::format("{} is out of range", value), fmt::format("{}, from {:g} on", what, kLeastSize));
}

bool ScriptArguments::placement(ZnGeMatrix3d& place) {
  ZnGePoint3d position;
  double scale = 1.0, degrees = 0.0;
  if (!point(position)) return false;
  if (left() > 0 && !positive(scale, "a scale above 0")) return false;
  if (left() > 0 && !number(degrees, "the angle in degrees")) return false;
  if (!end()) return false;
  const double angle = degrees / 180.0 * ZnGe::kPi;
  place = ZnGeMatrix3d::translation(position.asVector()) *
          ZnGeMatrix3d::rotation(angle, ZnGeVector3d::kZAxis, ZnGePoint3d()) * ZnGeMatrix3d::scaling(scale);
  return true;
}

bool ScriptArguments::count(int& count) {
  constexpr int kLargest = 1000000;
  if (left() == 0) return true;
  double value = 0.0;
  if (!number(value, "a whole number from 1 on")) return false;
  if (value < 1.0 || value > kLargest || value != std::floor(value))
    return fail(fmt::format("{}", value), "a whole number from 1 on");
  count = static_cast<int>(value);
  return true;
}

bool ScriptArguments::text(std::string& text, const char* what) {
  const ScriptWord* word = take(what);
  if (word) text = word->text;
  return word != nullptr;
}

bool ScriptArguments::keyword(const char* word) {
  if (left() == 0 || line_.words[next_].quoted || !equalsNoCase(line_.words[next_].text, word)) return false;
  ++next_;
  return true;
}

bool ScriptArguments::end() {
  return left() == 0 || fail(fmt::format("\"{}\"", line_.words[next_].text), "the end of the line");
}

// The object that a handle or a name stands for.
bool ScriptArguments::existing(const ScriptWord& word, ZnDbObjectId& id) {
  constexpr int kHexadecimalOnly = 2;
  if (isHandle(word)) {
    const ZnDbHandle handle = ZnString::fromUtf8(word.text.substr(1)).asZnDbHandle(kHexadecimalOnly);
    if (handle.isNull() || session_.database().getZnDbObjectId(id, false, handle) != Quorl::eOk)
      return fail(fmt::format("the drawing has no {}", word.text), kEntity);
  } else {
    id = session_.named(word.text);
    if (id.isNull()) return fail(fmt::format("nothing is named \"{}\"", word.text), kEntity);
  }
  if (id.isErased()) return fail(fmt::format("{} is erased", word.text), "an entity that is there");
  if (!id.isDerivedFrom(ZnDbEntity::desc())) return fail(fmt::format("{} is no entity", word.text), kEntity);
  const ZnDbHolder<ZnDbBlockTableRecord> block(id.slot()->object->ownerId());
  return !block.isOpen() || !ZnDbExternalLink::isShownBy(*block) ||
         fail(fmt::format("{} is of an external drawing", word.text), "an entity of this drawing");
}

bool ScriptArguments::pick(const ZnGePoint3d& point, Pick pick, ZnDbFullSubentPath& path) {
  PickedEdge edge;
  if (!isInRange(point)) return fail(pointText(point) + " is out of range", rangeText());
  if (!nearestEdge(session_.index(), point, pick, edge))
    return fail("the drawing has no edge to pick", kEntity);
  const double reach = pickReach(session_.index());
  path = edge.path;
  return edge.distance <= reach || fail(fmt::format("no edge is near {}: the nearest is {} away",
                                                    pointText(point), numberText(edge.distance)),
                                        fmt::format("a point within {} of an edge", numberText(reach)));
}

bool ScriptArguments::entity(ZnDbObjectId& id, Pick pick) {
  const ScriptWord* word = take(kEntity);
  if (!word) return false;
  ZnGePoint3d point;
  if (!readScriptPoint(word->text, point)) return existing(*word, id);
  ZnDbFullSubentPath path;
  if (!this->pick(point, pick, path)) return false;
  id = path.objectIds().first();
  return true;
}

bool ScriptArguments::entities(std::vector<ZnDbObjectId>& ids, size_t wordsAfter, Pick pick) {
  do {
    if (left() <= wordsAfter) return fail("the line ends too early", kEntity);
    ZnDbObjectId id;
    if (!entity(id, pick)) return false;
    if (std::find(ids.begin(), ids.end(), id) != ids.end())
      return fail(describeEntity(id) + " is given twice", "each entity once");
    ids.push_back(id);
  } while (left() > wordsAfter);
  return true;
}

bool ScriptArguments::edge(ZnDbFullSubentPath& path) {
  const ScriptWord* word = take(kEdge);
  return word && edgeOf(*word, path);
}

bool ScriptArguments::pickedEdge(ZnDbFullSubentPath& path, ZnGePoint3d& pick, bool& isPicked) {
  const ScriptWord* word = take(kEdge);
  if (!word) return false;
  const size_t at = word->quoted ? std::string::npos : word->text.find('@');
  isPicked = at != std::string::npos || readScriptPoint(word->text, pick);
  if (at == std::string::npos) return edgeOf(*word, path);
  if (!readScriptPoint(word->text.substr(at + 1), pick))
    return fail(fmt::format("\"{}\"", word->text), "an edge with a pick, name@x,y");
  if (!isInRange(pick)) return fail(fmt::format("{} is out of range", word->text), rangeText());
  return edgeOf({word->text.substr(0, at)}, path);
}

bool ScriptArguments::edgeOf(const ScriptWord& word, ZnDbFullSubentPath& path) {
  ZnGePoint3d point;
  if (readScriptPoint(word.text, point)) return pick(point, Pick::kDrawnOnly, path);
  const size_t slash = word.quoted ? std::string::npos : word.text.find('/');
  if (slash != std::string::npos) return edgeInViewport(word, slash, path);
  ZnDbObjectId id;
  return existing(word, id) && onlyEdgeOf(id, path);
}

// "view/name": an edge of the model as it is seen in a viewport of the current space.
bool ScriptArguments::edgeInViewport(const ScriptWord& word, size_t slash, ZnDbFullSubentPath& path) {
  ZnDbObjectId view, id;
  if (!existing({word.text.substr(0, slash)}, view) || !existing({word.text.substr(slash + 1)}, id))
    return false;
  if (!view.isDerivedFrom(ZnDbViewport::desc())) return fail(describeEntity(view) + " is no viewport", kEdge);
  if (!onlyEdgeOf(id, path)) return false;
  ZnArray<ZnDbObjectId> ids{view};
  ids.append(id);
  path = ZnDbFullSubentPath(ids, path.subentId());
  return true;
}

bool ScriptArguments::onlyEdgeOf(ZnDbObjectId id, ZnDbFullSubentPath& path) {
  ZnArray<ZnDbSubentId> edges;
  ZnDbHolder<ZnDbEntity> entity(id);
  if (entity.isOpen()) entity->getSubentIds(ZnDb::kEdgeSubentType, edges);
  if (edges.length() != 1)
    return fail(fmt::format("{} has {} edges of its own", describeEntity(id), edges.length()),
                "a point near the edge that is meant");
  path = ZnDbFullSubentPath(id, edges.first());
  return true;
}

} // namespace app
