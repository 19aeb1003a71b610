#include "vel/core/stamp.h"

#include <atomic>

namespace vel {

std::uint64_t newStamp() noexcept
{
    static constinit std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace vel
