#include "quorl/db/core/filer.h"

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
