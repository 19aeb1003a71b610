#pragma once

#include <atomic>
#include <cstddef>

namespace cli {

/// Bytes that a round of sorting may still use, shared by the threads that fill it.
class MemoryBudget
{
public:
    explicit MemoryBudget(std::size_t bytes) noexcept : m_nMost(bytes) {}

    /// Counts what was used; false when that is more than there was.
    bool take(std::size_t bytes) noexcept
    {
        return m_nTaken.fetch_add(bytes, std::memory_order_relaxed) + bytes <= m_nMost;
    }

private:
    const std::size_t m_nMost;
    std::atomic<std::size_t> m_nTaken{0};
};

}  // namespace cli
