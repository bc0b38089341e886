#include "quorl/file/proxy_entity.h"

ZNRX_DEFINE_CLASS(ZnDbProxyEntity, ZnDbEntity)
