#include "torvi/centermark/kind.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/builder.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/style/message_numbers.h"

const torvi::Kind torvi::kCenterMarkKind = [] {
  Kind kind = kindOfClasses<ZnDbCenterMarkActionBody, ZnDbCenterMarkObjectWrapper, ZnCenterMarkBuilder>();
  kind.name = L"CENTERMARK";
  kind.disassociatedMessage = kTorviMsgMarkDisassociated;
  kind.makeBuilder = [](const BuilderInput& input) -> std::unique_ptr<ZnTorviBuilder> {
    return std::make_unique<ZnCenterMarkBuilder>(input.edges, input.database);
  };
  kind.keepsRotationAmongViews = true;
  return kind;
}();
