#pragma once

#include <cstddef>

namespace vel::nls {

/// The bytes of code points in the identical level: in their order, and short where texts are long.
///
/// Codes are prefix-free and hold no zero. U+FFFE, which is lower than all others there, is 01. Then come, from 02 on,
/// ranges of characters with one to four bytes each: one for printable ASCII, two for the letters of most languages.
///
/// A decomposed Hangul syllable takes two bytes, and so does Kana with its voicing mark: what follows the first letter
/// is part of its code. Of each such letter there is one code where something lower follows, or the text ends, one for
/// each letter or mark that joins it, and one where something higher follows; so the order stays that of code points.
///
///     U+FFFE -> 01      space -> 03      "a" -> 44      U+00E4 -> (a and its mark)
///
/// One object writes one level.
class IdenticalCodes
{
public:
    /// The most bytes that put() adds. It may also change the two before them.
    static constexpr std::size_t kMostBytes = 4;

    /// Writes the next code point of the decomposed text at `out`, the end of what was written; returns the new end.
    unsigned char* put(char32_t c, unsigned char* out) noexcept
    {
        if (m_eFollower != kNone && joins(c, out)) {
            return out;
        }
        if (c - kFirstAscii <= kLastAscii - kFirstAscii) {
            *out = static_cast<unsigned char>(c - kFirstAscii + kAsciiLead);
            return out + 1;
        }
        return putOther(c, out);
    }
    /// The same for the letters of a Hangul syllable.
    unsigned char* putSyllable(char32_t syllable, unsigned char* out) noexcept;

private:
    static constexpr char32_t kFirstAscii = 0x20;
    static constexpr char32_t kLastAscii = 0x7E;
    static constexpr unsigned char kAsciiLead = 0x03;

    /// What may become part of the code that was written last.
    enum Follower : unsigned char
    {
        kNone,
        kVowel,
        kLastLetter,
        kVoicing
    };

    bool joins(char32_t c, unsigned char* out) noexcept;
    unsigned char* putOther(char32_t c, unsigned char* out) noexcept;
    unsigned char* putOpen(unsigned lead, unsigned number, Follower follower, unsigned char* out) noexcept;

    Follower m_eFollower = kNone;
    unsigned m_nLead = 0;    ///< the first byte of its range
    unsigned m_nNumber = 0;  ///< its number there
};

}  // namespace vel::nls
