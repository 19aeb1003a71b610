#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace vel {

/// A buffer of plain values that grows: what operations take that fill a buffer of any inline capacity. Declare an
/// AutoBuffer to own one. Growing keeps the contents; new elements are not initialised. Not copyable; not for use by
/// two threads at once.
template <typename T>
class AutoBufferBase
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    AutoBufferBase(const AutoBufferBase&) = delete;
    AutoBufferBase& operator=(const AutoBufferBase&) = delete;

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

protected:
    AutoBufferBase(T* inlineBlock, std::size_t inlineCapacity) noexcept
        : m_pData(inlineBlock), m_nCapacity(inlineCapacity)
    {}
    ~AutoBufferBase() = default;

private:
    std::unique_ptr<T[]> m_pHeap;
    T* m_pData;
    std::size_t m_nCapacity;
};

/// A buffer whose first block of `nInline` elements lies in the object.
template <typename T, std::size_t nInline>
class AutoBuffer : public AutoBufferBase<T>
{
    static_assert(nInline > 0);

public:
    // The block is left uninitialised on purpose: who asks for a buffer fills it.
    AutoBuffer() noexcept : AutoBufferBase<T>(m_aInline, nInline) {}

private:
    T m_aInline[nInline];
};

}  // namespace vel
