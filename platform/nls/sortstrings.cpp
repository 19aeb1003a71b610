#include "sortstrings.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <memory>

namespace vel::nls {

namespace {

/// Never part of a sequence, so it parts the strings of one long text.
constexpr char16_t kSeparator = 0xFFFE;

/// What a table holds by itself, beside what the sort tailors: the assigned characters of planes 0, 1 and 14. The other
/// Han characters have one primary weight each, and Hangul syllables are read as their letters.
bool isHeld(char32_t c)
{
    if (c == 0xFFFD || c == 0xFFFF) {
        return true;
    }
    switch (u_charType(static_cast<UChar32>(c))) {
    case U_UNASSIGNED:
    case U_PRIVATE_USE_CHAR:
    case U_SURROGATE:
        return false;
    default:
        return c < 0xAC00 || c > 0xD7A3;
    }
}

void addRange(std::vector<char32_t>& characters, char32_t first, char32_t last, const USet* tailored)
{
    for (char32_t c = first; c <= last; ++c) {
        if (isHeld(c) || uset_contains(tailored, static_cast<UChar32>(c))) {
            characters.push_back(c);
        }
    }
}

/// By the ranges of the set: cheaper than to ask for each of 131,072 characters.
void addTailoredHan(std::vector<char32_t>& characters, const USet* tailored)
{
    const int32_t count = uset_getItemCount(tailored);
    for (int32_t i = 0; i < count; ++i) {
        UChar32 first = 0;
        UChar32 last = -1;
        UErrorCode status = U_ZERO_ERROR;
        if (uset_getItem(tailored, i, &first, &last, nullptr, 0, &status) != 0) {
            return;  // strings come last
        }
        for (UChar32 c = std::max(first, 0x20000); c <= std::min(last, 0x3FFFF); ++c) {
            characters.push_back(static_cast<char32_t>(c));
        }
    }
}

CollatorPtr cloneWith(const UCollator* collator, UColAttribute attribute, UColAttributeValue value)
{
    CollatorPtr clone = cloneCollator(collator);
    UErrorCode status = U_ZERO_ERROR;
    ucol_setAttribute(clone.get(), attribute, value, &status);
    throwOnFailure(status);
    return clone;
}

}  // namespace

bool isHan(char32_t c) noexcept
{
    return u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_IDEOGRAPHIC) != 0;
}

SortStrings::SortStrings(const UCollator* collator, ElementRules& rules) : m_tContexts(readContexts(collator))
{
    UErrorCode status = U_ZERO_ERROR;
    const SetPtr tailored(ucol_getTailoredSet(collator, &status));
    throwOnFailure(status);
    chooseCharacters(tailored.get());
    const std::vector<RawElement> raw = readAll(collator);
    if (rules.isReordering()) {
        sampleLeads(collator, raw, rules);
    }
    m_tElements.reserve(raw.size());
    for (const RawElement& element : raw) {
        m_tElements.push_back(rules.apply(element));
    }
    addQuaternaries(collator, tailored.get());
}

void SortStrings::chooseCharacters(const USet* tailored)
{
    m_tCharacters.reserve(70'000);
    addRange(m_tCharacters, 0, 0xFFFD, tailored);
    addRange(m_tCharacters, 0xFFFF, 0x1FFFF, tailored);
    addTailoredHan(m_tCharacters, tailored);
    addRange(m_tCharacters, 0xE0000, 0xE0FFF, tailored);
}

std::u16string SortStrings::textOf(std::size_t i) const
{
    if (i < m_tCharacters.size()) {
        return utf16Of(std::u32string_view(&m_tCharacters[i], 1));
    }
    i -= m_tCharacters.size();
    if (i < m_tContexts.m_tContractions.size()) {
        return utf16Of(m_tContexts.m_tContractions[i]);
    }
    return utf16Of(m_tContexts.m_tPrefixed[i - m_tContexts.m_tContractions.size()]);
}

/// The elements of all strings, read in one go.
std::vector<RawElement> SortStrings::readAll(const UCollator* collator)
{
    const std::size_t count =
        m_tCharacters.size() + m_tContexts.m_tContractions.size() + m_tContexts.m_tPrefixed.size();
    std::u16string text;
    text.reserve(3 * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += textOf(i);
        text += kSeparator;
    }
    // Each string by itself is in order already.
    const CollatorPtr plain = cloneWith(collator, UCOL_NORMALIZATION_MODE, UCOL_OFF);
    UErrorCode status = U_ZERO_ERROR;
    const ElementsPtr elements(ucol_openElements(plain.get(), text.data(), static_cast<int32_t>(text.size()), &status));
    throwOnFailure(status);
    std::vector<RawElement> raw;
    raw.reserve(2 * count);
    m_tEnds.reserve(count + 1);
    m_tEnds.push_back(0);
    ElementReader reader(elements.get());
    for (RawElement element; reader.next(element);) {
        if (element.m_nPrimary == kMergeSeparator) {
            m_tEnds.push_back(static_cast<std::uint32_t>(raw.size()));
        } else if (element.m_nPrimary != 0 || element.m_nSecondary != 0 || element.m_nTertiary != 0) {
            raw.push_back(element);
        }
    }
    return raw;
}

/// The first byte of a string's key is the lead byte that its first primary weight has in the order of scripts.
void SortStrings::sampleLeads(const UCollator* collator, const std::vector<RawElement>& raw, ElementRules& rules) const
{
    const CollatorPtr unshifted = cloneWith(collator, UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE);
    ucol_setStrength(unshifted.get(), UCOL_PRIMARY);
    const auto seen = std::make_unique<std::bitset<0x10000>>();
    const auto sample = [&](const std::u16string& text, std::uint32_t primary) {
        if (seen->test(primary >> 16)) {
            return;
        }
        seen->set(primary >> 16);
        std::array<unsigned char, 256> key{};
        ucol_getSortKey(unshifted.get(), text.data(), static_cast<int32_t>(text.size()), key.data(),
                        static_cast<int32_t>(key.size()));
        rules.addLeadSample(primary, key[0]);
    };
    for (std::size_t i = 0; i + 1 < m_tEnds.size(); ++i) {
        const auto first = std::find_if(raw.begin() + m_tEnds[i], raw.begin() + m_tEnds[i + 1],
                                        [](const RawElement& element) { return element.m_nPrimary != 0; });
        if (first != raw.begin() + m_tEnds[i + 1] && !seen->test(first->m_nPrimary >> 16)) {
            sample(textOf(i), first->m_nPrimary);
        }
    }
    // Han characters that no table holds, what is for private use, and what is not assigned.
    for (const char32_t c : {0x20000U, 0x2A6DFU, 0x30000U, 0xE000U, 0xF8FFU, 0x0378U, 0x3FFFDU, 0xF0000U, 0x10FFFDU}) {
        const std::u16string text = utf16Of(std::u32string(1, c));
        UErrorCode status = U_ZERO_ERROR;
        const ElementsPtr elements(
            ucol_openElements(unshifted.get(), text.data(), static_cast<int32_t>(text.size()), &status));
        throwOnFailure(status);
        RawElement element;
        if (ElementReader(elements.get()).next(element)) {
            sample(text, element.m_nPrimary);
        }
    }
    rules.finishLeadSamples();
}

/// Only what is tailored can have quaternary weights; Han characters have none.
void SortStrings::addQuaternaries(const UCollator* collator, const USet* tailored)
{
    const CollatorPtr unshifted = cloneWith(collator, UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE);
    ucol_setStrength(unshifted.get(), UCOL_QUATERNARY);
    if (uset_size(tailored) == 0) {
        return;
    }
    for (std::size_t i = 0; i < m_tCharacters.size(); ++i) {
        if (uset_contains(tailored, static_cast<UChar32>(m_tCharacters[i])) && !isHan(m_tCharacters[i])) {
            addQuaternaries(unshifted.get(), i);
        }
    }
    if (m_bQuaternaries) {
        for (std::size_t i = m_tCharacters.size(); i + 1 < m_tEnds.size(); ++i) {
            addQuaternaries(unshifted.get(), i);
        }
    }
}

void SortStrings::addQuaternaries(const UCollator* unshifted, std::size_t i)
{
    const std::u16string text = textOf(i);
    const std::vector<std::uint8_t> weights = readQuaternaries(unshifted, text.data(), text.size());
    auto next = weights.begin();
    for (std::size_t k = m_tEnds[i]; k < m_tEnds[i + 1] && next != weights.end(); ++k) {
        if (m_tElements[k].m_nTertiary != 0) {
            m_tElements[k].m_nQuaternary = *next++;
            m_bQuaternaries = m_bQuaternaries || m_tElements[k].m_nQuaternary != 0;
        }
    }
}

}  // namespace vel::nls
