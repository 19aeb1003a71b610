#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "codec.h"
#include "vel/transcoding/transcodingresult.h"

namespace vel::transcoding_details {

/// The bytes in place of a character that a codec stopped at. Not copyable: they may stand in the object.
class Replacement
{
public:
    /// `policy` is not kUnencodableError.
    Replacement(const Replacements& replacements, std::uint32_t code, EUnencodable policy) noexcept
    {
        if (!isScalarValue(code)) {
            m_sBytes = replacements.m_sIllFormed;
        } else if (policy == kUnencodableReference && replacements.m_bReference) {
            writeReference(replacements.m_aReference, code);
        } else {
            m_sBytes = replacements.m_sSubstitute;
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    std::string_view bytes() const noexcept { return m_sBytes; }

private:
    /// "&#1114111;" is the longest. From the back: the digits' number is known only then.
    void writeReference(const char* characters, std::uint32_t code) noexcept
    {
        char* first = m_aReference + sizeof m_aReference;
        *--first = characters[12];
        do {
            *--first = characters[code % 10];
            code /= 10;
        } while (code > 0);
        *--first = characters[11];
        *--first = characters[10];
        m_sBytes = {first, static_cast<std::size_t>(m_aReference + sizeof m_aReference - first)};
    }

    char m_aReference[10];
    std::string_view m_sBytes;
};

/// Writes the bytes at `out` and moves it behind them; false when there is no room for all.
inline bool appendTo(char*& out, const char* outEnd, std::string_view bytes) noexcept
{
    if (static_cast<std::size_t>(outEnd - out) < bytes.size()) {
        return false;
    }
    if (!bytes.empty()) {
        std::memcpy(out, bytes.data(), bytes.size());
        out += bytes.size();
    }
    return true;
}

}  // namespace vel::transcoding_details
