// Run-time classes: a name, a parent, how to make an object, and the extensions attached to the class.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "quorl/base/string.h"
#include "quorl/rx/object.h"

class ZnRxMemberCollection;
class ZnRxMemberCollectionBuilder;
class ZnRxOverrule;

using ZnRxConstructor = ZnRxObject* (*)();
using ZnRxMemberBuild = void (*)(ZnRxMemberCollectionBuilder&);

class ZnRxClass : public ZnRxObject {
public:
  static ZnRxClass* desc() { return gpDesc; }
  static ZnRxClass* gpDesc;
  static void rxInit();
  ZnRxClass* isA() const override { return gpDesc; }
  ~ZnRxClass() override;

  const ZnString& name() const { return name_; }
  const ZnString& tdocName() const { return tdocName_; }
  const ZnString& appName() const { return appName_; }
  ZnRxClass* parent() const { return parent_; }
  int version() const { return version_; }
  int maintenanceVersion() const { return maintenanceVersion_; }
  int proxyFlags() const { return proxyFlags_; }
  // A new object of the class, or null for an abstract one.
  ZnRxObject* create() const { return constructor_ ? constructor_() : nullptr; }
  bool isAbstract() const { return constructor_ == nullptr; }

  // A class derives from itself. Constant time: each class knows its ancestor at every depth.
  bool isDerivedFrom(const ZnRxClass* ancestor) const {
    return ancestor && ancestor->depth_ <= depth_ &&
           ancestors_[static_cast<size_t>(ancestor->depth_)] == ancestor;
  }
  static bool isDerivedFrom(const ZnRxClass* derived, const ZnRxClass* ancestor) {
    return derived && derived->isDerivedFrom(ancestor);
  }

  // Protocol extensions. addX returns the extension that stood there before, delX the one that it took
  // away; the caller owns what comes back. queryX looks here, then at the ancestors, nearest first.
  ZnRxObject* addX(const ZnRxClass* protocol, ZnRxObject* extension);
  ZnRxObject* delX(const ZnRxClass* protocol);
  ZnRxObject* getX(const ZnRxClass* protocol) const; // this class alone
  ZnRxObject* queryX(const ZnRxClass* protocol) const;

  // Overrules of this class alone; ZnRxOverrule keeps them.
  const std::vector<ZnRxOverrule*>& overrules() const { return overrules_; }
  // Whether this class or an ancestor has any overrule; most dispatches end here.
  bool hasOverrules() const { return overruled_; }

  // The members of this class alone, built by the callback when they are first asked for; the members of
  // ancestors and facets are the member engine's matter. A new callback drops members that stand.
  void setMemberBuilder(ZnRxMemberBuild build);
  const ZnRxMemberCollection& members() const;

protected:
  // For the kinds of class that construct themselves. The table then owns the class: deleteZnRxClass, or
  // the class dictionary, lets it go again. False, and nothing done, when the name is taken.
  ZnRxClass();
  static bool adopt(ZnRxClass* cls, const wchar_t* name, const wchar_t* parentName);

private:
  friend class ZnRxClassTable;
  friend class ZnRxOverrule;

  ZnString name_, tdocName_, appName_;
  ZnString parentName_;
  ZnRxClass* parent_ = nullptr;
  ZnRxConstructor constructor_ = nullptr;
  int version_ = 0, maintenanceVersion_ = 0, proxyFlags_ = 0;
  int depth_ = 0;
  bool overruled_ = false;
  std::vector<const ZnRxClass*> ancestors_;
  std::vector<std::pair<const ZnRxClass*, ZnRxObject*>> extensions_;
  std::vector<ZnRxOverrule*> overrules_;
  ZnRxMemberBuild buildMembers_ = nullptr;
  mutable std::unique_ptr<ZnRxMemberCollection> members_;
};

// Creates and registers a class. A parent that is not registered yet is tied by the next
// znrxBuildClassHierarchy. Null when the name is taken.
ZnRxClass* newZnRxClass(const wchar_t* name, const wchar_t* parentName,
                        ZnRxConstructor constructor = nullptr);
ZnRxClass* newZnRxClass(const wchar_t* name, const wchar_t* parentName, int version, int maintenanceVersion,
                        int proxyFlags, ZnRxConstructor constructor, const wchar_t* tdocName,
                        const wchar_t* appName);
ZnRxClass* znrxFindZnRxClass(const wchar_t* name);
ZnRxClass* znrxFindZnRxClass(const ZnString& name);
// Objects of the class must be gone. The watcher hears of it before the class goes; classes that derive
// from it stand without parent until one of that name is back and the hierarchy is built.
void deleteZnRxClass(ZnRxClass* cls);
// The same without deleting: the class leaves the registry and belongs to the caller.
void removeZnRxClass(ZnRxClass* cls);
// Ties parents and ancestors of all classes anew.
void znrxBuildClassHierarchy();
// Grows with every class that comes or goes, so that who keeps answers about classes knows when to ask anew.
unsigned znrxClassGeneration();
// All registered classes, in order of registration.
const std::vector<ZnRxClass*>& znrxClasses();

// Notified when classes come and go, so that objects of unknown classes can become themselves and back.
class ZnRxClassWatcher {
public:
  virtual ~ZnRxClassWatcher() = default;
  virtual void hierarchyBuilt() = 0;
  virtual void classToBeDeleted(const ZnRxClass* cls) = 0;
};
void znrxSetClassWatcher(ZnRxClassWatcher* watcher);
