#include "quorl/rx/geometry_values.h"

#include "quorl/rx/real_format.h"

namespace {

template<class Coordinates> ZnString coordinatesText(const Coordinates& held) {
  return Quorl::shortestReal(held.x) + L"," + Quorl::shortestReal(held.y) + L"," +
         Quorl::shortestReal(held.z);
}

} // namespace

ZNRX_DEFINE_VALUE_TYPE(ZnGePoint3d, L"ZnGePoint3d", nullptr, coordinatesText<ZnGePoint3d>, nullptr)
ZNRX_DEFINE_VALUE_TYPE(ZnGeVector3d, L"ZnGeVector3d", nullptr, coordinatesText<ZnGeVector3d>, nullptr)
