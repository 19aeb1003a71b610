#include "identicalcodes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vel::nls {

namespace {

constexpr unsigned char kMergeCode = 0x01;
constexpr char32_t kMerge = 0xFFFE;
/// Values of a byte that is not the first one: all but zero.
constexpr unsigned kTrails = 255;

// A syllable: its first letter, and for each vowel the two letters with each last letter, with something lower and
// with something higher behind them; before and behind these the first letter with something else behind it.
constexpr char32_t kFirstLetter = 0x1100;
constexpr char32_t kFirstVowel = 0x1161;
constexpr char32_t kLastVowel = 0x1175;
constexpr char32_t kFirstLast = 0x11A8;
constexpr char32_t kLastLast = 0x11C2;
constexpr unsigned kLetters = 19;
constexpr unsigned kVowels = 21;
constexpr unsigned kCodesOfVowel = 29;
constexpr unsigned kCodesOfLetter = kVowels * kCodesOfVowel + 2;
constexpr char32_t kFirstSyllable = 0xAC00;

// Kana with something lower, each of the two voicing marks, and something higher behind it.
constexpr char32_t kFirstKana = 0x3000;
constexpr char32_t kVoiced = 0x3099;
constexpr char32_t kSemiVoiced = 0x309A;
constexpr unsigned kCodesOfKana = 4;
constexpr std::u32string_view kVoiceableKana =
    U"うかきくけこさしすせそたちつてとはひふへほゝウカキクケコサシスセソタチツテトハヒフヘホワヰヱヲヽ";

/// Characters up to the next range. `m_nBytes` for each; of the special ones two.
struct Range
{
    char32_t m_cFirst;
    unsigned m_nBytes;
    bool m_bStems = false;  ///< what follows may be part of the code
};

constexpr Range kRanges[] = {
    {0x0000, 2},        // controls
    {0x0020, 1},        // printable ASCII
    {0x007F, 2},        // Latin to Arabic
    {0x0700, 3},        // Syriac to Arabic's additions
    {0x0900, 2},        // Devanagari to Georgian
    {0x1100, 2, true},  // first letters of syllables
    {0x1113, 3},        // the other letters of syllables
    {0x1200, 2},        // Ethiopic
    {0x1380, 3},        // Cherokee to Greek's additions
    {0x2000, 2},        // punctuation and currencies
    {0x20FF, 3},        // symbols
    {0x3000, 2, true},  // Kana and Bopomofo
    {0x3130, 3},        // Han's additions
    {0x4E00, 2},        // Han
    {0x9FAE, 3},        // Yi to Arabic's forms
    {0xFF01, 2},        // wide and narrow forms
    {0x10000, 3},       // the first additional plane
    {0x1FE01, 4},       // the others
    {0x110000, 0},
};
constexpr std::size_t kRangeCount = std::size(kRanges) - 1;

constexpr unsigned power(unsigned base, unsigned exponent) noexcept
{
    return exponent == 0 ? 1 : base * power(base, exponent - 1);
}

constexpr unsigned codesOf(std::size_t range) noexcept
{
    const Range& each = kRanges[range];
    const auto characters = static_cast<unsigned>(kRanges[range + 1].m_cFirst - each.m_cFirst);
    if (!each.m_bStems) {
        return characters;
    }
    return each.m_cFirst == kFirstLetter
               ? kLetters * kCodesOfLetter
               : characters + static_cast<unsigned>(kVoiceableKana.size()) * (kCodesOfKana - 1);
}

/// The first bytes of each range, and behind the last range the one that is not used any more.
constexpr std::array<unsigned, kRangeCount + 1> leadsOfRanges() noexcept
{
    std::array<unsigned, kRangeCount + 1> leads{kMergeCode + 1};
    for (std::size_t i = 0; i < kRangeCount; ++i) {
        const unsigned codesOfLead = power(kTrails, kRanges[i].m_nBytes - 1);
        leads[i + 1] = leads[i] + (codesOf(i) + codesOfLead - 1) / codesOfLead;
    }
    return leads;
}

constexpr std::array<unsigned, kRangeCount + 1> kLeads = leadsOfRanges();
static_assert(kLeads.back() <= 0x100, "more first bytes than there are");
constexpr std::size_t kSyllableRange = 5;
constexpr std::size_t kKanaRange = 11;
static_assert(kRanges[kSyllableRange].m_cFirst == kFirstLetter);
static_assert(kRanges[kSyllableRange + 1].m_cFirst == kFirstLetter + kLetters);
static_assert(kRanges[kKanaRange].m_cFirst == kFirstKana);

/// By the upper bits of a character the range of the first character that has them.
constexpr std::array<std::uint8_t, 0x101> rangesOfPages() noexcept
{
    std::array<std::uint8_t, 0x101> ranges{};
    std::size_t range = 0;
    for (char32_t page = 0; page < ranges.size(); ++page) {
        while (kRanges[range + 1].m_cFirst <= page << 8) {
            ++range;
        }
        ranges[page] = static_cast<std::uint8_t>(range);
    }
    return ranges;
}

constexpr std::array<std::uint8_t, 0x101> kRangeOfPage = rangesOfPages();

std::size_t rangeOf(char32_t c) noexcept
{
    std::size_t range = kRangeOfPage[std::min<char32_t>(c >> 8, 0x100)];
    while (kRanges[range + 1].m_cFirst <= c) {
        ++range;
    }
    return range;
}

unsigned char* putNumber(unsigned lead, unsigned number, unsigned bytes, unsigned char* out) noexcept
{
    for (unsigned k = bytes - 1; k > 0; --k) {
        out[k] = static_cast<unsigned char>(number % kTrails + 1);
        number /= kTrails;
    }
    out[0] = static_cast<unsigned char>(lead + number);
    return out + bytes;
}

constexpr unsigned kKana = 0x100;

constexpr std::array<std::uint16_t, kKana> numbersOfKana() noexcept
{
    std::array<std::uint16_t, kKana> numbers{};
    std::size_t voiceable = 0;
    for (char32_t k = 0; k < kKana; ++k) {
        numbers[k] = static_cast<std::uint16_t>(k + voiceable * (kCodesOfKana - 1));
        if (voiceable < kVoiceableKana.size() && kVoiceableKana[voiceable] == kFirstKana + k) {
            ++voiceable;
        }
    }
    return numbers;
}

constexpr std::array<std::uint16_t, kKana> kNumberOfKana = numbersOfKana();
static_assert(kNumberOfKana.back() == kKana - 1 + 3 * kVoiceableKana.size(), "they are listed in order");

constexpr unsigned kSyllableLead = kLeads[kSyllableRange];
constexpr unsigned kKanaLead = kLeads[kKanaRange];

/// What joins a code, and how far the code's number then moves.
struct Joining
{
    char32_t m_cFirst;
    char32_t m_cLast;
    unsigned m_nCodesOfEach;
    unsigned m_nHigher;  ///< what is above all that joins
};

/// By IdenticalCodes::Follower.
constexpr Joining kJoining[] = {{0, 0, 0, 0},
                                {kFirstVowel, kLastVowel, kCodesOfVowel, kCodesOfLetter - 1},
                                {kFirstLast, kLastLast, 1, kCodesOfVowel - 1},
                                {kVoiced, kSemiVoiced, 1, kCodesOfKana - 1}};

}  // namespace

/// Whether the character becomes part of the code before it. What is higher changes that code too.
bool IdenticalCodes::joins(char32_t c, unsigned char* out) noexcept
{
    const Follower follower = std::exchange(m_eFollower, kNone);
    const Joining& joining = kJoining[follower];
    if (c < joining.m_cFirst || c == kMerge) {
        return false;
    }
    const bool isJoined = c <= joining.m_cLast;
    m_nNumber +=
        isJoined ? 1 + joining.m_nCodesOfEach * static_cast<unsigned>(c - joining.m_cFirst) : joining.m_nHigher;
    putNumber(m_nLead, m_nNumber, 2, out - 2);
    if (isJoined && follower == kVowel) {
        m_eFollower = kLastLetter;
    }
    return isJoined;
}

unsigned char* IdenticalCodes::putOpen(unsigned lead, unsigned number, Follower follower, unsigned char* out) noexcept
{
    m_eFollower = follower;
    m_nLead = lead;
    m_nNumber = number;
    return putNumber(lead, number, 2, out);
}

unsigned char* IdenticalCodes::putOther(char32_t c, unsigned char* out) noexcept
{
    static_assert(kLeads[1] == kAsciiLead && kRanges[1].m_cFirst == kFirstAscii &&
                  kRanges[2].m_cFirst == kLastAscii + 1);
    if (c == kMerge) {
        *out = kMergeCode;
        return out + 1;
    }
    const std::size_t range = rangeOf(c);
    const auto place = static_cast<unsigned>(c - kRanges[range].m_cFirst);
    if (range == kSyllableRange) {
        return putOpen(kSyllableLead, place * kCodesOfLetter, kVowel, out);
    }
    if (range != kKanaRange) {
        return putNumber(kLeads[range], place, kRanges[range].m_nBytes, out);
    }
    if (place + 1 >= kKana) {
        return putNumber(kKanaLead, kNumberOfKana.back() + place + 1 - kKana, 2, out);
    }
    const unsigned number = kNumberOfKana[place];
    const bool isVoiceable = kNumberOfKana[place + 1] - number == kCodesOfKana;
    return putOpen(kKanaLead, number, isVoiceable ? kVoicing : kNone, out);
}

unsigned char* IdenticalCodes::putSyllable(char32_t syllable, unsigned char* out) noexcept
{
    // Its first letter is lower than all that joins something.
    const auto number = static_cast<unsigned>(syllable - kFirstSyllable);
    const unsigned last = number % (kLastLast - kFirstLast + 2);
    const unsigned letterAndVowel = number / (kLastLast - kFirstLast + 2);
    const unsigned code =
        letterAndVowel / kVowels * kCodesOfLetter + 1 + letterAndVowel % kVowels * kCodesOfVowel + last;
    return putOpen(kSyllableLead, code, last == 0 ? kLastLetter : kNone, out);
}

}  // namespace vel::nls
