// Script commands about the session: history, listing, saving.
#include <fmt/format.h>

#include "app/number_text.h"
#include "app/script/script_command.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"

namespace app {

namespace {

bool walkHistory(ScriptSession& session, ScriptArguments& arguments,
                 Quorl::ErrorStatus (ZnDbUndoRecorder::*step)(), const char* verb) {
  int count = 1;
  if (!arguments.count(count) || !arguments.end()) return false;
  ZnDbUndoRecorder& history = session.database().undoRecorder();
  for (int i = 0; i < count; ++i)
    if ((history.*step)() != Quorl::eOk)
      return arguments.fail(fmt::format("there is nothing to {}{}", verb,
                                        history.gaveUpSteps() && !history.canUndo()
                                            ? "; what was before went beyond UNDOMEMORY"
                                            : ""),
                            "fewer steps");
  return true;
}

bool undo(ScriptSession& session, ScriptArguments& arguments) {
  return walkHistory(session, arguments, &ZnDbUndoRecorder::undo, "undo");
}

bool redo(ScriptSession& session, ScriptArguments& arguments) {
  return walkHistory(session, arguments, &ZnDbUndoRecorder::redo, "redo");
}

std::string listed(ZnDbObjectId id) {
  ZnDbHolder<ZnDbEntity> entity(id);
  if (!entity.isOpen()) return {};
  std::string line = fmt::format("{}  layer \"{}\"", describeEntity(id), entity->layer().utf8());
  ZnGeBoundBlock3d box;
  if (entity->getGeomExtents(box) == Quorl::eOk)
    line += fmt::format("  from {} to {}", pointText(box.min()), pointText(box.max()));
  return line + "\n";
}

bool list(ScriptSession& session, ScriptArguments& arguments) {
  std::vector<ZnDbObjectId> ids;
  if (arguments.left() > 0) {
    if (!arguments.entities(ids)) return false;
  } else {
    ZnDbHolder<ZnDbBlockTableRecord> space(session.database().currentSpaceId());
    if (space.isOpen()) ids = space->entityIds();
  }
  std::string text;
  for (const ZnDbObjectId id : ids) text += listed(id);
  session.console().data(text);
  return true;
}

bool save(ScriptSession& session, ScriptArguments& arguments) {
  std::string path;
  if (!arguments.text(path, "a file's name") || !arguments.end()) return false;
  Failure failure;
  return session.save(path, failure) || arguments.fail(failure.text());
}

constexpr ScriptCommand kCommands[] = {
    {"UNDO", "[COUNT]    takes back whole lines", undo, true},
    {"REDO", "[COUNT]", redo, true},
    {"LIST", "[ENTITY...]", list},
    {"SAVE", "FILE    once the whole script has worked", save},
};

} // namespace

std::span<const ScriptCommand> sessionCommands() { return kCommands; }

} // namespace app
