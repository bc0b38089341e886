#include "quorl/file/proxy_object.h"

ZNRX_DEFINE_CLASS(ZnDbProxyObject, ZnDbObject)
