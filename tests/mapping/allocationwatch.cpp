#include "allocationwatch.h"

#include <cstdlib>
#include <new>

namespace {

using Watch = void (*)();
constinit thread_local Watch t_watch = nullptr;

void* allocate(std::size_t size) noexcept
{
    if (t_watch != nullptr) {
        t_watch();
    }
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size)
{
    void* block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

}  // namespace

void testsupport::setAllocationWatch(void (*watch)()) noexcept
{
    t_watch = watch;
}

// All of them: a sanitizer brings its own of those that are left.

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
    std::free(block);
}
void operator delete[](void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept
{
    std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept
{
    std::free(block);
}
