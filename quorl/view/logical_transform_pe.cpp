#include "quorl/view/logical_transform_pe.h"

ZNRX_DEFINE_ABSTRACT(ZnDbLogicalTransformPE, ZnRxObject)
