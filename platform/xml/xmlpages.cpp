#include "xmlpages.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

namespace vel::xml_details {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

std::size_t roundedUp(std::size_t size) noexcept
{
    return (size + kHugePage - 1) & ~(kHugePage - 1);
}

/// Address space that begins on a huge page: mapped with room to choose, the rest given back.
void* mapAligned(std::size_t size) noexcept
{
    const std::size_t mapped = size + kHugePage;
    void* const memory = ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        return nullptr;
    }
    char* const begin = static_cast<char*>(memory);
    const std::size_t before =
        roundedUp(reinterpret_cast<std::uintptr_t>(begin)) - reinterpret_cast<std::uintptr_t>(begin);
    if (before > 0) {
        ::munmap(begin, before);
    }
    if (before < kHugePage) {
        ::munmap(begin + before + size, kHugePage - before);
    }
    return begin + before;
}

}  // namespace

void* allocatePiece(std::size_t nSize) noexcept
{
    if (nSize < kLargePiece) {
        return ::operator new(nSize, std::nothrow);
    }
    // No size that a limit allows comes near it; without this a larger one would wrap around.
    if (nSize > SIZE_MAX / 2) {
        return nullptr;
    }
    void* const memory = mapAligned(roundedUp(nSize));
    if (memory != nullptr) {
        // Advice: small pages do as well.
        ::madvise(memory, roundedUp(nSize), MADV_HUGEPAGE);
    }
    return memory;
}

void releasePiece(void* pMemory, std::size_t nSize) noexcept
{
    if (nSize < kLargePiece) {
        ::operator delete(pMemory);
    } else if (pMemory != nullptr) {
        ::munmap(pMemory, roundedUp(nSize));
    }
}

}  // namespace vel::xml_details
