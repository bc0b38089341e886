#include "quorl/file/class_record.h"

#include <memory>

#include "quorl/db/entity/entity.h"

namespace {

bool isHostBase(const ZnString& name) { return name == ZnDbObject::className(); }

// Never torn down: drawings may outlive static objects.
std::vector<std::unique_ptr<ZnDbProxyClass>>& proxyClasses() {
  static auto* classes = new std::vector<std::unique_ptr<ZnDbProxyClass>>;
  return *classes;
}

} // namespace

ZnDbClassRecord ZnDbClassRecord::of(const ZnRxClass& cls) {
  return {cls.name(),      cls.tdocName(),
          cls.appName(),   cls.parent() ? cls.parent()->name() : ZnString(),
          cls.version(),   cls.maintenanceVersion(),
          cls.proxyFlags()};
}

bool operator==(const ZnDbClassRecord& a, const ZnDbClassRecord& b) {
  return a.name == b.name && a.tdocName == b.tdocName && a.appName == b.appName &&
         a.parentName == b.parentName && a.version == b.version &&
         a.maintenanceVersion == b.maintenanceVersion && a.proxyFlags == b.proxyFlags;
}

const ZnDbProxyClass* ZnDbProxyClass::of(const ZnDbClassRecord& record,
                                         const std::vector<ZnDbClassRecord>& ancestors) {
  auto& classes = proxyClasses();
  for (const auto& known : classes)
    if (known->record_ == record && known->ancestors_ == ancestors) return known.get();
  auto added = std::make_unique<ZnDbProxyClass>();
  added->record_ = record;
  added->ancestors_ = ancestors;
  for (const ZnDbClassRecord& ancestor : ancestors)
    added->entity_ |= ancestor.name == ZnDbEntity::className();
  added->number_ = static_cast<int>(classes.size());
  classes.push_back(std::move(added));
  return classes.back().get();
}

const ZnDbProxyClass* ZnDbProxyClass::of(const ZnRxClass& cls) {
  std::vector<ZnDbClassRecord> ancestors;
  for (const ZnRxClass* up = cls.parent(); up; up = up->parent()) {
    ancestors.push_back(ZnDbClassRecord::of(*up));
    if (isHostBase(up->name())) break;
  }
  return of(ZnDbClassRecord::of(cls), ancestors);
}

const ZnRxClass* ZnDbProxyClass::registered() const { return zndbCreatableClass(record_.name); }

const ZnDbProxyClass* ZnDbProxyClass::byNumber(int number) {
  auto& classes = proxyClasses();
  return number >= 0 && static_cast<size_t>(number) < classes.size()
             ? classes[static_cast<size_t>(number)].get()
             : nullptr;
}

const ZnRxClass* zndbCreatableClass(const ZnString& name) {
  const ZnRxClass* cls = znrxFindZnRxClass(name);
  return cls && !cls->isAbstract() && cls->isDerivedFrom(ZnDbObject::desc()) ? cls : nullptr;
}
