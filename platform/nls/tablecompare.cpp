#include <emmintrin.h>

#include <algorithm>

#include "comparison.h"
#include "tableengine.h"

// Comparison without keys, in three steps: the first difference decides mostly; then texts that differ in characters
// read by themselves; then what is read together with its neighbours. Keys decide the rest.

namespace vel::nls {

namespace {

// ---------------------------------------------------------------------------------------------------- first difference

/// A bit for each byte in which four characters differ, from the first one on.
unsigned differencesOfFour(const wchar_t* a, const wchar_t* b) noexcept
{
    const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
    const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
    return ~static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi32(left, right))) & 0xFFFFU;
}

/// Of `count` characters, four to eight, the first that differ from `i` on, or `count`.
std::size_t equalOfEight(const wchar_t* a, const wchar_t* b, std::size_t i = 0, std::size_t count = 8) noexcept
{
    const std::size_t last = count - 4;
    const std::uint64_t differences =
        differencesOfFour(a, b) | (std::uint64_t{differencesOfFour(a + last, b + last)} << (4 * last));
    const std::uint64_t stop = std::uint64_t{1} << (4 * count);
    const std::uint64_t before = (std::uint64_t{1} << (4 * i)) - 1;
    return static_cast<std::size_t>(__builtin_ctzll((differences & ~before) | stop)) / sizeof(wchar_t);
}

/// Where the texts differ from `i` on, or `end`. The last characters are read together with some before them, which
/// saves a loop whose end is hard to foresee.
inline std::size_t equalUpTo(const wchar_t* a, const wchar_t* b, std::size_t i, std::size_t end) noexcept
{
    for (; end - i >= 8; i += 8) {
        const std::size_t equal = equalOfEight(a + i, b + i);
        if (equal != 8) {
            return i + equal;
        }
    }
    if (end >= 8) {
        const std::size_t begin = end - 8;
        return begin + equalOfEight(a + begin, b + begin, i - begin);
    }
    if (end >= 4) {
        return equalOfEight(a, b, i, end);
    }
    while (i < end && a[i] == b[i]) {
        ++i;
    }
    return i;
}

/// Which of two characters that are read by themselves is the lower one by its primary weights: -1 or 1; 0 when they
/// are equal, or what follows decides.
inline int orderOfPrimaries(SortEntry left, SortEntry right) noexcept
{
    const unsigned shared = std::min(entry::primaryLength(left), entry::primaryLength(right));
    const std::uint64_t mask = (std::uint64_t{1} << (8 * shared)) - 1;
    if (((left ^ right) & mask) == 0) {
        return 0;
    }
    return __builtin_bswap32(entry::primaryBytes(left)) < __builtin_bswap32(entry::primaryBytes(right)) ? -1 : 1;
}

/// No character below takes part in a sequence behind another one as a mark.
constexpr char32_t kFirstMark = 0x300;

/// Whether what stands at `i`, if anything does, may be read together with `e`, which stands before it.
inline bool mayJoinNext(const SortPages& pages, SortEntry e, WideText text, std::size_t i) noexcept
{
    if (i >= text.size() || ((e & entry::kOpen) == 0 && text[i] < kFirstMark)) {
        return false;
    }
    return text.isOdd(text[i]) || entry::mayJoin(e, pages.find(text[i]));
}

/// Whether the plain character at `i` is read by itself.
inline bool isByItself(const SortPages& pages, SortEntry e, WideText text, std::size_t i) noexcept
{
    if ((e & entry::kInner) != 0 && i > 0 && entry::mayJoin(text.entryAt(pages, i - 1), e)) {
        return false;
    }
    return (e & (entry::kCare | entry::kOpen)) == 0 || !mayJoinNext(pages, e, text, i + 1);
}

/// The order by the characters at `i`, the first that differ, where nothing beside them counts; otherwise 0.
inline int orderOfFirst(const SortPages& pages, WideText a, WideText b, std::size_t i) noexcept
{
    const SortEntry left = a.entryAt(pages, i);
    const SortEntry right = b.entryAt(pages, i);
    constexpr SortEntry kBeside = entry::kCare | entry::kInner | entry::kOpen;
    if (!entry::isPlain(left | right) ||
        (((left | right) & kBeside) != 0 && !(isByItself(pages, left, a, i) && isByItself(pages, right, b, i)))) {
        return 0;
    }
    return orderOfPrimaries(left, right);
}

// ------------------------------------------------------------------------------------------------------------ in step

/// Whether the special character at `i` is read without what stands before it, or behind nothing but what is equal in
/// both texts.
bool beginsAt(const SortPages& pages, SortEntry e, WideText text, std::size_t i) noexcept
{
    if ((e & entry::kInner) == 0 || i == 0) {
        return true;
    }
    const SortEntry before = text.entryAt(pages, i - 1);
    return !entry::mayJoin(before, e) ||
           (entry::isKind(e, kPrefixKind) && (before & (entry::kSpecial | entry::kInner)) == 0);
}

/// What begins at `i`, if nothing before or behind it changes it; false where that cannot be seen, or where it has no
/// primary weight.
bool readStep(const SortData& data, WideText text, std::size_t i, Reading& reading) noexcept
{
    const SortPages& pages = data.m_tPages;
    const SortEntry e = text.entryAt(pages, i);
    reading = {e, 1};
    if ((e & entry::kMark) != 0) {
        return false;
    }
    if ((e & entry::kSpecial) == 0) {
        return entry::primaryLength(e) != 0 && isByItself(pages, e, text, i);
    }
    if (!beginsAt(pages, e, text, i) || !readSpecial(data, text, i, reading) ||
        (reading.m_nEntry & entry::kSpecial) != 0 || entry::primaryLength(reading.m_nEntry) == 0) {
        return false;
    }
    // What an opening does not have together with the next character it has alone.
    const std::size_t next = i + reading.m_nWidth;
    return (reading.m_nWidth == 1 && entry::isKind(e, kStartKind)) ||
           !mayJoinNext(pages, text.entryAt(pages, next - 1), text, next);
}

/// From the first difference at `equal` to the next, as long as all that differs is characters read by themselves.
/// Nothing where it is not, or where a character of one text stands beside two of the other.
std::optional<int> compareInStep(const SortData& data, WideText a, WideText b, std::size_t equal,
                                 SortStrength strength) noexcept
{
    const std::size_t end = std::min(a.size(), b.size());
    LowerLevels lower(data);
    for (std::size_t i = equal; i < end;) {
        Reading leftReading;
        Reading rightReading;
        if (!readStep(data, a, i, leftReading) || !readStep(data, b, i, rightReading)) {
            return std::nullopt;
        }
        const SortEntry left = leftReading.m_nEntry;
        const SortEntry right = rightReading.m_nEntry;
        if (const int order = orderOfPrimaries(left, right)) {
            return order;
        }
        if (((left ^ right) & (entry::kLength | entry::kElements)) != 0 ||
            leftReading.m_nWidth != rightReading.m_nWidth) {
            return std::nullopt;
        }
        if (lower.hasSecondary() && data.m_tRules.isFrench() && entry::secondary(left) != entry::secondary(right)) {
            return std::nullopt;  // the last difference counts, but where a separator stands between them
        }
        lower.add(left, right);
        i = equalUpTo(a.data(), b.data(), i + leftReading.m_nWidth, end);
    }
    if (a.size() == b.size()) {
        return lower.order(strength);
    }
    // What is left over of the longer one has a primary weight, or may be ignored.
    const bool isLeftLonger = a.size() > end;
    Reading left;
    if (!readStep(data, isLeftLonger ? a : b, end, left)) {
        return std::nullopt;
    }
    return isLeftLonger ? 1 : -1;
}

bool hasMoreLevels(const SortData& data, SortStrength strength) noexcept
{
    return strength == SortStrength::kIdentical ||
           (strength == SortStrength::kQuaternary && (data.m_tRules.isShifted() || data.m_pUnshifted != nullptr));
}

}  // namespace

int TableEngine::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                         SortStrength strength) const
{
    const WideText left(a, na);
    const WideText right(b, nb);
    const std::size_t end = std::min(na, nb);
    // Most pairs differ in the first character: nothing more of them is loaded.
    const std::size_t equal = end == 0 || a[0] != b[0] ? 0 : equalUpTo(a, b, 0, end);
    if (equal != end) {
        if (const int order = orderOfFirst(m_pData->m_tPages, left, right, equal)) {
            return order;
        }
    }
    return compareFurther(left, right, equal, strength);
}

int TableEngine::compareFurther(WideText a, WideText b, std::size_t equal, SortStrength strength) const
{
    if (equal == a.size() && equal == b.size()) {
        return 0;
    }
    std::optional<int> order = compareInStep(*m_pData, a, b, equal, strength);
    if (!order) {
        order = compareByBytes(*m_pData, a, b, equal, strength);
    }
    // Levels beyond the third decide only where the others are equal.
    if (!order || (*order == 0 && hasMoreLevels(*m_pData, strength))) {
        return SortEngine::compare(a.data(), a.size(), b.data(), b.size(), strength);
    }
    return *order;
}

}  // namespace vel::nls
