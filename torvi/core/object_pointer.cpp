#include "torvi/core/object_pointer.h"

#include "torvi/core/navigation.h"

ZnDbTorviObjectWrapper* makeTorviWrapper(ZnDbObjectId centerObject) {
  const torvi::CenterObject found = torvi::centerObjectOf(centerObject);
  const torvi::Kind* kind = torvi::kindOfType(found.kind);
  return kind ? kind->makeWrapper(found) : nullptr;
}
