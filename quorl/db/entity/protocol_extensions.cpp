#include "quorl/db/entity/annotative_pe.h"
#include "quorl/db/entity/get_dependent_viewport_pe.h"
#include "quorl/db/entity/property_filter_pe.h"
#include "quorl/db/entity/torvi_pe.h"

// Protocols without a body of their own: who answers derives from them.
ZNRX_DEFINE_ABSTRACT(ZnDbAnnotativeObjectPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbGetDependentViewportPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbPropertyFilterCustomizationPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbTorviPE, ZnRxObject)
