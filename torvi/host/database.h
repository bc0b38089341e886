// The host's drawing database, as the module needs it.
#pragma once

#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

#include "quorl/db/arc.h"
#include "quorl/db/block_reference.h"
#include "quorl/db/block_table.h"
#include "quorl/db/circle.h"
#include "quorl/db/color.h"
#include "quorl/db/database.h"
#include "quorl/db/dictionary.h"
#include "quorl/db/dim_style_table.h"
#include "quorl/db/edge_ref.h"
#include "quorl/db/entity.h"
#include "quorl/db/event_reactor.h"
#include "quorl/db/host_services.h"
#include "quorl/db/id_mapping.h"
#include "quorl/db/layer_table.h"
#include "quorl/db/line.h"
#include "quorl/db/linetype_table.h"
#include "quorl/db/open.h"
#include "quorl/db/subent.h"
#include "quorl/db/viewport.h"

static_assert(ZnDb::kVisible == 0 && ZnDb::kInvisible == 1 && ZnDb::kEdgeSubentType == 2);
static_assert(ZnCmTransparency::kByBlock == 1);
