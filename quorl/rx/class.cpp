#include "quorl/rx/class.h"

#include <algorithm>
#include <unordered_map>

#include "quorl/rx/class_members.h"
#include "quorl/rx/member_collection.h"

// The registry of classes. It never dies: static objects of modules are torn down after it.
class ZnRxClassTable {
public:
  static ZnRxClassTable& instance() {
    static ZnRxClassTable* table = new ZnRxClassTable;
    return *table;
  }

  ZnRxClass* add(const wchar_t* name, const wchar_t* parentName, ZnRxConstructor constructor) {
    std::unique_ptr<ZnRxClass> cls(new ZnRxClass);
    cls->constructor_ = constructor;
    return adopt(cls.get(), name, parentName) ? cls.release() : nullptr;
  }

  bool adopt(ZnRxClass* cls, const wchar_t* name, const wchar_t* parentName) {
    const ZnString text(name);
    if (text.isEmpty() || byName_.count(text.atom())) return false;
    cls->name_ = text;
    cls->parentName_ = ZnString(parentName);
    byName_.emplace(text.atom(), cls);
    classes_.push_back(cls);
    ++generation;
    tie(cls);
    return true;
  }

  void describe(ZnRxClass* cls, int version, int maintenance, int proxyFlags, const wchar_t* tdocName,
                const wchar_t* appName) {
    cls->version_ = version;
    cls->maintenanceVersion_ = maintenance;
    cls->proxyFlags_ = proxyFlags;
    cls->tdocName_ = ZnString(tdocName);
    cls->appName_ = ZnString(appName);
  }

  ZnRxClass* find(ZnAtom name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
  }

  void remove(ZnRxClass* cls) {
    ++generation;
    byName_.erase(cls->name_.atom());
    classes_.erase(std::remove(classes_.begin(), classes_.end(), cls), classes_.end());
    // Nobody may be left with a parent that is gone.
    tieAll();
  }

  // Registration order can put a child before its parent, so every pass ties from the root down.
  void tieAll() {
    for (ZnRxClass* cls : classes_) cls->parent_ = nullptr;
    for (ZnRxClass* cls : classes_) tie(cls);
  }

  const std::vector<ZnRxClass*>& classes() const { return classes_; }

  unsigned generation = 0;

private:
  void tie(ZnRxClass* cls) {
    if (!cls->parent_ && !cls->parentName_.isEmpty()) {
      cls->parent_ = find(cls->parentName_.atom());
      if (cls->parent_) tie(cls->parent_);
    }
    cls->ancestors_.clear();
    if (cls->parent_) cls->ancestors_ = cls->parent_->ancestors_;
    cls->depth_ = static_cast<int>(cls->ancestors_.size());
    cls->ancestors_.push_back(cls);
    cls->overruled_ = !cls->overrules_.empty() || (cls->parent_ && cls->parent_->overruled_);
  }

  std::vector<ZnRxClass*> classes_;
  std::unordered_map<ZnAtom, ZnRxClass*> byName_;
};

namespace {
ZnRxClassWatcher* watcher = nullptr;
}

ZnRxClass* ZnRxClass::gpDesc = nullptr;

void ZnRxClass::rxInit() {
  ZnRxObject::rxInit();
  if (!gpDesc) gpDesc = newZnRxClass(L"ZnRxClass", L"ZnRxObject");
}

static const bool registeredClass = (ZnRxClass::rxInit(), true);

ZnRxClass::ZnRxClass() = default;
ZnRxClass::~ZnRxClass() = default;

bool ZnRxClass::adopt(ZnRxClass* cls, const wchar_t* name, const wchar_t* parentName) {
  return ZnRxClassTable::instance().adopt(cls, name, parentName);
}

void ZnRxClass::setMemberBuilder(ZnRxMemberBuild build) {
  buildMembers_ = build;
  members_.reset();
}

const ZnRxMemberCollection& ZnRxClass::members() const {
  if (!members_) {
    // In place before it is filled: a builder may ask for members of any class, its own too.
    members_ = std::make_unique<ZnRxMemberCollection>(this);
    ZnRxMemberCollectionBuilder builder(*members_);
    if (buildMembers_) buildMembers_(builder);
  }
  return *members_;
}

ZnRxObject* ZnRxClass::addX(const ZnRxClass* protocol, ZnRxObject* extension) {
  for (auto& [kind, held] : extensions_)
    if (kind == protocol) return std::exchange(held, extension);
  extensions_.emplace_back(protocol, extension);
  return nullptr;
}

ZnRxObject* ZnRxClass::delX(const ZnRxClass* protocol) {
  for (auto it = extensions_.begin(); it != extensions_.end(); ++it) {
    if (it->first != protocol) continue;
    ZnRxObject* extension = it->second;
    extensions_.erase(it);
    return extension;
  }
  return nullptr;
}

ZnRxObject* ZnRxClass::getX(const ZnRxClass* protocol) const {
  for (const auto& [kind, extension] : extensions_)
    if (kind == protocol) return extension;
  return nullptr;
}

ZnRxObject* ZnRxClass::queryX(const ZnRxClass* protocol) const {
  for (const ZnRxClass* cls = this; cls; cls = cls->parent_)
    if (ZnRxObject* extension = cls->getX(protocol)) return extension;
  return nullptr;
}

ZnRxClass* newZnRxClass(const wchar_t* name, const wchar_t* parentName, ZnRxConstructor constructor) {
  return ZnRxClassTable::instance().add(name, parentName, constructor);
}

ZnRxClass* newZnRxClass(const wchar_t* name, const wchar_t* parentName, int version, int maintenanceVersion,
                        int proxyFlags, ZnRxConstructor constructor, const wchar_t* tdocName,
                        const wchar_t* appName) {
  ZnRxClass* cls = ZnRxClassTable::instance().add(name, parentName, constructor);
  if (cls)
    ZnRxClassTable::instance().describe(cls, version, maintenanceVersion, proxyFlags, tdocName, appName);
  return cls;
}

ZnRxClass* znrxFindZnRxClass(const wchar_t* name) {
  return ZnRxClassTable::instance().find(
      ZnAtom::existing(name ? std::wstring_view(name) : std::wstring_view()));
}

ZnRxClass* znrxFindZnRxClass(const ZnString& name) {
  return ZnRxClassTable::instance().find(ZnAtom::existing(name.view()));
}

void deleteZnRxClass(ZnRxClass* cls) {
  removeZnRxClass(cls);
  delete cls;
}

void removeZnRxClass(ZnRxClass* cls) {
  if (!cls) return;
  if (watcher) watcher->classToBeDeleted(cls);
  ZnRxClassTable::instance().remove(cls);
}

void znrxBuildClassHierarchy() {
  ZnRxClassTable::instance().tieAll();
  if (watcher) watcher->hierarchyBuilt();
}

unsigned znrxClassGeneration() { return ZnRxClassTable::instance().generation; }

const std::vector<ZnRxClass*>& znrxClasses() { return ZnRxClassTable::instance().classes(); }

void znrxSetClassWatcher(ZnRxClassWatcher* newWatcher) { watcher = newWatcher; }
