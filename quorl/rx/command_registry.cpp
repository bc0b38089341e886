#include "quorl/rx/command_registry.h"

namespace {

std::wstring folded(std::wstring_view name) {
  std::wstring lower(name);
  for (wchar_t& c : lower) c = Quorl::foldCase(c);
  return lower;
}

} // namespace

ZnRxCommandRegistry& ZnRxCommandRegistry::instance() {
  // Never destroyed: modules may still take their commands out while the process ends.
  static auto* registry = new ZnRxCommandRegistry;
  return *registry;
}

Quorl::ErrorStatus ZnRxCommandRegistry::addCommand(const ZnString& group, const ZnString& name,
                                                   ZnRxCommandFunction run) {
  if (group.isEmpty() || name.isEmpty() || !run) return Quorl::eInvalidInput;
  const bool added = commands_.try_emplace(folded(name), ZnRxCommand{group, name, std::move(run)}).second;
  return added ? Quorl::eOk : Quorl::eDuplicateKey;
}

Quorl::ErrorStatus ZnRxCommandRegistry::removeGroup(const ZnString& group) {
  const auto removed = std::erase_if(
      commands_, [&group](const auto& entry) { return entry.second.group.equalsNoCase(group); });
  return removed > 0 ? Quorl::eOk : Quorl::eKeyNotFound;
}

const ZnRxCommand* ZnRxCommandRegistry::find(std::wstring_view name) const {
  const auto found = commands_.find(folded(name));
  return found == commands_.end() ? nullptr : &found->second;
}

std::vector<const ZnRxCommand*> ZnRxCommandRegistry::commands() const {
  std::vector<const ZnRxCommand*> sorted;
  for (const auto& [key, command] : commands_) sorted.push_back(&command);
  return sorted;
}
