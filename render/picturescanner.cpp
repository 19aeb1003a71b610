#include "picturescanner.h"

#include <algorithm>

namespace vel::render_details {

namespace {

constexpr wchar_t kQuote = L'\'';

/// How long the tokens of a letter are: bit n stands for n letters.
constexpr unsigned lengthsOf(wchar_t letter) noexcept
{
    switch (letter) {
    case L'd':
    case L'M':
        return 0b11110;
    case L'y':
        return 0b10100;
    case L'h':
    case L'H':
    case L'm':
    case L's':
    case L't':
        return 0b00110;
    default:
        return 0;
    }
}

std::size_t runLength(std::wstring_view text) noexcept
{
    std::size_t length = 1;
    while (length < text.size() && text[length] == text[0]) {
        ++length;
    }
    return length;
}

/// Up to the first character that may mean something.
std::size_t plainLength(std::wstring_view text) noexcept
{
    std::size_t length = 0;
    while (length < text.size() && text[length] != kQuote && lengthsOf(text[length]) == 0) {
        ++length;
    }
    return length;
}

}  // namespace

PicturePiece PictureScanner::take(std::size_t length) noexcept
{
    const PicturePiece piece{0, 0, m_sRest.substr(0, length)};
    m_sRest.remove_prefix(length);
    return piece;
}

bool PictureScanner::next(PicturePiece& piece) noexcept
{
    while (!m_sRest.empty()) {
        if (m_bQuoted) {
            if (nextQuoted(piece)) {
                return true;
            }
            continue;
        }
        if (m_sRest.front() == kQuote) {
            if (nextQuote(piece)) {
                return true;
            }
            continue;
        }
        const std::size_t plain = plainLength(m_sRest);
        piece = plain > 0 ? take(plain) : nextRun();
        return true;
    }
    return false;
}

// Text between quotes, up to a quote or the end of the picture.
bool PictureScanner::nextQuoted(PicturePiece& piece) noexcept
{
    const std::size_t length = std::min(m_sRest.find(kQuote), m_sRest.size());
    if (length > 0) {
        piece = take(length);
        return true;
    }
    return nextQuote(piece);
}

// Two quotes are the text of one; one opens or closes.
bool PictureScanner::nextQuote(PicturePiece& piece) noexcept
{
    const bool isDoubled = m_sRest.size() > 1 && m_sRest[1] == kQuote;
    const PicturePiece quote = take(1);
    if (!isDoubled) {
        m_bQuoted = !m_bQuoted;
        return false;
    }
    m_sRest.remove_prefix(1);
    piece = quote;
    return true;
}

PicturePiece PictureScanner::nextRun() noexcept
{
    const wchar_t letter = m_sRest.front();
    const std::size_t length = runLength(m_sRest);
    PicturePiece piece = take(length);
    if (length <= 4 && (lengthsOf(letter) >> length & 1U) != 0) {
        piece = {letter, static_cast<unsigned>(length), {}};
    }
    return piece;
}

bool hasDayOfMonth(std::wstring_view picture) noexcept
{
    PictureScanner scanner(picture);
    PicturePiece piece;
    while (scanner.next(piece)) {
        if (isDayOfMonth(piece)) {
            return true;
        }
    }
    return false;
}

}  // namespace vel::render_details
