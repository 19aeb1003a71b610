#pragma once

#include <cstddef>

namespace testsupport {

/// Programs that link failingallocator.cpp have their operator new and delete replaced by ones that count, can fail and
/// can be watched.

/// Blocks that operator new gave out, on any thread, and that are not deleted yet.
std::ptrdiff_t outstandingBlocks() noexcept;

/// While it lives, the calling thread's allocation number `nth` from here, counted from 0, and every later one throw
/// std::bad_alloc.
class FailingAllocations
{
public:
    explicit FailingAllocations(std::size_t nth) noexcept;
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Whether an allocation has failed.
    bool hasFailed() const noexcept;
};

/// Allocations of the calling thread since the object was made.
class AllocationCount
{
public:
    AllocationCount() noexcept;
    std::size_t value() const noexcept;

private:
    std::size_t m_nBefore;
};

/// Replaces what every operator new of the calling thread calls first; null calls nothing. The watch may not allocate.
void setAllocationWatch(void (*watch)()) noexcept;

}  // namespace testsupport
