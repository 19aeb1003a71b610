#include "failingallocator.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

using Watch = void (*)();

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::atomic<std::ptrdiff_t> g_outstanding{0};
constinit thread_local std::size_t t_allocations = 0;
constinit thread_local std::size_t t_failFrom = kNever;
constinit thread_local bool t_hasFailed = false;
constinit thread_local Watch t_watch = nullptr;

void* allocate(std::size_t size) noexcept
{
    if (t_watch != nullptr) {
        t_watch();
    }
    const std::size_t number = t_allocations++;
    if (number >= t_failFrom) {
        t_hasFailed = true;
        return nullptr;
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block != nullptr) {
        g_outstanding.fetch_add(1, std::memory_order_relaxed);
    }
    return block;
}

void* allocateOrThrow(std::size_t size)
{
    void* block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* block) noexcept
{
    if (block != nullptr) {
        g_outstanding.fetch_sub(1, std::memory_order_relaxed);
        std::free(block);
    }
}

}  // namespace

// All of them are replaced: a sanitizer brings its own of those that are left.

void* operator new(std::size_t size)
{
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}
void operator delete(void* block) noexcept
{
    release(block);
}
void operator delete[](void* block) noexcept
{
    release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept
{
    release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept
{
    release(block);
}

namespace testsupport {

std::ptrdiff_t outstandingBlocks() noexcept
{
    return g_outstanding.load(std::memory_order_relaxed);
}

FailingAllocations::FailingAllocations(std::size_t nth) noexcept
{
    t_hasFailed = false;
    t_failFrom = t_allocations + nth;
}

FailingAllocations::~FailingAllocations()
{
    t_failFrom = kNever;
}

bool FailingAllocations::hasFailed() const noexcept
{
    return t_hasFailed;
}

AllocationCount::AllocationCount() noexcept : m_nBefore(t_allocations)
{}

std::size_t AllocationCount::value() const noexcept
{
    return t_allocations - m_nBefore;
}

void setAllocationWatch(void (*watch)()) noexcept
{
    t_watch = watch;
}

}  // namespace testsupport
