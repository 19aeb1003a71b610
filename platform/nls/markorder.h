#pragma once

#include <cstddef>
#include <cstdint>

#include "keybytes.h"

namespace vel::nls {

/// Marks behind each other, and their canonical order: by combining class, those of one class as they came. Any number
/// of them takes time in proportion to that number.
class MarkOrder
{
public:
    struct Mark
    {
        char32_t m_cCode;
        std::uint32_t m_nClass;
    };

    /// Throws std::bad_alloc.
    void add(char32_t c, unsigned combiningClass)
    {
        const Mark mark{c, combiningClass};
        m_bInOrder = m_bInOrder && (m_tMarks.size() == 0 || last().m_nClass <= combiningClass);
        m_tMarks.reserve(sizeof mark);
        m_tMarks.put(reinterpret_cast<const unsigned char*>(&mark), sizeof mark);
    }
    bool isEmpty() const noexcept { return m_tMarks.size() == 0; }
    std::size_t size() const noexcept { return m_tMarks.size() / sizeof(Mark); }
    /// Brings them into order. Throws std::bad_alloc; they are as they were then.
    void order();
    const Mark* begin() const noexcept { return reinterpret_cast<const Mark*>(m_tMarks.data()); }
    const Mark* end() const noexcept { return begin() + size(); }
    void clear() noexcept
    {
        m_tMarks.shrink(0);
        m_bInOrder = true;
    }

private:
    const Mark& last() const noexcept { return *(end() - 1); }
    Mark* marks() noexcept { return const_cast<Mark*>(begin()); }
    void orderByCounting();

    KeyBytes m_tMarks{nullptr, 0};
    bool m_bInOrder = true;
};

}  // namespace vel::nls
