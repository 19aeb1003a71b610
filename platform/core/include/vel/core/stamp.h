#pragma once

#include <cstdint>

#include "vel/core/api.h"

namespace vel {

/// A number that no other call in this process returns, never 0: it tells an object, or a state of one, from every
/// other, those that are long gone included, which an address does not. Safe from any thread.
WEBI18N_API std::uint64_t newStamp() noexcept;

}  // namespace vel
