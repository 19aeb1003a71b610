#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "sortdata.h"
#include "sorttext.h"

namespace vel::nls {

/// UTF-16BE by code units.
class BigEndianText
{
public:
    BigEndianText(const unsigned char* bytes, std::size_t units) noexcept : m_pBytes(bytes), m_nSize(units) {}

    const unsigned char* bytes() const noexcept { return m_pBytes; }
    std::size_t size() const noexcept { return m_nSize; }
    char32_t operator[](std::size_t i) const noexcept
    {
        std::uint16_t unit = 0;
        std::memcpy(&unit, m_pBytes + 2 * i, sizeof unit);
        return __builtin_bswap16(unit);
    }
    /// Where a character may be half of one, or none at all.
    bool isOdd(char32_t unit) const noexcept { return isSurrogate(unit); }
    SortEntry entryAt(const SortPages& pages, std::size_t i) const noexcept
    {
        // By bytes: what is put together would only be taken apart again.
        return pages.findUnit(m_pBytes[2 * i], m_pBytes[2 * i + 1]);
    }

private:
    const unsigned char* m_pBytes;
    std::size_t m_nSize;
};

/// Wide text by characters.
class WideText
{
public:
    WideText(const wchar_t* text, std::size_t size) noexcept : m_pText(text), m_nSize(size) {}

    const wchar_t* data() const noexcept { return m_pText; }
    std::size_t size() const noexcept { return m_nSize; }
    char32_t operator[](std::size_t i) const noexcept { return static_cast<char32_t>(m_pText[i]); }
    bool isOdd(char32_t c) const noexcept { return isSurrogate(c) || c > 0x10FFFF; }
    SortEntry entryAt(const SortPages& pages, std::size_t i) const noexcept
    {
        const char32_t c = (*this)[i];
        return c > 0x10FFFF ? entry::special(kSurrogateKind) : pages.find(c);
    }

private:
    const wchar_t* m_pText;
    std::size_t m_nSize;
};

/// What stands at one place of a text.
struct Reading
{
    SortEntry m_nEntry = 0;
    std::size_t m_nWidth = 1;
};

/// Reads a special character where that is simple; false where only KeyWriter knows. The entry is plain, a shifted
/// character or a Hangul syllable.
template <typename Text>
bool readSpecial(const SortData& data, const Text& text, std::size_t i, Reading& reading) noexcept
{
    const SortEntry e = reading.m_nEntry;
    if ((e & (entry::kMark | entry::kCare)) != 0) {
        return false;
    }
    const SpecialKind kind = entry::kind(e);
    if (kind == kVariableKind || kind == kHangulKind) {
        return true;
    }
    if (kind != kStartKind && kind != kPrefixKind) {
        return false;
    }
    const Opening& opening = data.m_tOpenings[entry::index(e)];
    reading.m_nEntry = opening.m_nAlone;
    const bool isStart = kind == kStartKind;
    if (isStart ? i + 1 < text.size() : i > 0) {
        const std::size_t other = isStart ? i + 1 : i - 1;
        // Marks beside it may have to move.
        const SortEntry stops = entry::kMark | (data.m_tRules.isNormalizing() ? entry::kCare : 0);
        if ((text.entryAt(data.m_tPages, other) & stops) != 0) {
            return false;
        }
        if (const SortEntry* both = opening.find(text[other])) {
            reading.m_nEntry = *both;
            reading.m_nWidth = isStart ? 2 : 1;
        } else if (text.isOdd(text[other])) {
            return false;  // half a character
        }
    }
    return (reading.m_nEntry & entry::kSpecial) == 0 || entry::isKind(reading.m_nEntry, kVariableKind);
}

/// The letters of a Hangul syllable as one entry of up to 8 primary bytes; false when they are not plain.
struct SyllableReading
{
    std::uint64_t m_nBytes = 0;
    unsigned m_nLength = 0;
    unsigned m_nElements = 0;

    bool add(SortEntry e) noexcept
    {
        constexpr SortEntry kUncommon = entry::kSpecial | entry::kQuaternary | entry::kSecondary | entry::kTertiary;
        if ((e & kUncommon) != 0 || m_nLength + entry::primaryLength(e) > sizeof m_nBytes) {
            return false;
        }
        const std::uint64_t bytes = entry::primaryBytes(e);
        m_nBytes |= m_nLength < sizeof m_nBytes ? bytes << (8 * m_nLength) : 0;
        m_nLength += entry::primaryLength(e);
        m_nElements += entry::elements(e);
        return true;
    }
    bool read(const SortPages& pages, std::uint32_t number) noexcept
    {
        constexpr std::uint32_t kLast = 28;
        constexpr std::uint32_t kVowels = 21;
        return add(pages.find(0x1100 + number / (kVowels * kLast))) &&
               add(pages.find(0x1161 + number / kLast % kVowels)) &&
               (number % kLast == 0 || add(pages.find(0x11A7 + number % kLast)));
    }
};

/// Passes over what is ignored behind a shifted character and can be seen at once.
template <typename Text>
std::size_t skipIgnored(const SortData& data, const Text& text, std::size_t i) noexcept
{
    while (i < text.size()) {
        const SortEntry e = text.entryAt(data.m_tPages, i);
        if ((e & entry::kSpecial) != 0 || entry::primaryLength(e) != 0) {
            break;
        }
        ++i;
    }
    return i;
}

}  // namespace vel::nls
