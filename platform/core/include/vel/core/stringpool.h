#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "vel/core/assertion.h"
#include "vel/core/refstring.h"

namespace vel {

/// Keeps many texts in few blocks. A text is written in place: ask for room, fill it, commit what was used. Texts stay
/// where they are until the pool is destroyed or cleared.
///
/// Not copyable; not for use by two threads at once. When memory runs out, std::bad_alloc; the committed texts stay.
///
///     char* room = pool.getAppendBuffer(5);      // at least 5, appendBufferCapacity() says how much
///     std::copy_n("abc", 3, room);
///     pool.commitAppendBuffer(3);
///     pool.lastString()                          -> "abc"
template <typename Char>
class StringPoolTemplate
{
public:
    static constexpr std::size_t kBlockSize = 16384;

    /// `blockSize`: the least number of characters that are allocated at once. With 0 every request is granted exactly.
    explicit StringPoolTemplate(std::size_t blockSize = kBlockSize) noexcept : m_nBlockSize(blockSize) {}
    StringPoolTemplate(const StringPoolTemplate&) = delete;
    StringPoolTemplate& operator=(const StringPoolTemplate&) = delete;

    /// Room for at least `requested` characters, which are not initialised. Whatever was written to an earlier append
    /// buffer and not committed is given up.
    Char* getAppendBuffer(std::size_t requested)
    {
        if (requested > m_nCapacity - m_nUsed || m_pBlock == nullptr) {
            addBlock(std::max(requested, m_nBlockSize));
        }
        return m_pBlock + m_nUsed;
    }
    /// How many characters the append buffer takes: at least what was requested.
    std::size_t appendBufferCapacity() const noexcept { return m_nCapacity - m_nUsed; }
    /// Keeps the first `length` characters of the append buffer as a text. More than its capacity is reported as
    /// "nLength <= appendBufferCapacity()" and cut to it.
    void commitAppendBuffer(std::size_t nLength)
    {
        VEL_ASSERT(nLength <= appendBufferCapacity());
        const std::size_t taken = std::min(nLength, appendBufferCapacity());
        m_tLast = RefStringTemplate<Char>(m_pBlock + m_nUsed, taken);
        m_nUsed += taken;
    }
    /// The text committed last; empty before the first.
    RefStringTemplate<Char> lastString() const noexcept { return m_tLast; }

    /// Gives up all texts and all memory but one block.
    void clear() noexcept
    {
        if (m_tBlocks.size() > 1) {
            m_tBlocks.erase(m_tBlocks.begin(), m_tBlocks.end() - 1);
        }
        m_nUsed = 0;
        m_tLast = {};
    }

private:
    void addBlock(std::size_t size)
    {
        std::unique_ptr<Char[]> block(new Char[size]);
        if (m_nUsed == 0 && !m_tBlocks.empty()) {
            // Nothing was committed in the block at hand: it would be lost.
            m_tBlocks.back() = std::move(block);
        } else {
            m_tBlocks.push_back(std::move(block));
        }
        m_pBlock = m_tBlocks.back().get();
        m_nCapacity = size;
        m_nUsed = 0;
    }

    std::size_t m_nBlockSize;
    std::vector<std::unique_ptr<Char[]>> m_tBlocks;
    Char* m_pBlock = nullptr;     // the last one; null before the first
    std::size_t m_nCapacity = 0;  // of the last block
    std::size_t m_nUsed = 0;      // in the last block
    RefStringTemplate<Char> m_tLast;
};

using StringPool = StringPoolTemplate<wchar_t>;
using NarrowStringPool = StringPoolTemplate<char>;
using RefString = RefStringTemplate<wchar_t>;
using NarrowRefString = RefStringTemplate<char>;

}  // namespace vel
