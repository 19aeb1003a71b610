#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "threadscratch.h"

namespace vel::nls {

/// Bytes of one level of a key, first in a block of the caller's, then in scratch memory.
class KeyBytes
{
public:
    KeyBytes(unsigned char* block, std::size_t size) noexcept : m_pBegin(block), m_pEnd(block), m_pLimit(block + size)
    {}
    KeyBytes(const KeyBytes&) = delete;
    KeyBytes& operator=(const KeyBytes&) = delete;

    const unsigned char* data() const noexcept { return m_pBegin; }
    std::size_t size() const noexcept { return static_cast<std::size_t>(m_pEnd - m_pBegin); }
    std::size_t room() const noexcept { return static_cast<std::size_t>(m_pLimit - m_pEnd); }
    unsigned char* end() const noexcept { return m_pEnd; }
    void shrink(std::size_t size) noexcept { m_pEnd = m_pBegin + size; }
    void setEnd(unsigned char* end) noexcept { m_pEnd = end; }

    /// Makes room for `count` bytes more. Throws std::bad_alloc.
    void reserve(std::size_t count)
    {
        if (room() < count) {
            grow(count);
        }
    }
    // Need room.
    void put(unsigned char byte) noexcept { *m_pEnd++ = byte; }
    void put(const unsigned char* bytes, std::size_t count) noexcept
    {
        std::memcpy(m_pEnd, bytes, count);
        m_pEnd += count;
    }

private:
    [[gnu::noinline]] void grow(std::size_t count)
    {
        const std::size_t used = size();
        ThreadScratch larger(std::max(2 * used, used + count));
        if (used != 0) {
            std::memcpy(larger.data(), m_pBegin, used);
        }
        m_tScratch.swap(larger);
        m_pBegin = m_tScratch.data();
        m_pEnd = m_pBegin + used;
        m_pLimit = m_pBegin + m_tScratch.size();
    }

    unsigned char* m_pBegin;
    unsigned char* m_pEnd;
    unsigned char* m_pLimit;
    ThreadScratch m_tScratch;
};

}  // namespace vel::nls
