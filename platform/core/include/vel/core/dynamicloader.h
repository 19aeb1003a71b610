#pragma once

#include "vel/core/api.h"
#include "vel/core/eonerror.h"

namespace vel {

/// Unloads a module that the system's dynamic loader loaded; `module` is what it returned then. True on success. A
/// failure is an Exception that says why, or with kOnErrorReturn false. Any thread.
WEBI18N_API bool unloadModule(void* module, EOnError onError);

}  // namespace vel
