// Stands in for an entity whose class is not loaded: it has traits and a place in its block, and no shape.
#pragma once

#include "quorl/db/entity/entity.h"
#include "quorl/file/proxy_data.h"

class ZnDbProxyEntity : public ZnDbProxyOf<ZnDbEntity> {
  ZNRX_DECLARE_MEMBERS(ZnDbProxyEntity)
};
