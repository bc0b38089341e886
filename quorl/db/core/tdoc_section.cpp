#include "quorl/db/core/tdoc_section.h"

#include <algorithm>

namespace {

constexpr int kSubclassMarker = 100;
constexpr size_t kUsualCount = 12; // of items in a section

template<class Wanted>
void readWhile(ZnDbTdocFiler& filer, std::vector<ZnDbTdocItem>& items, Wanted&& wanted) {
  items.clear();
  items.reserve(kUsualCount);
  ZnDbTdocItem item;
  while (!filer.atEndOfObject() && filer.readItem(item) == Quorl::eOk) {
    if (!wanted(item.code)) {
      filer.pushBackItem();
      return;
    }
    items.push_back(item);
  }
}

} // namespace

bool zndbReadTdocSection(ZnDbTdocFiler& filer, const wchar_t* marker, std::vector<ZnDbTdocItem>& items) {
  if (filer.status() != Quorl::eOk || !filer.atSubclassData(marker)) return false;
  readWhile(filer, items, [](int code) { return code != kSubclassMarker; });
  return true;
}

void zndbReadLeadingItems(ZnDbTdocFiler& filer, std::initializer_list<int> codes,
                          std::vector<ZnDbTdocItem>& items) {
  readWhile(filer, items,
            [&](int code) { return std::find(codes.begin(), codes.end(), code) != codes.end(); });
}
