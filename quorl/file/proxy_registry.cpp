#include "quorl/file/proxy_registry.h"

#include <algorithm>

#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/proxy_entity.h"
#include "quorl/file/proxy_object.h"
#include "quorl/file/record_filer.h"

using Quorl::ErrorStatus;

namespace {

const ZnDbProxy* proxyAt(ZnDbObjectId id) { return id.isValid() ? zndbProxy(id.slot()->object) : nullptr; }

// What the class can't read stays a proxy and is tried again when classes come the next time.
bool becomeItself(ZnDbDatabase& database, ZnDbObjectId id) {
  const ZnDbProxy* proxy = proxyAt(id);
  ErrorStatus status = Quorl::eOk;
  std::unique_ptr<ZnDbObject> object =
      zndbObjectFromProxy(*proxy, *proxy->data.cls->registered(), &database, status);
  if (!object) return false;
  delete database.replaceObject(id, object.release());
  return true;
}

void becomeProxy(ZnDbDatabase& database, ZnDbObjectId id) {
  ZnDbObject* object = nullptr;
  ZnDbObjectRecord record;
  ZnDbRecordFiler filer(record, &database);
  // An object that can't write its fields in memory is a fault of its class, and there is nothing to keep.
  QUORL_ASSERT(accessZnDbObjectForRead(object, id, nullptr, true) == Quorl::eOk);
  QUORL_ASSERT(object->bdocOutFields(filer) == Quorl::eOk);
  endZnDbObjectRead(object);
  filer.restart();
  std::unique_ptr<ZnDbObject> proxy =
      zndbProxyFromRecord(*ZnDbProxyClass::of(*id.objectClass()), filer, nullptr);
  QUORL_ASSERT(proxy != nullptr);
  delete database.replaceObject(id, proxy.release());
  ZnDbProxyRegistry::instance().note(id);
}

// Objects were read while closed; whoever settles after reading may write.
void settle(ZnDbObjectId id) {
  ++id.slot()->writers;
  id.slot()->object->loaded();
  --id.slot()->writers;
}

} // namespace

template<class Base> void ZnDbProxyOf<Base>::attachLinks() {
  Base::attachLinks();
  if (!this->objectId().isNull()) ZnDbProxyRegistry::instance().note(this->objectId());
}
template class ZnDbProxyOf<ZnDbObject>;
template class ZnDbProxyOf<ZnDbEntity>;

ZnDbProxyRegistry& ZnDbProxyRegistry::instance() {
  static auto* registry = [] {
    auto* made = new ZnDbProxyRegistry;
    ZnRxEvent::instance().addReactor(made);
    znrxSetClassWatcher(made);
    return made;
  }();
  return *registry;
}
static const bool listening = (ZnDbProxyRegistry::instance(), true);

void ZnDbProxyRegistry::databaseConstructed(ZnDbDatabase* database) { drawings_.push_back({database, {}}); }

void ZnDbProxyRegistry::databaseToBeDestroyed(ZnDbDatabase* database) {
  std::erase_if(drawings_, [&](const Drawing& drawing) { return drawing.database == database; });
}

void ZnDbProxyRegistry::note(ZnDbObjectId proxy) {
  for (Drawing& drawing : drawings_)
    if (drawing.database == proxy.database()) drawing.proxies.push_back(proxy);
}

void ZnDbProxyRegistry::hierarchyBuilt() {
  for (Drawing& drawing : drawings_) awaken(drawing);
}

void ZnDbProxyRegistry::awaken(Drawing& drawing) {
  std::vector<ZnDbObjectId> waiting = std::move(drawing.proxies), ready;
  drawing.proxies.clear();
  std::sort(waiting.begin(), waiting.end());
  waiting.erase(std::unique(waiting.begin(), waiting.end()), waiting.end());
  // What stays a proxy is noted before links are attached, which may bring new ones.
  for (const ZnDbObjectId id : waiting) {
    const ZnDbProxy* proxy = proxyAt(id);
    if (!proxy) continue;
    if (proxy->data.cls->registered() && becomeItself(*drawing.database, id))
      ready.push_back(id);
    else
      drawing.proxies.push_back(id);
  }
  if (ready.empty()) return;
  drawing.database->undoRecorder().clear();
  for (const ZnDbObjectId id : ready) settle(id);
  for (const ZnDbObjectId id : ready)
    if (!id.isErased()) id.slot()->object->attachLinks();
}

// Objects of classes that derive from it go too: without their ancestor they are no database objects.
void ZnDbProxyRegistry::classToBeDeleted(const ZnRxClass* cls) {
  if (!cls->isDerivedFrom(ZnDbObject::desc()) || cls == ZnDbObject::desc()) return;
  for (const Drawing& drawing : drawings_) {
    ZnDbDatabase* database = drawing.database;
    bool changed = false;
    for (const ZnDbObjectId id : database->allObjectIds()) {
      if (!id.isDerivedFrom(cls) || proxyAt(id)) continue;
      if (!changed) database->undoRecorder().clear();
      changed = true;
      becomeProxy(*database, id);
    }
  }
}
