#pragma once

#include <cstddef>

namespace server {

/// What all clients may hold together beyond what each has for its own. One thread.
class MemoryPool
{
public:
    /// Each client has `own` bytes that are not counted, all together `shared` bytes more.
    MemoryPool(std::size_t own, std::size_t shared) noexcept : m_nOwn(own), m_nLeft(shared) {}

private:
    friend class HeldMemory;
    std::size_t m_nOwn;
    std::size_t m_nLeft;
};

/// A client's part of a pool, which must outlive it.
class HeldMemory
{
public:
    explicit HeldMemory(MemoryPool& pool) noexcept : m_rPool(pool) {}
    ~HeldMemory() { hold(0); }
    HeldMemory(const HeldMemory&) = delete;
    HeldMemory& operator=(const HeldMemory&) = delete;

    /// From now on the client holds so many bytes, more or fewer than before. False when the pool does not have them:
    /// then nothing has changed.
    bool hold(std::size_t bytes) noexcept
    {
        const std::size_t wanted = bytes > m_rPool.m_nOwn ? bytes - m_rPool.m_nOwn : 0;
        if (wanted > m_nTaken + m_rPool.m_nLeft) {
            return false;
        }
        m_rPool.m_nLeft += m_nTaken - wanted;
        m_nTaken = wanted;
        return true;
    }
    /// Whether it holds any of what is shared.
    bool hasTaken() const noexcept { return m_nTaken != 0; }

private:
    MemoryPool& m_rPool;
    std::size_t m_nTaken = 0;
};

}  // namespace server
