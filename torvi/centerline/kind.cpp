#include "torvi/centerline/kind.h"

#include "torvi/centerline/action_body.h"
#include "torvi/centerline/builder.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/style/message_numbers.h"

const torvi::Kind torvi::kCenterLineKind = [] {
  Kind kind = kindOfClasses<ZnDbCenterLineActionBody, ZnDbCenterLineObjectWrapper, ZnCenterLineBuilder>();
  kind.name = L"CENTERLINE";
  kind.disassociatedMessage = kTorviMsgLineDisassociated;
  kind.makeBuilder = [](const BuilderInput& input) -> std::unique_ptr<ZnTorviBuilder> {
    return std::make_unique<ZnCenterLineBuilder>(input.edges, input.pickPoints, input.database);
  };
  return kind;
}();
