#pragma once

#include <cstddef>
#include <string_view>

namespace vel::render_details {

/// A token, or literal text.
struct PicturePiece
{
    wchar_t m_cLetter = 0;  ///< of a token; 0 for a literal
    unsigned m_nCount = 0;  ///< how often the token repeats its letter
    std::wstring_view m_sLiteral;
};

/// Takes a date picture apart from left to right. Refers to the picture; a literal may come in several pieces.
class PictureScanner
{
public:
    explicit PictureScanner(std::wstring_view picture) noexcept : m_sRest(picture) {}

    /// False at the end of the picture.
    bool next(PicturePiece& piece) noexcept;

private:
    PicturePiece take(std::size_t length) noexcept;
    bool nextQuoted(PicturePiece& piece) noexcept;
    bool nextQuote(PicturePiece& piece) noexcept;
    PicturePiece nextRun() noexcept;

    std::wstring_view m_sRest;
    bool m_bQuoted = false;
};

/// Whether the picture shows the day of the month.
bool hasDayOfMonth(std::wstring_view picture) noexcept;

constexpr bool isDayOfMonth(const PicturePiece& piece) noexcept
{
    return piece.m_cLetter == L'd' && piece.m_nCount <= 2;
}

}  // namespace vel::render_details
