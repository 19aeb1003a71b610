#include "sortcontexts.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>

namespace vel::nls {

namespace {

std::u32string utf32Of(const char16_t* text, int32_t length)
{
    std::u32string result;
    for (int32_t i = 0; i < length;) {
        UChar32 c = 0;
        U16_NEXT(text, i, length, c);
        result += static_cast<char32_t>(c);
    }
    return result;
}

std::vector<std::u32string> stringsOf(const USet* set)
{
    std::vector<std::u32string> strings;
    const int32_t count = uset_getItemCount(set);
    for (int32_t i = 0; i < count; ++i) {
        std::array<char16_t, 64> text{};
        UChar32 first = 0;
        UChar32 last = 0;
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length =
            uset_getItem(set, i, &first, &last, text.data(), static_cast<int32_t>(text.size()), &status);
        throwOnFailure(status);
        if (length >= 2) {
            strings.push_back(utf32Of(text.data(), length));
        }
    }
    std::sort(strings.begin(), strings.end());
    return strings;
}

std::vector<std::u32string> contractionsOf(const UCollator* collator, bool withPrefixes)
{
    UErrorCode status = U_ZERO_ERROR;
    const SetPtr set(uset_openEmpty());
    if (set == nullptr) {
        throw std::bad_alloc();
    }
    ucol_getContractionsAndExpansions(collator, set.get(), nullptr, withPrefixes, &status);
    throwOnFailure(status);
    return stringsOf(set.get());
}

}  // namespace

SortContexts readContexts(const UCollator* collator)
{
    SortContexts contexts;
    contexts.m_tContractions = contractionsOf(collator, false);
    const std::vector<std::u32string> all = contractionsOf(collator, true);
    std::set_difference(all.begin(), all.end(), contexts.m_tContractions.begin(), contexts.m_tContractions.end(),
                        std::back_inserter(contexts.m_tPrefixed));
    for (const std::u32string& text : all) {
        contexts.m_nLongest = std::max(contexts.m_nLongest, utf16Of(text).size());
    }
    return contexts;
}

int firstClass(char32_t c) noexcept
{
    return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_LEAD_CANONICAL_COMBINING_CLASS);
}

int lastClass(char32_t c) noexcept
{
    return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_TRAIL_CANONICAL_COMBINING_CLASS);
}

bool isMark(char32_t c) noexcept
{
    return firstClass(c) != 0;
}

bool endsInMark(char32_t c) noexcept
{
    return lastClass(c) != 0;
}

bool isSplitAlways(char32_t c) noexcept
{
    return c == 0x0F73 || c == 0x0F75 || c == 0x0F81;
}

std::u16string utf16Of(std::u32string_view text)
{
    std::u16string result;
    for (const char32_t c : text) {
        if (c > 0xFFFF) {
            result += static_cast<char16_t>(U16_LEAD(c));
            result += static_cast<char16_t>(U16_TRAIL(c));
        } else {
            result += static_cast<char16_t>(c);
        }
    }
    return result;
}

}  // namespace vel::nls
