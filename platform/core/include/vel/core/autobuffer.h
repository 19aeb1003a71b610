#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace vel {

/// A buffer of plain values whose first block of `nInline` elements lies in the object. Growing keeps the contents;
/// new elements are not initialised. Not copyable; not for use by two threads at once.
template <typename T, std::size_t nInline>
class AutoBuffer
{
    static_assert(std::is_trivially_copyable_v<T> && nInline > 0);

public:
    AutoBuffer() noexcept = default;
    AutoBuffer(const AutoBuffer&) = delete;
    AutoBuffer& operator=(const AutoBuffer&) = delete;

    T* data() noexcept { return m_pData; }
    const T* data() const noexcept { return m_pData; }
    std::size_t capacity() const noexcept { return m_nCapacity; }
    /// `index` below capacity().
    T& operator[](std::size_t index) noexcept { return m_pData[index]; }
    const T& operator[](std::size_t index) const noexcept { return m_pData[index]; }

    /// Makes room for `count` elements in all; never shrinks. When memory runs out, std::bad_alloc; nothing has
    /// changed.
    void ensureCapacity(std::size_t count)
    {
        if (count <= m_nCapacity) {
            return;
        }
        std::unique_ptr<T[]> block(new T[count]);
        std::copy_n(m_pData, m_nCapacity, block.get());
        m_pHeap = std::move(block);
        m_pData = m_pHeap.get();
        m_nCapacity = count;
    }

private:
    T m_aInline[nInline];
    std::unique_ptr<T[]> m_pHeap;
    T* m_pData = m_aInline;
    std::size_t m_nCapacity = nInline;
};

}  // namespace vel
