// What the field readers of all classes do alike: versions, sections of the text format, and taking over only
// what is usable.
#pragma once

#include <cstdint>

#include "quorl/db/core/filer.h"
#include "quorl/db/core/tdoc_filer.h"

// False with the status set where the fields are of a newer class (eNewerVersion) or can't be read.
inline bool zndbReadVersion(ZnDbFiler& filer, std::int16_t known) {
  const std::int16_t version = filer.readInt16();
  if (filer.status() != Quorl::eOk) return false;
  if (version > known) filer.setStatus(Quorl::eNewerVersion);
  if (version < 1) filer.setStatus(Quorl::eFileDamaged);
  return filer.status() == Quorl::eOk;
}

// Hands each item of the section of that class to the reader; items that it does not know it leaves alone. A
// missing section hands nothing over.
template<class Reader>
Quorl::ErrorStatus zndbReadTdocSection(ZnDbTdocFiler& filer, const wchar_t* marker, Reader&& reader) {
  constexpr int kSubclassMarker = 100;
  if (filer.status() != Quorl::eOk || !filer.atSubclassData(marker)) return filer.status();
  ZnDbTdocItem item;
  while (!filer.atEndOfObject() && filer.readItem(item) == Quorl::eOk) {
    if (item.code == kSubclassMarker) {
      filer.pushBackItem();
      break;
    }
    reader(item);
  }
  return filer.status();
}

// Takes the candidate over if all of it was read and it is usable; an unusable one is damage.
template<class Filer, class Shape>
Quorl::ErrorStatus zndbTakeOver(Filer& filer, Shape& target, Shape&& candidate) {
  if (filer.status() == Quorl::eOk && !candidate.isUsable()) filer.setStatus(Quorl::eFileDamaged);
  if (filer.status() == Quorl::eOk) target = std::move(candidate);
  return filer.status();
}
