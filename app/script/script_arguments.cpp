#include "app/script/script_arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

#include "quorl/db/block_reference.h"
#include "quorl/db/entity.h"

namespace app {

namespace {

constexpr const char* kEntity = "an entity: #handle, a name or a point";

bool isHandle(const ScriptWord& word) { return !word.quoted && word.text.size() > 1 && word.text[0] == '#'; }

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
  return fail((about.empty() ? std::string() : about + ": ") + statusSentence(status));
}

bool ScriptArguments::check(Quorl::ErrorStatus status, const std::string& about) {
  return status == Quorl::eOk || fail(status, about);
}

const ScriptWord* ScriptArguments::take(const char* what) {
  if (left() > 0) return &line_.words[next_++];
  fail("the line ends too early", what);
  return nullptr;
}

bool ScriptArguments::point(ZnGePoint3d& point, const char* what) {
  const ScriptWord* word = take(what);
  return word && (readScriptPoint(word->text, point) || fail(fmt::format("\"{}\"", word->text), what));
}

bool ScriptArguments::number(double& number, const char* what) {
  const ScriptWord* word = take(what);
  return word && (readScriptNumber(word->text, number) || fail(fmt::format("\"{}\"", word->text), what));
}

bool ScriptArguments::positive(double& value, const char* what) {
  return number(value, what) && (value > 0.0 || fail(fmt::format("{}", value), what));
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
  return id.isDerivedFrom(ZnDbEntity::desc()) || fail(fmt::format("{} is no entity", word.text), kEntity);
}

bool ScriptArguments::entity(ZnDbObjectId& id, Pick pick) {
  const ScriptWord* word = take(kEntity);
  if (!word) return false;
  ZnGePoint3d point;
  if (!readScriptPoint(word->text, point)) return existing(*word, id);
  ZnDbFullSubentPath path;
  if (!nearestEdge(session_.database(), point, pick, path))
    return fail("the drawing has no edge to pick", kEntity);
  id = path.objectIds().first();
  return true;
}

bool ScriptArguments::entities(std::vector<ZnDbObjectId>& ids, size_t wordsAfter, Pick pick) {
  do {
    if (left() <= wordsAfter) return fail("the line ends too early", kEntity);
    ZnDbObjectId id;
    if (!entity(id, pick)) return false;
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
  } while (left() > wordsAfter);
  return true;
}

bool ScriptArguments::edge(ZnDbFullSubentPath& path) {
  const ScriptWord* word = take("an edge: #handle, a name or a point");
  if (!word) return false;
  ZnGePoint3d point;
  if (readScriptPoint(word->text, point))
    return nearestEdge(session_.database(), point, Pick::kDrawnOnly, path) ||
           fail("the drawing has no edge to pick", kEntity);
  ZnDbObjectId id;
  if (!existing(*word, id)) return false;
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
