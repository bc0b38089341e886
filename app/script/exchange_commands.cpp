// Script commands between drawings: what is copied in and inserted from files, and external drawings.
#include <filesystem>

#include <fmt/format.h>

#include "app/evaluation.h"
#include "app/script/script_command.h"
#include "quorl/edit/external_drawing.h"
#include "quorl/edit/transfer.h"
#include "quorl/file/drawing_file.h"

namespace app {

namespace {

std::string stemOf(const std::string& path) { return std::filesystem::path(path).stem().string(); }

bool readDrawing(ScriptSession& session, ScriptArguments& arguments, const std::string& path,
                 std::unique_ptr<ZnDbDatabase>& drawing) {
  session.noteRead(path);
  ZnFileError error;
  drawing = zndbOpenDrawing(path, error);
  return drawing || arguments.fail(error.text());
}

// Whether names that both drawings have stay apart; "stem$0$" goes before those of the file.
ZnDbTransferNames namesFor(ScriptArguments& arguments, const std::string& path) {
  ZnDbTransferNames names;
  names.keptApart = arguments.keyword("APART");
  names.prefix = ZnString::fromUtf8(stemOf(path)) + L"$0$";
  return names;
}

// The content of a file, in the current space.
bool copyIn(ScriptSession& session, ScriptArguments& arguments) {
  std::string path;
  std::unique_ptr<ZnDbDatabase> source;
  if (!arguments.text(path, "a drawing's file")) return false;
  const ZnDbTransferNames names = namesFor(arguments, path);
  ZnGeMatrix3d place;
  if (!arguments.placement(place) || !readDrawing(session, arguments, path, source)) return false;
  ZnArray<ZnDbObjectId> made;
  if (!arguments.check(zndbInsertDrawing(session.database().currentSpaceId(), *source, place, names, made),
                       path))
    return false;
  for (const ZnDbObjectId id : made) session.noteMade(id);
  return true;
}

// Into a new drawing, once the whole script has worked.
bool copyOut(ScriptSession& session, ScriptArguments& arguments) {
  std::string path;
  ZnGePoint3d base;
  std::vector<ZnDbObjectId> ids;
  if (!arguments.text(path, "the new drawing's file") || !arguments.point(base, "the base point x,y") ||
      !arguments.entities(ids))
    return false;
  ZnArray<ZnDbObjectId> entities;
  for (const ZnDbObjectId id : ids) entities.append(id);
  ZnDbDatabase made;
  made.setInsertionUnits(session.database().insertionUnits());
  Failure failure;
  if (!arguments.check(zndbCopyOut(entities, made, base), path)) return false;
  for (const std::string& fault : evaluate(made)) session.console().note(fault);
  return session.saveOther(made, path, failure) || arguments.fail(failure.text());
}

// The content of a file as a block of that name, shown once.
bool insertFile(ScriptSession& session, ScriptArguments& arguments) {
  std::string path;
  std::unique_ptr<ZnDbDatabase> source;
  if (!arguments.text(path, "a drawing's file")) return false;
  const ZnDbTransferNames names = namesFor(arguments, path);
  ZnGeMatrix3d place;
  ZnDbObjectId block;
  if (!arguments.placement(place) || !readDrawing(session, arguments, path, source)) return false;
  const std::string name = stemOf(path);
  return arguments.check(
             zndbInsertAsBlock(session.database(), ZnString::fromUtf8(name), *source, names, block),
             fmt::format("{} as block \"{}\"", path, name)) &&
         arguments.check(session.appendReference(block, place));
}

bool attach(ScriptSession& session, ScriptArguments& arguments) {
  std::string path;
  ZnGeMatrix3d place;
  ZnDbObjectId block;
  ZnFileError error;
  if (!arguments.text(path, "a drawing's file") || !arguments.placement(place)) return false;
  session.noteRead(path);
  const ZnString name = ZnString::fromUtf8(stemOf(path));
  block = zndbExternalDrawingNamed(session.database(), name);
  for (const ZnDbExternalDrawing& known : zndbExternalDrawings(session.database()))
    if (known.block == block && known.path != path)
      return arguments.fail(fmt::format("\"{}\" is attached already, from {}", stemOf(path), known.path),
                            "that path, or a file of another name");
  if (block.isNull() && !zndbAttachDrawing(session.database(), path, name, block, error))
    return arguments.fail(error.text());
  return arguments.check(session.appendReference(block, place));
}

bool list(ScriptSession& session, ScriptArguments& arguments) {
  if (!arguments.end()) return false;
  std::string text;
  for (const ZnDbExternalDrawing& external : zndbExternalDrawings(session.database()))
    text += fmt::format("{}  {}  {}\n", external.name.utf8(), external.path,
                        external.isUnloaded  ? "unloaded"
                        : external.isMissing ? "missing, as it was last read"
                                             : "loaded");
  session.console().data(text);
  return true;
}

struct ExternalDeed {
  const char* word;
  bool (*change)(ZnDbObjectId block, ZnFileError& error);
};

constexpr ExternalDeed kExternalDeeds[] = {
    {"RELOAD", zndbReloadDrawing},
    {"UNLOAD", zndbUnloadDrawing},
    {"BIND", zndbBindDrawing},
    {"DETACH", zndbDetachDrawing},
};

bool external(ScriptSession& session, ScriptArguments& arguments) {
  if (arguments.keyword("ATTACH")) return attach(session, arguments);
  if (arguments.keyword("LIST")) return list(session, arguments);
  for (const ExternalDeed& deed : kExternalDeeds) {
    if (!arguments.keyword(deed.word)) continue;
    std::string name;
    if (!arguments.text(name, "an external drawing's name") || !arguments.end()) return false;
    const ZnDbObjectId block = zndbExternalDrawingNamed(session.database(), ZnString::fromUtf8(name));
    ZnFileError error;
    if (block.isNull())
      return arguments.fail("there is no external drawing \"" + name + "\"", "one that XREF LIST names");
    return deed.change(block, error) || arguments.fail(error.text());
  }
  return arguments.failAtNext("ATTACH, RELOAD, UNLOAD, BIND, DETACH or LIST");
}

constexpr ScriptCommand kCommands[] = {
    {"COPYIN",
     "FILE [APART] x,y [SCALE [DEGREES]]    the file's entities, in the current space; names that "
     "both have mean the drawing's own, or stay apart",
     copyIn},
    {"COPYOUT",
     "FILE BASE ENTITY...    a new drawing of them, with BASE as its origin, once the whole script has "
     "worked",
     copyOut},
    {"INSERTFILE", "FILE [APART] x,y [SCALE [DEGREES]]    the file as a block", insertFile},
    {"XREF", "ATTACH FILE x,y [SCALE [DEGREES]] | RELOAD|UNLOAD|BIND|DETACH NAME | LIST    external drawings",
     external},
};

} // namespace

std::span<const ScriptCommand> exchangeCommands() { return kCommands; }

} // namespace app
