// Loaded into the command before its own libraries: allocation number $FAILING_ALLOCATION and every later one fail.

#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <limits>

extern "C" {
// The C library's own functions, behind those that are replaced here.
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);       // NOLINT(bugprone-reserved-identifier)
}

namespace {

constexpr std::size_t kUnread = std::numeric_limits<std::size_t>::max();

std::size_t g_failFrom = kUnread;
std::size_t g_allocations = 0;

/// Counts from the moment at which there is an environment to read.
bool mayAllocate()
{
    if (environ == nullptr) {
        return true;
    }
    if (g_failFrom == kUnread) {
        const char* const number = std::getenv("FAILING_ALLOCATION");
        g_failFrom = number == nullptr ? kUnread - 1 : std::strtoul(number, nullptr, 10);
    }
    return g_allocations++ < g_failFrom;
}

}  // namespace

#define REPLACES extern "C" __attribute__((visibility("default")))

REPLACES void* malloc(std::size_t size)
{
    return mayAllocate() ? __libc_malloc(size) : nullptr;
}

REPLACES void* calloc(std::size_t count, std::size_t size)
{
    return mayAllocate() ? __libc_calloc(count, size) : nullptr;
}

REPLACES void* realloc(void* block, std::size_t size)
{
    return mayAllocate() ? __libc_realloc(block, size) : nullptr;
}
