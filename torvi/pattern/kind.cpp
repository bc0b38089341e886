#include "torvi/pattern/kind.h"

#include "torvi/pattern/action_body.h"
#include "torvi/pattern/builder.h"
#include "torvi/pattern/dependency_extension.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/style/message_numbers.h"

namespace torvi {

namespace {

// Whether the pitch circle is closed and its center marked, then the end mark; whatever the list held goes.
void tellContext(const ZnDbTorviObjectWrapper& wrapper, ZnResBufList& context) {
  constexpr int kShort = 5003, kEnd = 5000;
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(wrapper.actionBody());
  if (!body.isOpen()) return;
  context.reset(znutBuildList(kShort, int{body->isFullPCD()}, kShort, int{body->showCenterMark()}, kEnd));
}

std::unique_ptr<ZnTorviBuilder> makeBuilder(const BuilderInput& input) {
  auto builder = std::make_unique<ZnCenterMarkPatternBuilder>(input.database);
  builder->setInputEdges(input.edges);
  return builder;
}

ZnRxObject* dependencyExtension() {
  static ZnDbCenterMarkPatternAssocDependencyPE extension;
  return &extension;
}

} // namespace

const Kind kCenterMarkPatternKind = [] {
  Kind kind = kindOfClasses<ZnDbCenterMarkPatternActionBody, ZnDbCenterMarkPatternObjectWrapper,
                            ZnCenterMarkPatternBuilder>();
  kind.name = L"CENTERMARKPATTERN";
  kind.disassociatedMessage = kTorviMsgPatternDisassociated;
  kind.derivesFromAnotherKind = true;
  kind.makeBuilder = makeBuilder;
  kind.keepsSpareOutputs = true;
  kind.tellContext = tellContext;
  kind.dependencyExtension = dependencyExtension;
  return kind;
}();

} // namespace torvi
