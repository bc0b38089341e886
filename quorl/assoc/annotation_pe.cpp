#include "quorl/assoc/annotation_pe.h"

ZNRX_DEFINE_ABSTRACT(ZnDbAssocAnnotationPE, ZnRxObject)
