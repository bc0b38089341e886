#include "torvi/edgeextension/kind.h"

#include "torvi/edgeextension/action_body.h"
#include "torvi/edgeextension/builder.h"
#include "torvi/edgeextension/object_wrapper.h"
#include "torvi/style/message_numbers.h"

const torvi::Kind torvi::kEdgeExtensionKind = [] {
  Kind kind =
      kindOfClasses<ZnDbEdgeExtensionActionBody, ZnDbEdgeExtensionObjectWrapper, ZnEdgeExtensionBuilder>();
  kind.name = L"EDGEEXTENSION";
  kind.disassociatedMessage = kTorviMsgEdgeExtensionDisassociated;
  kind.makeBuilder = [](const BuilderInput& input) -> std::unique_ptr<ZnTorviBuilder> {
    return std::make_unique<ZnEdgeExtensionBuilder>(input.edges, input.database);
  };
  return kind;
}();
