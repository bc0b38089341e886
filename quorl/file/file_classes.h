// The classes of a file: those of its objects and their ancestors, by number and by the label under which the
// text format begins their objects.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quorl/file/class_record.h"

class ZnDbObject;

class ZnFileClasses {
public:
  // Writing: the number of the object's class, for a proxy of the one that it stands for. A class that is new
  // is added, and its ancestors after it.
  int numberOf(const ZnDbObject& object);
  // Reading: false for a class whose name was added before or is empty.
  bool add(const ZnDbClassRecord& record);

  size_t size() const { return entries_.size(); }
  const ZnDbClassRecord& record(int number) const { return entries_[static_cast<size_t>(number)].record; }
  // The text name where no earlier class took it, else the class name, so that labels are unique.
  const std::string& label(int number) const { return entries_[static_cast<size_t>(number)].label; }
  int numberOfLabel(std::string_view label) const; // -1 for none
  // Null for a class of which no objects can be made now: its objects become proxies.
  const ZnRxClass* creatable(int number);
  // What proxies of that class hold. Ancestors are followed as far as the file names them.
  const ZnDbProxyClass* proxyClass(int number);

private:
  struct Entry {
    ZnDbClassRecord record;
    std::string label;
    const ZnRxClass* creatable = nullptr;
    bool sought = false;
    const ZnDbProxyClass* proxyClass = nullptr;
  };
  void addWithAncestors(const ZnDbProxyClass& cls);

  std::vector<Entry> entries_;
  std::unordered_map<ZnAtom, int> byName_;
  std::unordered_map<std::string, int> byLabel_;
  std::unordered_map<const void*, int> byAddress_;
  const void* lastAddress_ = nullptr;
  int lastNumber_ = -1;
};
