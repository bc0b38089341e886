// A kind of center object, as everything outside its folder knows it. Each kind describes itself in one
// record, which the start-up registers; core, commands and report ask the record, and nobody else lists
// kinds.
#pragma once

#include <memory>
#include <span>

#include "torvi/drawing/types.h"
#include "torvi/host/association.h"
#include "torvi/host/export.h"

class ZnDbTorviObjectWrapper;
class ZnTorviBuilder;

namespace torvi {

// What a block reference turns out to be: without body and kind it is no center object.
struct CenterObject {
  ZnDbObjectId reference;
  ZnDbObjectId body;
  ZnDbTorviType kind = kTorviNone;
};

// What a new center object follows.
struct BuilderInput {
  ZnArray<ZnDbEdgeRef> edges;
  const ZnGePoint3d* pickPoints = nullptr; // one an edge, in the coordinates of the object's space; or none
  ZnDbDatabase* database = nullptr;        // null means the working one
};

struct Kind {
  ZnDbTorviType type = kTorviNone;
  const wchar_t* name = L"";         // of its command, and in reports: "CENTERMARK"
  unsigned disassociatedMessage = 0; // number of the text that tells that an object has lost its edges

  // The class of its bodies. A body belongs to the kind whose class is nearest among its ancestors.
  ZnRxClass* (*bodyClass)() = nullptr; // null while the class does not stand
  void (*registerClass)() = nullptr;
  void (*deleteClass)() = nullptr;
  bool derivesFromAnotherKind = false; // its class goes before those of the kinds that it is made of

  // New, and the caller's
  ZnDbTorviObjectWrapper* (*makeWrapper)(const CenterObject& object) = nullptr;
  std::unique_ptr<ZnTorviBuilder> (*makeBuilder)(const BuilderInput& input) = nullptr;

  // Where kinds differ in the eyes of the core
  bool keepsRotationAmongViews = false; // in a document of drawing views it follows by its place alone
  bool keepsSpareOutputs = false;       // its block may hold more than was generated: outputs not yet purged
  // Null for a kind that has nothing to tell with the answer that something is a center object.
  void (*tellContext)(const ZnDbTorviObjectWrapper& wrapper, ZnResBufList& context) = nullptr;
  // What leads a dependency on one of its curves to another object; null for a kind whose curves stay.
  ZnRxObject* (*dependencyExtension)() = nullptr;
};

// The registered kinds, in the order of their registration; none while the module is down.
TORVI_EXPORT std::span<const Kind* const> kinds();
// Null for a type that is no kind's.
TORVI_EXPORT const Kind* kindOfType(ZnDbTorviType type);
const Kind* kindOfClass(const ZnRxClass* bodyClass);
const Kind* kindOfBody(ZnDbObjectId bodyId); // read from the id, nothing is opened

// The record outlives its registration; a second one changes nothing.
void registerKind(const Kind& kind);
void forgetKinds();

// Whoever made it: what stands under the name of the class goes.
template<class Class> void deleteClassByName() {
  if (ZnRxClass* cls = znrxFindZnRxClass(Class::className())) deleteZnRxClass(cls);
  Class::gpDesc = nullptr;
}

// The part of a record that follows from the classes of the kind.
template<class Body, class Wrapper, class Builder> constexpr Kind kindOfClasses() {
  Kind kind;
  kind.type = Wrapper::wrapperCenterType();
  kind.bodyClass = Body::desc;
  kind.registerClass = Body::rxInit;
  kind.deleteClass = [] {
    Builder::gpDesc = nullptr; // where builders keep the class that they look up by name
    deleteClassByName<Body>();
  };
  kind.makeWrapper = [](const CenterObject& object) -> ZnDbTorviObjectWrapper* {
    return new Wrapper(object);
  };
  return kind;
}

} // namespace torvi
