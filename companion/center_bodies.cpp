#include "companion/center_bodies.h"

namespace companion {

void visitCenterBodies(ZnDbObjectId space, const std::function<void(const ZnDbTorviActionBody&)>& visit) {
  ZnDbHolder<ZnDbAssocNetwork> network(ZnDbAssocNetwork::getInstanceFromObject(space, false, true, L""));
  if (!network.isOpen()) return;
  for (const ZnDbObjectId actionId : network->getActions()) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen()) continue;
    ZnDbHolder<ZnDbTorviActionBody> body(action->actionBody());
    if (body.isOpen() && !body->centerObjectId().isErased()) visit(*body);
  }
}

} // namespace companion
