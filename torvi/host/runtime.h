// The host's run-time classes, registry, services, variables and texts, as the module needs them.
#pragma once

#include "quorl/base/array.h"
#include "quorl/base/error_status.h"
#include "quorl/base/resource.h"
#include "quorl/base/string.h"
#include "quorl/rx/class_members.h"
#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/host_globals.h"
#include "quorl/rx/overrule.h"
#include "quorl/rx/print.h"
#include "quorl/rx/query_overrule.h"
#include "quorl/rx/real_format.h"
#include "quorl/rx/registry.h"
#include "quorl/rx/res_buf.h"
#include "quorl/rx/services.h"
#include "quorl/rx/variable.h"
#include "quorl/rx/variable_reactor.h"
#include "quorl/rx/variables_dictionary.h"

// The statuses whose numbers callers of the module know.
static_assert(Quorl::eOk == 0 && Quorl::eNotProvided == 1 && Quorl::eNothingToDo == 2 &&
              Quorl::eInvalidInput == 3);
static_assert(Quorl::eNullObjectPointer == 15 && Quorl::eLinetypeNotLoaded == 22 &&
              Quorl::eWrongWrapperKind == 34);
static_assert(Quorl::eNotOpenedYet == 44 && Quorl::eHeldForReadOnly == 45 && Quorl::eWrongObjectClass == 46);
static_assert(Quorl::eUnexpectedGroupCode == 50 && Quorl::eNoDatabase == 124 && Quorl::eNewerVersion == 301);
static_assert(Quorl::eNoInputEdges == 335 && Quorl::eInvalidLinetypeId == 600);
