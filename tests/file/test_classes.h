// Classes that come and go during a test, as those of a module do.
#pragma once

#include <memory>
#include <vector>

#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/entity.h"

namespace fileTest {

// An entity with a field of every kind.
class Gadget : public ZnDbEntity {
public:
  static ZnRxClass* gpDesc;
  static ZnRxClass* desc() { return gpDesc; }
  ZnRxClass* isA() const override { return gpDesc; }

  ZnString name;
  ZnAtom kind;
  std::string blob;
  double size = 1.0;
  std::vector<ZnDbObjectId> parts; // hard pointers

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;
};

// An object that watches another one.
class Note : public ZnDbObject {
public:
  static ZnRxClass* gpDesc;
  static ZnRxClass* desc() { return gpDesc; }
  ZnRxClass* isA() const override { return gpDesc; }

  ZnDbObjectId watched;
  int heard = 0;
  int timesLoaded = 0;
  // Set by a test: the next reading of any note gives this.
  static Quorl::ErrorStatus readStatus;

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;
  void attachLinks() override;
  void detachLinks() override { link_.reset(); }
  void loaded() override { ++timesLoaded; }
  void watchedModified(const ZnDbObject*) override { ++heard; }

private:
  std::unique_ptr<ZnDbWatchLink> link_;
};

constexpr int kVersion = 33, kMaintenance = 427, kProxyFlags = 1153;
void registerTestClasses();
void deleteTestClasses();
// For the length of a scope.
struct TestClasses {
  TestClasses() { registerTestClasses(); }
  ~TestClasses() { deleteTestClasses(); }
};

} // namespace fileTest
