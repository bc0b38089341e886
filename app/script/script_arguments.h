// Reads the arguments of one script line from left to right; what it can't read is the line's failure.
#pragma once

#include <string>
#include <vector>

#include "app/script/nearest_edge.h"
#include "app/script/script_session.h"
#include "app/script/script_text.h"
#include "quorl/db/entity/subent.h"

namespace app {

// Every reader takes the next word and gives false, with the reason set, when it is not what is wanted.
// Numbers lie within the program's range.
class ScriptArguments {
public:
  ScriptArguments(const ScriptLine& line, ScriptSession& session)
      : line_(line)
      , session_(session) {}

  size_t left() const { return line_.words.size() - next_; }
  bool point(ZnGePoint3d& point, const char* what = "a point x,y");
  bool number(double& number, const char* what = "a number");
  bool positive(double& number, const char* what); // a size: above 0, and not next to nothing
  // A point, then a scale and an angle in degrees that may be left out: all that is left of the line.
  bool placement(ZnGeMatrix3d& place);
  bool count(int& count); // a whole number from 1 on; without a word left it stays
  bool text(std::string& text, const char* what);
  bool keyword(const char* word); // takes the word if it is next; no failure else
  bool end();                     // nothing may be left

  // An entity of the current space: a handle, a name, or a point, for the nearest edge and what it belongs
  // to. A point must lie near the edge.
  bool entity(ZnDbObjectId& id, Pick pick = Pick::kDrawnFirst);
  // At least one, each once, up to the last words, which are left.
  bool entities(std::vector<ZnDbObjectId>& ids, size_t wordsAfter = 0, Pick pick = Pick::kDrawnFirst);
  // One edge: an entity that has just one, also as "view/name" through a viewport, or a point, for the
  // nearest one that is not generated.
  bool edge(ZnDbFullSubentPath& path);

  // As edge, and the point at which it is picked: the one that gives the edge, or that of "name@x,y".
  bool pickedEdge(ZnDbFullSubentPath& path, ZnGePoint3d& pick, bool& isPicked);

  // "@x,y", if that is next: the point at which the edge before it is picked.
  bool pickPoint(ZnGePoint3d& point, bool& isThere);

  bool fail(const std::string& what, const std::string& expected = {});
  bool failAtNext(const std::string& expected); // the next word, or the line's end, is not what is wanted
  bool fail(Quorl::ErrorStatus status, const std::string& about = {});
  // True for eOk.
  bool check(Quorl::ErrorStatus status, const std::string& about = {});
  const std::string& what() const { return what_; }
  const std::string& expected() const { return expected_; }

private:
  const ScriptWord* take(const char* what);
  bool existing(const ScriptWord& word, ZnDbObjectId& id);
  bool edgeOf(const ScriptWord& word, ZnDbFullSubentPath& path);
  bool edgeInViewport(const ScriptWord& word, size_t slash, ZnDbFullSubentPath& path);
  bool onlyEdgeOf(ZnDbObjectId id, ZnDbFullSubentPath& path);
  bool pick(const ZnGePoint3d& point, Pick pick, ZnDbFullSubentPath& path);

  const ScriptLine& line_;
  ScriptSession& session_;
  size_t next_ = 0;
  std::string what_, expected_;
};

// "x,y" or "x,y,z"; false for anything else, and for what is no finite number. The range is not looked at.
bool readScriptPoint(const std::string& text, ZnGePoint3d& point);
bool readScriptNumber(const std::string& text, double& number);
// "#1A ZnDbCircle", for messages.
std::string describeEntity(ZnDbObjectId id);

} // namespace app
