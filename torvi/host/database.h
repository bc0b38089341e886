// The host's drawing database, as the module needs it.
#pragma once

#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

#include "quorl/db/core/color.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/open.h"
#include "quorl/db/core/working_globals.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/dimension.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/subent.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

static_assert(ZnDb::kVisible == 0 && ZnDb::kInvisible == 1 && ZnDb::kEdgeSubentType == 2);
static_assert(ZnCmTransparency::kByBlock == 1);
