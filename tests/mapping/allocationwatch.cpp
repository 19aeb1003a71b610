#include "allocationwatch.h"

#include <cstdlib>
#include <new>

namespace {

using Watch = void (*)();
constinit thread_local Watch t_watch = nullptr;

}  // namespace

void testsupport::setAllocationWatch(void (*watch)()) noexcept
{
    t_watch = watch;
}

void* operator new(std::size_t size)
{
    if (t_watch != nullptr) {
        t_watch();
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
