// The registration data of a class as files keep it, so that objects of a class that is not loaded can be
// written back under it.
#pragma once

#include <vector>

#include "quorl/base/string.h"

class ZnRxClass;

struct ZnDbClassRecord {
  ZnString name, tdocName, appName, parentName;
  int version = 0, maintenanceVersion = 0, proxyFlags = 0;

  static ZnDbClassRecord of(const ZnRxClass& cls);
  friend bool operator==(const ZnDbClassRecord& a, const ZnDbClassRecord& b);
};

// A class that stands behind proxies, with its ancestors, nearest first, up to the host's base of objects.
// Equal ones are one; they live as long as the process.
class ZnDbProxyClass {
public:
  static const ZnDbProxyClass* of(const ZnDbClassRecord& record,
                                  const std::vector<ZnDbClassRecord>& ancestors);
  static const ZnDbProxyClass* of(const ZnRxClass& cls);

  const ZnDbClassRecord& record() const { return record_; }
  const std::vector<ZnDbClassRecord>& ancestors() const { return ancestors_; }
  bool isEntity() const { return entity_; }
  // The class itself once it is registered and makes database objects, else null.
  const ZnRxClass* registered() const;

  // A number for this process, by which undo and clone records name it; null for a number never given.
  int number() const { return number_; }
  static const ZnDbProxyClass* byNumber(int number);

private:
  ZnDbClassRecord record_;
  std::vector<ZnDbClassRecord> ancestors_;
  bool entity_ = false;
  int number_ = 0;
};

// The class of that name if it makes database objects, else null.
const ZnRxClass* zndbCreatableClass(const ZnString& name);
