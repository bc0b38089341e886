#include "quorl/db/annotative_pe.h"
#include "quorl/db/get_dependent_viewport_pe.h"
#include "quorl/db/property_filter_pe.h"
#include "quorl/db/torvi_pe.h"

// Protocols without a body of their own: who answers derives from them.
ZNRX_DEFINE_ABSTRACT(ZnDbAnnotativeObjectPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbGetDependentViewportPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbPropertyFilterCustomizationPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbTorviPE, ZnRxObject)
