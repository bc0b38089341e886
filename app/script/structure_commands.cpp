// Script commands for what entities stand in and refer to: layers, blocks, variables.
#include <memory>

#include "app/script/script_command.h"
#include "app/variable_setting.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"
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

bool applyStates(ScriptArguments& arguments, ZnDbLayerTableRecord& layer) {
  while (arguments.left() > 0) {
    const LayerState* taken = nullptr;
    for (const LayerState& state : kLayerStates)
      if (!taken && arguments.keyword(state.word)) taken = &state;
    if (!taken) {
      std::string word;
      arguments.text(word, "");
      return arguments.fail("\"" + word + "\"", "ON, OFF, LOCK, UNLOCK, FREEZE or THAW");
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
  return arguments.check(record.openForWrite(id)) && applyStates(arguments, *record);
}

bool makeBlock(ScriptSession& session, ScriptArguments& arguments, const ZnString& name, ZnDbObjectId& id) {
  ZnDbHolder<ZnDbBlockTable> table(session.database().blockTableId());
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  Quorl::ErrorStatus status = table.isOpen() ? record->setName(name) : table.status();
  if (status == Quorl::eOk) status = table.upgrade();
  if (status == Quorl::eOk) status = table->add(id, record.object());
  return arguments.check(status, "block \"" + name.utf8() + "\"");
}

// The entities leave the space and become the block's; nothing shows them until an INSERT.
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
  for (const ZnDbObjectId id : ids) {
    ZnDbHolder<ZnDbEntity> entity;
    Quorl::ErrorStatus status = entity.openForWrite(id);
    if (status == Quorl::eOk) status = entity->transformBy(ZnGeMatrix3d::translation(-base.asVector()));
    if (status != Quorl::eOk) return arguments.fail(status, describeEntity(id));
    members.append(id);
  }
  ZnDbHolder<ZnDbBlockTableRecord> record;
  return arguments.check(record.openForWrite(blockId)) && arguments.check(record->assumeOwnershipOf(members));
}

bool insert(ScriptSession& session, ScriptArguments& arguments) {
  std::string name;
  ZnGePoint3d position;
  double scale = 1.0, degrees = 0.0;
  if (!arguments.text(name, "a block's name") || !arguments.point(position)) return false;
  if (arguments.left() > 0 && !arguments.positive(scale, "a scale above 0")) return false;
  if (arguments.left() > 0 && !arguments.number(degrees, "the angle in degrees")) return false;
  if (!arguments.end()) return false;
  ZnDbObjectId blockId;
  ZnDbHolder<ZnDbBlockTable> table(session.database().blockTableId());
  if (!table.isOpen() || table->getIdAt(ZnString::fromUtf8(name), blockId) != Quorl::eOk)
    return arguments.fail("there is no block \"" + name + "\"", "the name of a block");
  auto reference = std::make_unique<ZnDbBlockReference>(position, blockId);
  const double angle = degrees / 180.0 * ZnGe::kPi;
  const ZnGeMatrix3d place =
      ZnGeMatrix3d::rotation(angle, ZnGeVector3d::kZAxis, position) * ZnGeMatrix3d::scaling(scale, position);
  if (!arguments.check(reference->transformBy(place))) return false;
  return arguments.check(session.append(reference.release()));
}

// What is drawn and picked from here on.
bool space(ScriptSession& session, ScriptArguments& arguments) {
  ZnDbDatabase& database = session.database();
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
    {"LAYER", "NAME [ON|OFF|LOCK|UNLOCK|FREEZE|THAW]...    without a state it becomes the current one",
     layer},
    {"BLOCK", "NAME BASE ENTITY...    makes a block of them", block},
    {"INSERT", "NAME x,y [SCALE [DEGREES]]", insert},
    {"SPACE", "MODEL|PAPER", space},
    {"VIEWPORT", "CENTER WIDTH HEIGHT MODELPOINT SCALE [DEGREES]    in paper space", viewport},
    {"SETVAR", "NAME VALUE", setVar},
};

} // namespace

std::span<const ScriptCommand> structureCommands() { return kCommands; }

} // namespace app
