#pragma once

#include <cstddef>

namespace vel::nls {

/// A block of memory for the length of one call. Blocks of usual size are kept by the thread for its next call, so that
/// nothing is allocated in the steady state; they are freed with the thread.
class ThreadScratch
{
public:
    /// No block.
    ThreadScratch() = default;
    /// At least `size` bytes, aligned for every type. Throws std::bad_alloc.
    explicit ThreadScratch(std::size_t size);
    ~ThreadScratch();
    ThreadScratch(const ThreadScratch&) = delete;
    ThreadScratch& operator=(const ThreadScratch&) = delete;

    void swap(ThreadScratch& other) noexcept;

    unsigned char* data() const noexcept { return m_pBlock; }
    std::size_t size() const noexcept { return m_nSize; }
    template <typename T>
    T* as() const noexcept
    {
        return reinterpret_cast<T*>(m_pBlock);
    }

private:
    unsigned char* m_pBlock = nullptr;
    std::size_t m_nSize = 0;
};

}  // namespace vel::nls
