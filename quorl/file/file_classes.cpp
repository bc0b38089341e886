#include "quorl/file/file_classes.h"

#include "quorl/db/core/object.h"
#include "quorl/file/proxy_data.h"

int ZnFileClasses::numberOf(const ZnDbObject& object) {
  const ZnDbProxyData* proxy = zndbProxyData(&object);
  const void* address = proxy ? static_cast<const void*>(proxy->cls) : object.isA();
  // Objects of one class mostly stand together.
  if (address == lastAddress_) return lastNumber_;
  lastAddress_ = address;
  const auto found = byAddress_.find(address);
  if (found != byAddress_.end()) return lastNumber_ = found->second;
  const ZnDbProxyClass& cls = proxy ? *proxy->cls : *ZnDbProxyClass::of(*object.isA());
  addWithAncestors(cls);
  lastNumber_ = byName_.at(cls.record().name.atom());
  byAddress_.emplace(address, lastNumber_);
  return lastNumber_;
}

// A class that comes under one name from several files is written once: as the first of them had it.
void ZnFileClasses::addWithAncestors(const ZnDbProxyClass& cls) {
  add(cls.record());
  for (const ZnDbClassRecord& ancestor : cls.ancestors()) add(ancestor);
}

bool ZnFileClasses::add(const ZnDbClassRecord& record) {
  if (record.name.isEmpty()) return false;
  const int number = static_cast<int>(entries_.size());
  if (!byName_.emplace(record.name.atom(), number).second) return false;
  std::string label = (record.tdocName.isEmpty() ? record.name : record.tdocName).utf8();
  if (byLabel_.count(label)) label = record.name.utf8();
  while (byLabel_.count(label)) label += '*';
  byLabel_.emplace(label, number);
  entries_.push_back({record, label, nullptr, false, nullptr});
  return true;
}

int ZnFileClasses::numberOfLabel(std::string_view label) const {
  const auto found = byLabel_.find(std::string(label));
  return found == byLabel_.end() ? -1 : found->second;
}

const ZnRxClass* ZnFileClasses::creatable(int number) {
  Entry& entry = entries_[static_cast<size_t>(number)];
  if (!entry.sought) entry.creatable = zndbCreatableClass(entry.record.name);
  entry.sought = true;
  return entry.creatable;
}

const ZnDbProxyClass* ZnFileClasses::proxyClass(int number) {
  Entry& entry = entries_[static_cast<size_t>(number)];
  if (entry.proxyClass) return entry.proxyClass;
  std::vector<ZnDbClassRecord> ancestors;
  auto up = byName_.find(entry.record.parentName.atom());
  // A damaged file may name parents in a circle, and every class of a large one with all of them.
  constexpr size_t kDeepest = 64;
  while (up != byName_.end() && ancestors.size() < kDeepest) {
    ancestors.push_back(record(up->second));
    up = byName_.find(ancestors.back().parentName.atom());
  }
  return entry.proxyClass = ZnDbProxyClass::of(entry.record, ancestors);
}
