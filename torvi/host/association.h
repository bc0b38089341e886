// The host's associative framework and drawing views, as the module needs them.
#pragma once

#include "torvi/host/database.h"

#include "quorl/assoc/action.h"
#include "quorl/assoc/action_body.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/dependency_pe.h"
#include "quorl/assoc/diametric_dim_action_body.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/edge_action_param.h"
#include "quorl/assoc/eval_variant.h"
#include "quorl/assoc/evaluation_callback.h"
#include "quorl/assoc/evaluation_pointer.h"
#include "quorl/assoc/manager.h"
#include "quorl/assoc/network.h"
#include "quorl/assoc/pers_subent_id_pe.h"
#include "quorl/assoc/radial_dim_action_body.h"
#include "quorl/assoc/vertex_action_param.h"
#include "quorl/view/brevix_util.h"
#include "quorl/view/dim_util.h"
#include "quorl/view/logical_transform_pe.h"
#include "quorl/view/point_ref.h"
#include "quorl/view/share_db.h"

static_assert(kIsUpToDateAssocStatus == 0 && kChangedDirectlyAssocStatus == 1 &&
              kFailedToEvaluateAssocStatus == 4 && kErasedAssocStatus == 5 && kSuppressedAssocStatus == 6);
