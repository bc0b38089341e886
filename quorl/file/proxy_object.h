// Stands in for an object, other than an entity, whose class is not loaded.
#pragma once

#include "quorl/file/proxy_data.h"

class ZnDbProxyObject : public ZnDbProxyOf<ZnDbObject> {
  ZNRX_DECLARE_MEMBERS(ZnDbProxyObject)
};
