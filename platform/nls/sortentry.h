#pragma once

#include <cstdint>

namespace vel::nls {

/// What a table knows of one character, in 64 bits.
///
///      0-31  primary bytes, the first one lowest; for a special character an index
///     32-34  how many
///     35     special: more than these bits can say, see SpecialKind
///     36     mark: see isMark
///     37     care: a mark behind it may belong to it
///     38-40  number of elements
///     41     inner: may stand behind another one in a sequence that is read as one, not as a mark
///     42-43  quaternary weight of the first element, the others having none
///     44-46  kind of a special character
///     47     open: a sequence may go on behind it, with what is inner or, marks between them passed over, with a mark
///     48-55  secondary code of the last element, 0: common
///     56-63  tertiary code of the first element, 0: common
///
/// So one load tells all of a letter with an accent, of a Hangul syllable, of Kana with a voicing mark.
using SortEntry = std::uint64_t;

enum SpecialKind : std::uint8_t
{
    kSlowKind = 0,       ///< ICU reads it, and what stands around it
    kElementsKind = 1,   ///< index of a list of elements
    kStartKind = 2,      ///< what follows may belong to it: index of an opening
    kPrefixKind = 3,     ///< what stands before it may change it: index of an opening
    kSurrogateKind = 4,  ///< half of a character
    kHangulKind = 5,     ///< number of the syllable, read as its two or three letters
    kVariableKind = 6    ///< one shifted element: index of a list of elements
};

namespace entry {

constexpr SortEntry kLength = SortEntry{7} << 32;
constexpr SortEntry kSpecial = SortEntry{1} << 35;
constexpr SortEntry kMark = SortEntry{1} << 36;
constexpr SortEntry kCare = SortEntry{1} << 37;
constexpr SortEntry kElements = SortEntry{7} << 38;
constexpr SortEntry kInner = SortEntry{1} << 41;
constexpr SortEntry kQuaternary = SortEntry{3} << 42;
constexpr SortEntry kOpen = SortEntry{1} << 47;
constexpr SortEntry kSecondary = SortEntry{0xFF} << 48;
constexpr SortEntry kTertiary = SortEntry{0xFF} << 56;
constexpr unsigned kMostElements = 7;

constexpr std::uint32_t primaryBytes(SortEntry e) noexcept
{
    return static_cast<std::uint32_t>(e);
}
constexpr std::uint32_t index(SortEntry e) noexcept
{
    return static_cast<std::uint32_t>(e);
}
constexpr unsigned primaryLength(SortEntry e) noexcept
{
    return static_cast<unsigned>(e >> 32) & 7U;
}
constexpr unsigned elements(SortEntry e) noexcept
{
    return static_cast<unsigned>(e >> 38) & 7U;
}
constexpr unsigned quaternary(SortEntry e) noexcept
{
    return static_cast<unsigned>(e >> 42) & 3U;
}
constexpr SpecialKind kind(SortEntry e) noexcept
{
    return static_cast<SpecialKind>((e >> 44) & 7U);
}
constexpr bool isKind(SortEntry e, SpecialKind kind) noexcept
{
    return (e & kSpecial) != 0 && entry::kind(e) == kind;
}
constexpr unsigned char secondary(SortEntry e) noexcept
{
    return static_cast<unsigned char>(e >> 48);
}
constexpr unsigned char tertiary(SortEntry e) noexcept
{
    return static_cast<unsigned char>(e >> 56);
}
constexpr bool isPlain(SortEntry e) noexcept
{
    return (e & (kSpecial | kMark)) == 0;
}
/// Whether the second of two characters may be read together with the first, or change places with it. Two of which
/// this is not so part the text: nothing before that place changes what follows, nor the other way round.
constexpr bool mayJoin(SortEntry first, SortEntry second) noexcept
{
    return ((second & kMark) != 0 && (first & (kCare | kMark | kSpecial | kOpen)) != 0) ||
           ((second & kInner) != 0 && (first & kOpen) != 0);
}
constexpr SortEntry special(SpecialKind kind, std::uint32_t index = 0) noexcept
{
    return kSpecial | (SortEntry{kind} << 44) | index;
}

}  // namespace entry

}  // namespace vel::nls
