#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "icuhandles.h"

namespace vel::nls {

constexpr std::uint32_t kMergeSeparator = 0x02000000;  ///< the primary weight of U+FFFE
constexpr std::uint16_t kCommonWeight = 0x0500;

/// One collation element as ICU holds it, without the quaternary bits, which its iterator does not show. A weight of 0
/// is ignored on its level.
struct RawElement
{
    std::uint32_t m_nPrimary = 0;
    std::uint16_t m_nSecondary = 0;
    std::uint16_t m_nTertiary = 0;  ///< with the two bits of the case on top
};

/// Reads the elements of a text. ICU hands each out in two halves, the second of which may be missing.
class ElementReader
{
public:
    /// `elements` stands before its text.
    explicit ElementReader(UCollationElements* elements, bool needsEnds = false);

    /// Inline, as is what the rules make of the element: it stays in registers on the way.
    bool next(RawElement& element)
    {
        if (m_nHalf == UCOL_NULLORDER) {
            return false;
        }
        const auto first = static_cast<std::uint32_t>(m_nHalf);
        m_nEnd = m_nHalfEnd;
        readHalf();
        std::uint32_t second = 0;
        if (m_nHalf != UCOL_NULLORDER && (m_nHalf & 0xC0) == 0xC0) {
            second = static_cast<std::uint32_t>(m_nHalf);
            readHalf();
        }
        element.m_nPrimary = (first & 0xFFFF0000U) | (second >> 16);
        element.m_nSecondary = static_cast<std::uint16_t>((first & 0xFF00U) | ((second >> 8) & 0xFFU));
        element.m_nTertiary = static_cast<std::uint16_t>(((first & 0xFFU) << 8) | (second & 0x3FU));
        return true;
    }
    /// Where the text of the last element ends, if that was asked for. ICU reads whole sequences: elements of one
    /// sequence have one end.
    std::int32_t end() const noexcept { return m_nEnd; }

private:
    void readHalf();

    UCollationElements* m_pElements;
    bool m_bNeedsEnds;
    std::int32_t m_nHalf = 0;
    std::int32_t m_nHalfEnd = 0;
    std::int32_t m_nEnd = 0;
};

/// An element whose weights are ordered as ICU's keys order them.
struct Element
{
    std::uint32_t m_nPrimary = 0;
    std::uint16_t m_nSecondary = 0;
    std::uint16_t m_nTertiary = 0;
    std::uint8_t m_nQuaternary = 0;
    bool m_bVariable = false;  ///< shifted to the fourth level

    bool operator==(const Element&) const = default;
};

/// What the settings of a sort make of an element: the order of scripts, of cases, and what is shifted.
class ElementRules
{
public:
    explicit ElementRules(const UCollator* collator);

    bool isShifted() const noexcept { return m_bShifted; }
    bool isFrench() const noexcept { return m_bFrench; }
    bool isNormalizing() const noexcept { return m_bNormalizing; }
    bool isNumeric() const noexcept { return m_bNumeric; }
    bool hasCaseLevel() const noexcept { return m_bCaseLevel; }
    bool isReordering() const noexcept { return m_bReordering; }

    /// Says that primaries from `primary` on, up to the next sample, have the lead byte `lead` in keys.
    void addLeadSample(std::uint32_t primary, unsigned char lead);
    void finishLeadSamples();

    std::uint16_t commonTertiary() const noexcept { return m_eCaseFirst == kUpper ? 0xC500 : kCommonWeight; }
    Element apply(const RawElement& raw) const noexcept
    {
        const bool isOrdinary = raw.m_nPrimary > kMergeSeparator;
        return {m_bReordering && isOrdinary ? reordered(raw.m_nPrimary) : raw.m_nPrimary, raw.m_nSecondary,
                tertiaryOf(raw), 0, m_bShifted && isOrdinary && raw.m_nPrimary <= m_nVariableTop};
    }

private:
    enum CaseFirst
    {
        kOff = 0,
        kLower = 1,
        kUpper = 2
    };
    struct LeadSample
    {
        std::uint32_t m_nFrom;
        std::uint32_t m_nOffset;
    };

    /// The weight by which ICU's keys order: without the case unless it comes first.
    std::uint16_t tertiaryOf(const RawElement& raw) const noexcept
    {
        return m_eCaseFirst == kOff ? raw.m_nTertiary & 0x3F3F : tertiaryByCase(raw);
    }
    std::uint16_t tertiaryByCase(const RawElement& raw) const noexcept;
    std::uint32_t reordered(std::uint32_t primary) const noexcept;

    bool m_bShifted;
    bool m_bFrench;
    bool m_bNormalizing;
    bool m_bNumeric;
    bool m_bCaseLevel;
    bool m_bReordering;
    CaseFirst m_eCaseFirst;
    std::uint32_t m_nVariableTop;
    std::vector<LeadSample> m_tLeads;
};

/// The quaternary bits of each element of a text that has a tertiary weight, in order, read off the fourth level of
/// ICU's key. `collator` has the quaternary strength and shifts nothing.
std::vector<std::uint8_t> readQuaternaries(const UCollator* collator, const char16_t* text, std::size_t length);

}  // namespace vel::nls
