#include "quorl/db/core/filer.h"

void ZnDbFiler::writeId(ZnReferenceKind kind, ZnDbObjectId id) {
  switch (kind) {
  case ZnReferenceKind::kSoftPointer:
    return writeSoftPointerId(id);
  case ZnReferenceKind::kHardPointer:
    return writeHardPointerId(id);
  case ZnReferenceKind::kSoftOwner:
    return writeSoftOwnershipId(id);
  case ZnReferenceKind::kHardOwner:
    return writeHardOwnershipId(id);
  }
}

ZnDbObjectId ZnDbFiler::readId(ZnReferenceKind kind) {
  switch (kind) {
  case ZnReferenceKind::kSoftPointer:
    return readSoftPointerId();
  case ZnReferenceKind::kHardPointer:
    return readHardPointerId();
  case ZnReferenceKind::kSoftOwner:
    return readSoftOwnershipId();
  case ZnReferenceKind::kHardOwner:
    return readHardOwnershipId();
  }
  return {};
}

// Read one by one: the order of evaluation in an argument list is open.
ZnGePoint3d ZnDbFiler::readPoint3d() {
  const double x = readDouble();
  const double y = readDouble();
  const double z = readDouble();
  return ZnGePoint3d(x, y, z);
}

ZnGeVector3d ZnDbFiler::readVector3d() {
  const double x = readDouble();
  const double y = readDouble();
  const double z = readDouble();
  return ZnGeVector3d(x, y, z);
}

int ZnDbFiler::readCount(size_t leastBytesEach) {
  const std::int32_t count = readInt32();
  if (status() != Quorl::eOk) return 0;
  if (count < 0 || static_cast<size_t>(count) > remaining() / (leastBytesEach ? leastBytesEach : 1)) {
    setStatus(Quorl::eFileDamaged);
    return 0;
  }
  return count;
}
