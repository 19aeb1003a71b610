#pragma once

#include <cstddef>
#include <string_view>

#include "vel/core/stringbuffer.h"

namespace vel::render_details {

/// Collects short pieces and appends them to a buffer in blocks: a call a character would cost more than the rendering.
/// What was put is in the buffer after flush().
class TextWriter
{
public:
    explicit TextWriter(StringBufferBase& out) noexcept : m_tOut(out) {}
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    void put(wchar_t character)
    {
        if (m_nUsed == kBlock) {
            flush();
        }
        m_aBlock[m_nUsed++] = character;
    }

    void put(std::wstring_view text)
    {
        if (text.size() > kBlock - m_nUsed) {
            return putLong(text);
        }
        // Mostly one to three characters: a loop is done before a library's copy has begun.
        for (const wchar_t character : text) {
            m_aBlock[m_nUsed++] = character;
        }
    }

    void putDigits(std::string_view digits)
    {
        for (const char digit : digits) {
            put(static_cast<wchar_t>(digit));
        }
    }

    void flush()
    {
        m_tOut.append(std::wstring_view(m_aBlock, m_nUsed));
        m_nUsed = 0;
    }

    /// The buffer, with all that was put.
    StringBufferBase& flushed()
    {
        flush();
        return m_tOut;
    }

private:
    static constexpr std::size_t kBlock = 64;

    // Out of line: putting stays small where it is called, and GCC makes no wrong guesses about short texts there.
    [[gnu::noinline]] void putLong(std::wstring_view text)
    {
        flush();
        m_tOut.append(text);
    }

    StringBufferBase& m_tOut;
    std::size_t m_nUsed = 0;
    wchar_t m_aBlock[kBlock];
};

}  // namespace vel::render_details
