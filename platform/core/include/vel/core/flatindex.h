#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace vel {

/// Finds values by the hashes of their keys. An open-addressed table with the hash beside the value: a look-up reads
/// one place of memory before it reads any key. It holds no keys itself; who looks one up tells which value has it.
/// Filled by one thread, then only read, from any thread.
///
///     FlatIndex<const Currency*> byTag;
///     byTag.add(hashText(euro->getTag().view()), euro);
///     byTag.find(hashText(tag), [&](const Currency* each) { return each->getTag().view() == tag; })  -> &euro, or null
template <typename Value>
class FlatIndex
{
    static_assert(std::is_trivially_copyable_v<Value>, "values are moved about while the table grows");

public:
    std::size_t size() const noexcept { return m_nUsed; }

    /// The value that was added with this hash and for which `isWanted(value)` holds, or null. Valid until the next
    /// change.
    template <typename IsWanted>
    const Value* find(std::uint32_t hash, IsWanted isWanted) const noexcept
    {
        if (m_vSlots.empty()) {
            return nullptr;
        }
        const std::size_t mask = m_vSlots.size() - 1;
        const std::uint32_t mark = markOf(hash);
        for (std::size_t place = mark & mask; m_vSlots[place].m_nMark != kFree; place = (place + 1) & mask) {
            if (m_vSlots[place].m_nMark == mark && isWanted(m_vSlots[place].m_tValue)) {
                return &m_vSlots[place].m_tValue;
            }
        }
        return nullptr;
    }
    template <typename IsWanted>
    Value* find(std::uint32_t hash, IsWanted isWanted) noexcept
    {
        return const_cast<Value*>(std::as_const(*this).find(hash, isWanted));
    }

    /// Adds a value whose key no other has. When memory runs out, std::bad_alloc; nothing has changed.
    void add(std::uint32_t hash, Value value)
    {
        reserve(m_nUsed + 1);
        put({markOf(hash), value});
        ++m_nUsed;
    }

    /// Makes room for `count` values in all, so that adding them cannot fail.
    void reserve(std::size_t count)
    {
        if (2 * count <= m_vSlots.size()) {
            return;
        }
        FlatIndex larger;
        larger.m_vSlots.resize(std::bit_ceil(std::max(2 * count, kFewestSlots)));
        for (const Slot& each : m_vSlots) {
            if (each.m_nMark != kFree) {
                larger.put(each);
            }
        }
        m_vSlots.swap(larger.m_vSlots);
    }

    /// Empties it and gives the memory back.
    void clear() noexcept { FlatIndex().swap(*this); }

    void swap(FlatIndex& other) noexcept
    {
        m_vSlots.swap(other.m_vSlots);
        std::swap(m_nUsed, other.m_nUsed);
    }

private:
    static constexpr std::uint32_t kFree = 0;
    static constexpr std::size_t kFewestSlots = 16;

    struct Slot
    {
        std::uint32_t m_nMark = kFree;
        Value m_tValue{};
    };

    /// The hash as it stands in a slot.
    static std::uint32_t markOf(std::uint32_t hash) noexcept { return hash == kFree ? 1 : hash; }

    /// Into the first free slot from its place on. Half of the slots are free at least.
    void put(const Slot& slot) noexcept
    {
        const std::size_t mask = m_vSlots.size() - 1;
        std::size_t place = slot.m_nMark & mask;
        while (m_vSlots[place].m_nMark != kFree) {
            place = (place + 1) & mask;
        }
        m_vSlots[place] = slot;
    }

    std::vector<Slot> m_vSlots;  // none, or a power of two
    std::size_t m_nUsed = 0;
};

}  // namespace vel
