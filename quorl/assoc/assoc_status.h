// The states of actions and dependencies; the numbers are filed and seen by modules.
#pragma once

enum ZnDbAssocStatus : int {
  kIsUpToDateAssocStatus = 0,
  kChangedDirectlyAssocStatus = 1,     // something that it depends on was changed by an edit
  kChangedTransitivelyAssocStatus = 2, // something that it depends on was changed by an evaluation
  kChangedNoDifferenceAssocStatus = 3,
  kFailedToEvaluateAssocStatus = 4,
  kErasedAssocStatus = 5,
  kSuppressedAssocStatus = 6,
  kUnresolvedAssocStatus = 7,
};

// Whether the next evaluation has to visit an action of that status.
constexpr bool zndbIsToEvaluate(ZnDbAssocStatus status) {
  return status == kChangedDirectlyAssocStatus || status == kChangedTransitivelyAssocStatus ||
         status == kChangedNoDifferenceAssocStatus;
}
