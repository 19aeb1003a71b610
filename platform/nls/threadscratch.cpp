#include "threadscratch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vel::nls {

namespace {

constexpr std::size_t kLeast = std::size_t{16} * 1024;
constexpr std::size_t kMostKept = std::size_t{256} * 1024;

struct Block
{
    unsigned char* m_pData = nullptr;
    std::size_t m_nSize = 0;
};

/// The free blocks of one thread.
class FreeBlocks
{
public:
    FreeBlocks() = default;
    ~FreeBlocks()
    {
        for (const Block& block : m_aBlocks) {
            ::operator delete(block.m_pData);
        }
    }
    FreeBlocks(const FreeBlocks&) = delete;
    FreeBlocks& operator=(const FreeBlocks&) = delete;

    /// A kept block of at least `size` bytes, or none.
    Block take(std::size_t size) noexcept
    {
        for (Block& block : m_aBlocks) {
            if (block.m_nSize >= size) {
                return std::exchange(block, Block());
            }
        }
        return {};
    }
    /// Keeps the block in place of the smallest, and frees the one that is too many.
    void give(Block block) noexcept
    {
        if (block.m_nSize <= kMostKept) {
            Block& smallest =
                *std::min_element(m_aBlocks.begin(), m_aBlocks.end(),
                                  [](const Block& left, const Block& right) { return left.m_nSize < right.m_nSize; });
            if (smallest.m_nSize < block.m_nSize) {
                std::swap(smallest, block);
            }
        }
        ::operator delete(block.m_pData);
    }

private:
    std::array<Block, 12> m_aBlocks;
};

// There from a thread's beginning, as the log's: see logger.cpp.
[[gnu::tls_model("initial-exec")]] thread_local FreeBlocks t_blocks;

Block takeOrAllocate(std::size_t size)
{
    Block block = t_blocks.take(size);
    if (block.m_pData == nullptr) {
        // Grown by doubling, so that texts of growing length soon find a block.
        std::size_t rounded = kLeast;
        while (rounded < size && rounded <= kMostKept) {
            rounded *= 2;
        }
        block.m_nSize = std::max(rounded, size);
        block.m_pData = static_cast<unsigned char*>(::operator new(block.m_nSize));
    }
    return block;
}

}  // namespace

ThreadScratch::ThreadScratch(std::size_t size)
{
    const Block block = takeOrAllocate(size);
    m_pBlock = block.m_pData;
    m_nSize = block.m_nSize;
}

ThreadScratch::~ThreadScratch()
{
    if (m_pBlock != nullptr) {
        t_blocks.give({m_pBlock, m_nSize});
    }
}

void ThreadScratch::swap(ThreadScratch& other) noexcept
{
    std::swap(m_pBlock, other.m_pBlock);
    std::swap(m_nSize, other.m_nSize);
}

}  // namespace vel::nls
