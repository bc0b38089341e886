// The items of one class in an object's text, found by their codes.
#pragma once

#include <initializer_list>
#include <span>
#include <vector>

#include "quorl/db/core/tdoc_filer.h"

// Items stand in any order; of several with one code the first comes first. What nobody asks for is left
// alone: a newer program wrote it.
class ZnDbTdocItems {
public:
  explicit ZnDbTdocItems(std::span<ZnDbTdocItem> items = {})
      : items_(items) {}
  // The next item of that code, null when there is none left.
  const ZnDbTdocItem* next(int code) {
    for (ZnDbTdocItem& item : items_)
      if (item.code == code) {
        item.code = kTaken;
        return &item;
      }
    return nullptr;
  }
  std::span<ZnDbTdocItem> all() const { return items_; }
  static constexpr int kTaken = -1;

private:
  std::span<ZnDbTdocItem> items_;
};

// Reads the section under the marker up to the next one; false where the section is missing.
bool zndbReadTdocSection(ZnDbTdocFiler& filer, const wchar_t* marker, std::vector<ZnDbTdocItem>& items);
// The items before the first marker, as long as they have one of the codes.
void zndbReadLeadingItems(ZnDbTdocFiler& filer, std::initializer_list<int> codes,
                          std::vector<ZnDbTdocItem>& items);
