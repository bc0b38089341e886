// Script commands about the host: what modules ask it, which other hosts answer by what they are.
#include "app/script/script_command.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/rx/host_globals.h"

namespace app {

namespace {

bool onOrOff(ScriptArguments& arguments, void (*set)(bool)) {
  const bool on = arguments.keyword("ON");
  if (!on && !arguments.keyword("OFF")) return arguments.failAtNext("ON or OFF");
  if (!arguments.end()) return false;
  set(on);
  return true;
}

// Modules that are loaded already have asked.
bool product(ScriptArguments& arguments) {
  int kind = 0;
  if (arguments.left() == 0) return arguments.failAtNext("the number of a kind of product");
  if (!arguments.count(kind) || !arguments.end()) return false;
  setProductKind(kind);
  return true;
}

bool activeViewport(ScriptArguments& arguments) {
  ZnDbObjectId id;
  if (!arguments.keyword("NONE")) {
    if (!arguments.entity(id)) return false;
    if (!id.isDerivedFrom(ZnDbViewport::desc()))
      return arguments.fail(describeEntity(id) + " is no viewport", "a viewport or NONE");
  }
  if (!arguments.end()) return false;
  zndbHostApplicationServices()->setActiveViewportId(id);
  return true;
}

bool host(ScriptSession&, ScriptArguments& arguments) {
  if (arguments.keyword("VIEWS")) return onOrOff(arguments, setHostDocumentKind);
  if (arguments.keyword("LOGICAL")) return onOrOff(arguments, setHostLogicalTransformDocument);
  if (arguments.keyword("PRODUCT")) return product(arguments);
  if (arguments.keyword("VIEWPORT")) return activeViewport(arguments);
  return arguments.failAtNext("VIEWS, LOGICAL, PRODUCT or VIEWPORT");
}

constexpr ScriptCommand kCommands[] = {
    {"HOST",
     "VIEWS|LOGICAL ON|OFF, PRODUCT NUMBER, or VIEWPORT ENTITY|NONE    what the host is to modules: with "
     "drawing views, with logical transforms, its kind, and where the user works",
     host},
};

} // namespace

std::span<const ScriptCommand> hostCommands() { return kCommands; }

} // namespace app
