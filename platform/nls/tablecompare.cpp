// Comparison without keys. The first difference decides mostly; what does not is read on from there, see Comparison;
// keys decide the rest.

#include <algorithm>

#include "comparison.h"
#include "equaltext.h"
#include "tableengine.h"

namespace vel::nls {

namespace {

/// Whether the plain characters at `i` of both texts, the first that differ, are read by themselves.
inline bool areByThemselves(const SortPages& pages, WideText a, WideText b, SortEntry left, SortEntry right,
                            std::size_t i) noexcept
{
    return (((left | right) & (entry::kCare | entry::kInner)) == 0) ||
           (((left & entry::kCare) == 0 || !isMarkAt(pages, a, i + 1)) &&
            ((right & entry::kCare) == 0 || !isMarkAt(pages, b, i + 1)) &&
            (((left | right) & entry::kInner) == 0 || i == 0 || (a.entryAt(pages, i - 1) & entry::kOpen) == 0));
}

/// The order by the characters at `i`, the first that differ, where nothing beside them counts; otherwise 0.
inline int orderOfFirst(const SortPages& pages, WideText a, WideText b, std::size_t i) noexcept
{
    const SortEntry left = a.entryAt(pages, i);
    const SortEntry right = b.entryAt(pages, i);
    return entry::isPlain(left | right) && areByThemselves(pages, a, b, left, right, i) ? orderOfPrimaries(left, right)
                                                                                        : 0;
}

/// The order of a text and one that goes on where the first one ends, if what follows has a primary weight whatever
/// stands beside it: 1; otherwise 0.
inline int orderOfRest(const SortPages& pages, WideText longer, std::size_t i) noexcept
{
    constexpr SortEntry kBeside = entry::kSpecial | entry::kMark | entry::kInner;
    const SortEntry e = longer.entryAt(pages, i);
    return (e & kBeside) == 0 && entry::primaryLength(e) != 0 ? 1 : 0;
}

/// Whether what stands at `i` of a text may be read together with one of two characters before it.
bool mayJoin(const SortPages& pages, SortEntry left, SortEntry right, WideText text, std::size_t i) noexcept
{
    return i < text.size() &&
           (entry::mayJoin(left, text.entryAt(pages, i)) || entry::mayJoin(right, text.entryAt(pages, i)));
}

/// From one difference to the next as long as these are characters read by themselves, and of the same primary weights.
/// The order if one decides, otherwise 0.
int passLetters(const SortPages& pages, WideText a, WideText b, Beginning& state) noexcept
{
    const std::size_t end = std::min(a.size(), b.size());
    while (state.m_nEqual < end) {
        const std::size_t i = state.m_nEqual;
        const SortEntry left = a.entryAt(pages, i);
        const SortEntry right = b.entryAt(pages, i);
        if (!entry::isPlain(left | right) || entry::primaryLength(left) == 0 ||
            !areByThemselves(pages, a, b, left, right, i)) {
            return 0;
        }
        const int order = orderOfPrimaries(left, right);
        if (order != 0 || ((left ^ right) & (entry::kLength | entry::kElements)) != 0) {
            return order;
        }
        state.m_tLower.add(left, right);
        state.m_nPassed = state.m_nEqual = i + 1;
        if (state.m_tLower.isOpen() ||
            (((left | right) & entry::kOpen) != 0 &&
             (mayJoin(pages, left, right, a, i + 1) || mayJoin(pages, left, right, b, i + 1)))) {
            return 0;
        }
        state.m_nEqual = equalUpTo(a.data(), b.data(), i + 1, end);
    }
    return 0;
}

bool hasMoreLevels(const SortData& data, SortStrength strength) noexcept
{
    return strength == SortStrength::kIdentical ||
           (strength == SortStrength::kQuaternary && (data.m_tRules.isShifted() || data.m_pUnshifted != nullptr));
}

}  // namespace

/// Most pairs differ in the first character: nothing more of them is loaded.
int TableEngine::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb,
                         SortStrength strength) const
{
    const WideText left(a, na);
    const WideText right(b, nb);
    if (na != 0 && nb != 0 && a[0] != b[0]) [[likely]] {
        constexpr SortEntry kBeside = entry::kSpecial | entry::kMark | entry::kCare;
        const SortEntry first = left.entryAt(m_pData->m_tPages, 0);
        const SortEntry other = right.entryAt(m_pData->m_tPages, 0);
        if (((first | other) & kBeside) == 0) [[likely]] {
            if (const int order = orderOfPrimaries(first, other)) [[likely]] {
                return order;
            }
        }
    }
    return compareBeyondFirst(left, right, strength);
}

int TableEngine::compareBeyondFirst(WideText a, WideText b, SortStrength strength) const
{
    const std::size_t end = std::min(a.size(), b.size());
    const std::size_t equal = equalBeginning(a.data(), b.data(), end);
    const SortPages& pages = m_pData->m_tPages;
    if (equal != end) {
        if (const int order = orderOfFirst(pages, a, b, equal)) [[likely]] {
            return order;
        }
    } else if (a.size() != b.size()) {
        if (const int order = a.size() > b.size() ? orderOfRest(pages, a, end) : -orderOfRest(pages, b, end))
            [[likely]] {
            return order;
        }
    }
    return compareFurther(a, b, strength);
}

int TableEngine::compareFurther(WideText a, WideText b, SortStrength strength) const
{
    const std::size_t equal = equalBeginning(a.data(), b.data(), std::min(a.size(), b.size()));
    if (equal == a.size() && equal == b.size()) {
        return 0;
    }
    Beginning state{0, equal, LowerLevels(*m_pData)};
    if (const int order = passLetters(m_pData->m_tPages, a, b, state)) {
        return order;
    }
    const bool isDone = state.m_nEqual == a.size() && state.m_nEqual == b.size();
    const std::optional<int> order =
        isDone ? state.m_tLower.order(strength) : Comparison(*m_pData, a, b, state).run(strength);
    // Levels beyond the third decide only where the others are equal.
    if (!order || (*order == 0 && hasMoreLevels(*m_pData, strength))) {
        return SortEngine::compare(a.data(), a.size(), b.data(), b.size(), strength);
    }
    return *order;
}

}  // namespace vel::nls
