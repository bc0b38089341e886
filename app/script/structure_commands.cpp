// Script commands for what entities stand in and refer to: layers, blocks, variables.
#include <memory>

#include <fmt/format.h>

#include "app/script/script_command.h"
#include "app/variable_setting.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/external_link.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"
#include "quorl/edit/purge.h"
#include "quorl/ge/angles.h"

namespace app {

namespace {

// The layer of that name, made where it is missing.
bool layerOf(ScriptSession& session, ScriptArguments& arguments, const ZnString& name, ZnDbObjectId& id) {
  ZnDbHolder<ZnDbLayerTable> table(session.database().layerTableId());
  if (!table.isOpen()) return arguments.fail(table.status());
  if (table->getIdAt(name, id) == Quorl::eOk) return true;
  ZnDbHolder<ZnDbLayerTableRecord> record(new ZnDbLayerTableRecord);
  Quorl::ErrorStatus status = record->setName(name);
  if (status == Quorl::eOk) status = record->setLinetypeObjectId(session.database().continuousLinetype());
  if (status == Quorl::eOk) status = table.upgrade();
  if (status == Quorl::eOk) status = table->add(id, record.object());
  return arguments.check(status, "layer \"" + name.utf8() + "\"");
}

struct LayerState {
  const char* word;
  void (*apply)(ZnDbLayerTableRecord& layer);
};

constexpr LayerState kLayerStates[] = {
    {"ON", [](ZnDbLayerTableRecord& layer) { layer.setIsOff(false); }},
    {"OFF", [](ZnDbLayerTableRecord& layer) { layer.setIsOff(true); }},
    {"LOCK", [](ZnDbLayerTableRecord& layer) { layer.setIsLocked(true); }},
    {"UNLOCK", [](ZnDbLayerTableRecord& layer) { layer.setIsLocked(false); }},
    {"FREEZE", [](ZnDbLayerTableRecord& layer) { layer.setIsFrozen(true); }},
    {"THAW", [](ZnDbLayerTableRecord& layer) { layer.setIsFrozen(false); }},
};

// One that the drawing has, or that can be loaded by that name.
bool linetypeNamed(ZnDbDatabase& drawing, ScriptArguments& arguments, const std::string& name,
                   ZnDbObjectId& id) {
  const ZnString wide = ZnString::fromUtf8(name);
  const auto find = [&] {
    const ZnDbHolder<ZnDbSymbolTable> table(drawing.linetypeTableId());
    return table.isOpen() && table->getIdAt(wide, id) == Quorl::eOk;
  };
  if (find()) return true;
  drawing.loadLineTypeFile(wide, L"quorl.lin");
  return find() || arguments.fail("there is no linetype \"" + name + "\"", "the name of a linetype");
}

bool applyTrait(ScriptSession& session, ScriptArguments& arguments, ZnDbLayerTableRecord& layer,
                bool& taken) {
  std::string name;
  ZnDbObjectId linetype;
  int color = 0;
  taken = true;
  if (arguments.keyword("LINETYPE"))
    return arguments.text(name, "a linetype's name") &&
           linetypeNamed(session.database(), arguments, name, linetype) &&
           arguments.check(layer.setLinetypeObjectId(linetype));
  if (!arguments.keyword("COLOR")) return !(taken = false);
  constexpr int kLastIndex = 255;
  if (arguments.left() == 0) return arguments.failAtNext("a color from 1 to 255");
  if (!arguments.count(color)) return false;
  if (color > kLastIndex) return arguments.fail(fmt::format("color {}", color), "a color from 1 to 255");
  return arguments.check(layer.setColor(ZnCmColor::fromIndex(color)));
}

bool applyStates(ScriptSession& session, ScriptArguments& arguments, ZnDbLayerTableRecord& layer) {
  while (arguments.left() > 0) {
    bool isTrait = false;
    if (!applyTrait(session, arguments, layer, isTrait)) return false;
    if (isTrait) continue;
    const LayerState* taken = nullptr;
    for (const LayerState& state : kLayerStates)
      if (!taken && arguments.keyword(state.word)) taken = &state;
    if (!taken) {
      std::string word;
      arguments.text(word, "");
      return arguments.fail("\"" + word + "\"", "ON, OFF, LOCK, UNLOCK, FREEZE, THAW, COLOR or LINETYPE");
    }
    taken->apply(layer);
  }
  return true;
}

bool layer(ScriptSession& session, ScriptArguments& arguments) {
  std::string name;
  ZnDbObjectId id;
  if (!arguments.text(name, "the layer's name") || !layerOf(session, arguments, ZnString::fromUtf8(name), id))
    return false;
  if (arguments.left() == 0) return arguments.check(session.database().setCurrentLayer(id));
  ZnDbHolder<ZnDbLayerTableRecord> record;
  return arguments.check(record.openForWrite(id)) && applyStates(session, arguments, *record);
}

bool makeBlock(ScriptSession& session, ScriptArguments& arguments, const ZnString& name, ZnDbObjectId& id) {
  ZnDbHolder<ZnDbBlockTable> table(session.database().blockTableId());
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  Quorl::ErrorStatus status = table.isOpen() ? record->setName(name) : table.status();
  if (status == Quorl::eOk) status = table.upgrade();
  if (status == Quorl::eOk) status = table->add(id, record.object());
  return arguments.check(status, "block \"" + name.utf8() + "\"");
}

// The entities leave the space and become the block's, under the names that they had; nothing shows them
// until an INSERT.
bool block(ScriptSession& session, ScriptArguments& arguments) {
  std::string name;
  ZnGePoint3d base;
  std::vector<ZnDbObjectId> ids;
  if (!arguments.text(name, "the block's name") || !arguments.point(base, "the base point x,y") ||
      !arguments.entities(ids))
    return false;
  ZnDbObjectId blockId;
  if (!makeBlock(session, arguments, ZnString::fromUtf8(name), blockId)) return false;
  ZnArray<ZnDbObjectId> members;
  for (const ZnDbObjectId id : ids) members.append(id);
  ZnDbDatabase& drawing = session.database();
  ZnDbIdMapping mapping(ZnDb::kBlockContext, &drawing, &drawing);
  if (!arguments.check(drawing.deepCloneObjects(members, blockId, mapping))) return false;
  for (const ZnDbObjectId id : ids) {
    ZnDbIdPair pair(id);
    mapping.compute(pair);
    ZnDbHolder<ZnDbEntity> entity, original;
    Quorl::ErrorStatus status = entity.openForWrite(pair.value(), false, true);
    if (status == Quorl::eOk) status = entity->transformBy(ZnGeMatrix3d::translation(-base.asVector()));
    if (status == Quorl::eOk) status = original.openForWrite(id);
    if (status == Quorl::eOk) status = original->erase();
    if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
    session.rename(id, pair.value());
  }
  return true;
}

struct RecordKind {
  const char* word;
  const char* what;
  const ZnRxClass* (*recordClass)();
  ZnDbObjectId (*table)(const ZnDbDatabase& drawing);
};

constexpr RecordKind kRecordKinds[] = {
    {"BLOCK", "block", [] { return static_cast<const ZnRxClass*>(ZnDbBlockTableRecord::desc()); },
     [](const ZnDbDatabase& drawing) { return drawing.blockTableId(); }},
    {"LAYER", "layer", [] { return static_cast<const ZnRxClass*>(ZnDbLayerTableRecord::desc()); },
     [](const ZnDbDatabase& drawing) { return drawing.layerTableId(); }},
    {"LINETYPE", "linetype", [] { return static_cast<const ZnRxClass*>(ZnDbLinetypeTableRecord::desc()); },
     [](const ZnDbDatabase& drawing) { return drawing.linetypeTableId(); }},
    {"DIMSTYLE", "dimension style",
     [] { return static_cast<const ZnRxClass*>(ZnDbDimStyleTableRecord::desc()); },
     [](const ZnDbDatabase& drawing) { return drawing.dimStyleTableId(); }},
};

const RecordKind* recordKind(ScriptArguments& arguments) {
  for (const RecordKind& kind : kRecordKinds)
    if (arguments.keyword(kind.word)) return &kind;
  return nullptr;
}

bool recordNamed(ScriptSession& session, ScriptArguments& arguments, const RecordKind& kind,
                 const std::string& name, ZnDbObjectId& id) {
  const ZnDbHolder<ZnDbSymbolTable> table(kind.table(session.database()));
  if (table.isOpen() && table->getIdAt(ZnString::fromUtf8(name), id) == Quorl::eOk) return true;
  return arguments.fail(fmt::format("there is no {} \"{}\"", kind.what, name),
                        fmt::format("the name of a {}", kind.what));
}

bool isOwnBlock(ScriptArguments& arguments, const ZnDbBlockTableRecord& block) {
  return !ZnDbExternalLink::isShownBy(block) ||
         arguments.fail("\"" + block.name().utf8() + "\" is of an external drawing",
                        "a block of this drawing");
}

// Not what the drawing names by itself, nor what an external drawing brought along.
bool isOwnRecord(ScriptArguments& arguments, ZnDbObjectId id, const std::string& name) {
  const ZnDbHolder<ZnDbBlockTableRecord> block(id);
  if (block.isOpen() && !isOwnBlock(arguments, *block)) return false;
  return name.find_first_of("*|") == std::string::npos ||
         arguments.fail("\"" + name + "\" is not named by hand", "a name without * and |");
}

// Without a kind everything that nothing needs, else what is named or all of the kind.
bool purge(ScriptSession& session, ScriptArguments& arguments) {
  const RecordKind* kind = recordKind(arguments);
  if (!kind || arguments.left() == 0) {
    if (!arguments.end()) return false;
    const ZnArray<ZnDbObjectId> purged = zndbPurge(session.database(), kind ? kind->recordClass() : nullptr);
    session.console().note(fmt::format("{} purged", purged.length()));
    return true;
  }
  std::string name;
  ZnDbObjectId id;
  if (!arguments.text(name, "a name") || !arguments.end() ||
      !recordNamed(session, arguments, *kind, name, id))
    return false;
  if (!isOwnRecord(arguments, id, name)) return false;
  ZnDbHolder<ZnDbSymbolTableRecord> record;
  const std::string about = fmt::format("{} \"{}\"", kind->what, name);
  return arguments.check(record.openForWrite(id), about) && arguments.check(record->erase(), about);
}

bool rename(ScriptSession& session, ScriptArguments& arguments) {
  const RecordKind* kind = recordKind(arguments);
  if (!kind) return arguments.failAtNext("BLOCK, LAYER, LINETYPE or DIMSTYLE");
  std::string name, renamed;
  ZnDbObjectId id;
  if (!arguments.text(name, "the old name") || !arguments.text(renamed, "the new name") || !arguments.end() ||
      !recordNamed(session, arguments, *kind, name, id))
    return false;
  if (!isOwnRecord(arguments, id, name)) return false;
  if (renamed.find_first_of("*|") != std::string::npos)
    return arguments.fail("\"" + renamed + "\"", "a name without * and |");
  ZnDbHolder<ZnDbSymbolTableRecord> record;
  return arguments.check(record.openForWrite(id)) &&
         arguments.check(record->setName(ZnString::fromUtf8(renamed)),
                         fmt::format("{} \"{}\"", kind->what, renamed));
}

bool insert(ScriptSession& session, ScriptArguments& arguments) {
  std::string name;
  ZnGeMatrix3d place;
  if (!arguments.text(name, "a block's name") || !arguments.placement(place)) return false;
  ZnDbObjectId blockId;
  ZnDbHolder<ZnDbBlockTable> table(session.database().blockTableId());
  if (!table.isOpen() || name.starts_with("*") ||
      table->getIdAt(ZnString::fromUtf8(name), blockId) != Quorl::eOk)
    return arguments.fail("there is no block \"" + name + "\"", "the name of a block");
  table.close();
  // What an external drawing shows within it comes and goes with that.
  {
    const ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
    if (block.isOpen() && !block->isFromExternalReference() && !isOwnBlock(arguments, *block)) return false;
  }
  return arguments.check(session.appendReference(blockId, place));
}

// The block of that name, or of a reference, is drawn in and picked from until END.
bool blockEdit(ScriptSession& session, ScriptArguments& arguments) {
  ZnDbDatabase& database = session.database();
  if (arguments.keyword("END")) {
    if (!session.isBlockEdited())
      return arguments.fail("no block is being edited", "BLOCKEDIT NAME before it");
    return arguments.end() && arguments.check(database.setCurrentSpaceId(session.spaceAfterEdit()));
  }
  std::string name;
  ZnDbObjectId block;
  if (!arguments.text(name, "a block's name, or END") || !arguments.end()) return false;
  const ZnDbObjectId named = session.named(name);
  if (named.isDerivedFrom(ZnDbBlockReference::desc())) {
    const ZnDbHolder<ZnDbBlockReference> reference(named);
    if (!reference.isOpen()) return arguments.fail(reference.status(), "\"" + name + "\"");
    block = reference->blockTableRecord();
  } else if (!recordNamed(session, arguments, kRecordKinds[0], name, block)) {
    return false;
  }
  const ZnDbHolder<ZnDbBlockTableRecord> record(block);
  if (!record.isOpen()) return arguments.fail(record.status(), "block \"" + name + "\"");
  if (record->isLayout()) return arguments.fail("\"" + name + "\" is a space", "a block");
  if (!isOwnBlock(arguments, *record)) return false;
  if (!session.isBlockEdited()) session.setSpaceAfterEdit(database.currentSpaceId());
  return arguments.check(database.setCurrentSpaceId(block));
}

// What is drawn and picked from here on.
bool space(ScriptSession& session, ScriptArguments& arguments) {
  ZnDbDatabase& database = session.database();
  if (session.isBlockEdited()) return arguments.fail("a block is being edited", "BLOCKEDIT END before it");
  if (arguments.keyword("MODEL"))
    return arguments.end() && arguments.check(database.setCurrentSpaceId(database.modelSpaceId()));
  if (arguments.keyword("PAPER"))
    return arguments.end() && arguments.check(database.setCurrentSpaceId(database.paperSpaceId()));
  return arguments.failAtNext("MODEL or PAPER");
}

bool viewport(ScriptSession& session, ScriptArguments& arguments) {
  ZnGePoint3d center, viewCenter;
  double width = 0.0, height = 0.0, scale = 1.0, degrees = 0.0;
  if (!arguments.point(center, "the window's center x,y") || !arguments.positive(width, "its width") ||
      !arguments.positive(height, "its height") ||
      !arguments.point(viewCenter, "the point of the model in it") || !arguments.positive(scale, "its scale"))
    return false;
  if (arguments.left() > 0 && !arguments.number(degrees, "the angle in degrees")) return false;
  if (!arguments.end()) return false;
  if (session.database().currentSpaceId() != session.database().paperSpaceId())
    return arguments.fail("a viewport stands in paper space", "SPACE PAPER before it");
  auto window = std::make_unique<ZnDbViewport>();
  Quorl::ErrorStatus status = window->setCenterPoint(center);
  if (status == Quorl::eOk) status = window->setWidth(width);
  if (status == Quorl::eOk) status = window->setHeight(height);
  if (status == Quorl::eOk) status = window->setViewCenter({viewCenter.x, viewCenter.y});
  if (status == Quorl::eOk) status = window->setCustomScale(scale);
  if (status == Quorl::eOk) status = window->setTwistAngle(degrees / 180.0 * ZnGe::kPi);
  return arguments.check(status) && arguments.check(session.append(window.release()));
}

bool setVar(ScriptSession&, ScriptArguments& arguments) {
  std::string name, value;
  if (!arguments.text(name, "a variable's name") || !arguments.text(value, "its value") || !arguments.end())
    return false;
  std::string why;
  return app::setVariable(name, value, why) || arguments.fail(why);
}

constexpr ScriptCommand kCommands[] = {
    {"LAYER",
     "NAME [ON|OFF|LOCK|UNLOCK|FREEZE|THAW|COLOR INDEX|LINETYPE NAME]...    without any it becomes the "
     "current one",
     layer},
    {"BLOCK", "NAME BASE ENTITY...    makes a block of them", block},
    {"INSERT", "NAME x,y [SCALE [DEGREES]]", insert},
    {"BLOCKEDIT", "BLOCK|REFERENCE ... BLOCKEDIT END    draws and picks in the block itself", blockEdit},
    {"PURGE", "[BLOCK|LAYER|LINETYPE|DIMSTYLE [NAME]]    takes away what nothing needs", purge},
    {"RENAME", "BLOCK|LAYER|LINETYPE|DIMSTYLE OLD NEW", rename},
    {"SPACE", "MODEL|PAPER", space},
    {"VIEWPORT", "CENTER WIDTH HEIGHT MODELPOINT SCALE [DEGREES]    in paper space", viewport},
    {"SETVAR", "NAME VALUE", setVar},
};

} // namespace

std::span<const ScriptCommand> structureCommands() { return kCommands; }

} // namespace app
