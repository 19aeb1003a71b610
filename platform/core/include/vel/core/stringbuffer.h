#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "vel/core/assertion.h"
#include "vel/core/exception.h"
#include "vel/core/string.h"

namespace vel {

/// A growable character buffer that the query operations append to. The base knows no inline capacity, so an operation
/// takes any buffer; declare a StringBufferTemplate to own one.
///
/// Growth: when an append needs more than the capacity, the new capacity is the smallest 2^k - 1 with k >= 6
/// (63, 127, 255, ...) that holds the new length. A length of 2^31 or more is reported as "nSize < (1ULL << 31)" and
/// then thrown as an Exception; the contents stay. Not for use by two threads at once.
template <typename Char>
class StringBufferBaseTemplate
{
public:
    using View = std::basic_string_view<Char>;

    StringBufferBaseTemplate(const StringBufferBaseTemplate&) = delete;
    StringBufferBaseTemplate& operator=(const StringBufferBaseTemplate&) = delete;

    std::size_t length() const noexcept { return m_nLength; }
    std::size_t capacity() const noexcept { return m_nCapacity; }
    bool isEmpty() const noexcept { return m_nLength == 0; }
    const Char* data() const noexcept { return m_pData; }
    View view() const noexcept { return View(m_pData, m_nLength); }
    operator View() const noexcept { return view(); }
    StringTemplate<Char> toString() const { return StringTemplate<Char>(view()); }
    /// Empties; the capacity stays.
    void clear() noexcept { m_nLength = 0; }

    /// Appends; `text` may lie in this buffer.
    void append(View text)
    {
        if (text.empty()) {
            return;
        }
        if (text.size() > m_nCapacity - m_nLength) {
            growAndAppend(text);
            return;
        }
        std::copy_n(text.data(), text.size(), m_pData + m_nLength);
        m_nLength += text.size();
    }
    void append(Char character) { append(View(&character, 1)); }

    /// Makes room for `nSize` characters in all.
    void reserve(std::size_t nSize)
    {
        if (nSize > m_nCapacity) {
            adopt(allocateFor(nSize), capacityFor(nSize));
        }
    }

protected:
    StringBufferBaseTemplate(Char* inlineBlock, std::size_t inlineCapacity) noexcept
        : m_pData(inlineBlock), m_nCapacity(inlineCapacity)
    {}
    ~StringBufferBaseTemplate() = default;

private:
    static std::size_t capacityFor(std::size_t nSize) noexcept
    {
        std::size_t capacity = 63;
        while (capacity < nSize) {
            capacity = capacity * 2 + 1;
        }
        return capacity;
    }

    static std::unique_ptr<Char[]> allocateFor(std::size_t nSize)
    {
        VEL_ASSERT(nSize < (1ULL << 31));
        if (nSize >= (1ULL << 31)) {
            throw Exception(Message::text(L"A string buffer cannot hold 2^31 characters."));
        }
        return std::unique_ptr<Char[]>(new Char[capacityFor(nSize)]);
    }

    void adopt(std::unique_ptr<Char[]> block, std::size_t capacity) noexcept
    {
        std::copy_n(m_pData, m_nLength, block.get());
        m_pHeap = std::move(block);
        m_pData = m_pHeap.get();
        m_nCapacity = capacity;
    }

    // Out of line: appending stays small where it is called, and GCC makes no wrong guesses about literals there.
    [[gnu::noinline]] void growAndAppend(View text)
    {
        // A text longer than the limit would overflow the sum.
        const std::size_t nSize = text.size() < (1ULL << 31) ? m_nLength + text.size() : text.size();
        std::unique_ptr<Char[]> block = allocateFor(nSize);
        std::copy_n(text.data(), text.size(), block.get() + m_nLength);
        adopt(std::move(block), capacityFor(nSize));
        m_nLength = nSize;
    }

    Char* m_pData;
    std::size_t m_nLength = 0;
    std::size_t m_nCapacity;
    std::unique_ptr<Char[]> m_pHeap;
};

/// A buffer whose first `nInlineCapacity` characters need no allocation.
template <typename Char, std::size_t nInlineCapacity>
class StringBufferTemplate : public StringBufferBaseTemplate<Char>
{
public:
    // The block is left uninitialised on purpose: most queries fill a few characters of it.
    StringBufferTemplate() noexcept : StringBufferBaseTemplate<Char>(m_aInline, nInlineCapacity) {}

private:
    Char m_aInline[nInlineCapacity];
};

using StringBufferBase = StringBufferBaseTemplate<wchar_t>;
template <std::size_t nInlineCapacity>
using StringBuffer = StringBufferTemplate<wchar_t, nInlineCapacity>;

}  // namespace vel
