// Evaluating center objects on request. Both give eOk whatever the evaluation does: the action's status
// tells.
#pragma once

#include "torvi/host/association.h"

namespace torvi {

// Marks the body's action as changed and evaluates the top level network.
Quorl::ErrorStatus evaluateNetworkFor(ZnDbObjectId bodyId);
// Marks one action and evaluates it by itself.
Quorl::ErrorStatus evaluateAlone(ZnDbObjectId actionId);

// Prints that the object lost its association, in the words of its kind.
void printDisassociated(ZnDbObjectId bodyId);

} // namespace torvi
