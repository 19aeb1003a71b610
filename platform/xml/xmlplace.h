#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vel::xml_details {

/// A line and a column in characters, both from 1. Lines end with LF, CR LF or CR, as XML has it.
struct XmlPlace
{
    std::uint32_t m_nLine;
    std::uint32_t m_nColumn;
};

/// Bytes that may be read past the end of the text that XmlPlaceCounter walks.
inline constexpr std::size_t kPlaceSlack = 16;
/// The UTF-8 byte-order mark; it is no character of the first line.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The place of a byte offset in UTF-8 text; for errors. Offsets past the end count as the end.
XmlPlace placeOf(std::string_view text, std::size_t offset) noexcept;

/// Gives the places of ascending offsets in one walk over the text, sixteen bytes a step.
class XmlPlaceCounter
{
public:
    /// kPlaceSlack initialised bytes follow the text.
    explicit XmlPlaceCounter(std::string_view text) noexcept;

    /// `offset`: of a character, not below the one asked for before.
    XmlPlace at(std::size_t offset) noexcept
    {
        if (m_nScanned < offset) {
            scanTo(offset);
        }
        return {m_nLine, static_cast<std::uint32_t>(offset - m_nColumnBase) + 1};
    }

private:
    void scanTo(std::size_t offset) noexcept;

    const char* m_pText;
    std::size_t m_nScanned;
    /// Start of the line, plus the bytes in it so far that continue a character.
    std::size_t m_nColumnBase;
    std::uint32_t m_nLine = 1;
};

}  // namespace vel::xml_details
