#include "quorl/db/filer.h"

// Read one by one: the order of evaluation in an argument list is open.
ZnGePoint3d ZnDbFiler::rdPoint3d() {
  const double x = rdDouble();
  const double y = rdDouble();
  const double z = rdDouble();
  return ZnGePoint3d(x, y, z);
}

ZnGeVector3d ZnDbFiler::rdVector3d() {
  const double x = rdDouble();
  const double y = rdDouble();
  const double z = rdDouble();
  return ZnGeVector3d(x, y, z);
}

int ZnDbFiler::rdCount(size_t leastBytesEach) {
  const std::int32_t count = rdInt32();
  if (status() != Quorl::eOk) return 0;
  if (count < 0 || static_cast<size_t>(count) > remaining() / (leastBytesEach ? leastBytesEach : 1)) {
    setStatus(Quorl::eFileDamaged);
    return 0;
  }
  return count;
}
