#pragma once

#include "vel/nls/nlsservice.h"

namespace vel::nls {

/// Puts another service in place of the linked one, for the environments that are made from now on; null puts the
/// linked one back. `service` must outlive them. Called while no environment exists.
void replaceLinkedService(const EntryPoints* service) noexcept;

}  // namespace vel::nls
