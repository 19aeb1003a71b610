#include "tablebuilder.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <bit>
#include <map>
#include <span>
#include <unordered_map>

#include "hotcharacters.h"
#include "sequenceflags.h"
#include "sortstrings.h"

namespace vel::nls {

namespace {

/// One byte goes to so many weights at most, so that enough are left to begin the longer codes.
constexpr std::size_t kMostHot = 145;

constexpr char32_t kMergeCharacter = 0xFFFE;

/// Builds in steps, each of which needs those before it: strings, weights, entries of characters, what opens sequences.
class TableBuilder
{
public:
    TableBuilder(const UCollator* collator, const std::string& order)
        : m_pData(std::make_unique<SortData>(collator)), m_tStrings(collator, m_pData->m_tRules)
    {
        makeCollators(collator);
        rankPrimaries(order);
        countLevels();
        addCharacters();
        addOpenings();
        addHangul();
        addAscii();
        markSequences(m_pData->m_tPages, m_tStrings.contexts());
        m_pData->m_nCutRun = std::max<std::size_t>(4, m_tStrings.contexts().m_nLongest);
        m_pData->m_tElements.shrink_to_fit();
        m_pData->m_tLists.shrink_to_fit();
        m_pData->m_tOpenings.shrink_to_fit();
    }

    std::unique_ptr<const SortData> take() { return std::move(m_pData); }

private:
    using Elements = std::span<const Element>;
    using Neighbours = std::map<char32_t, SortEntry>;
    using Prefixes = std::map<char32_t, Neighbours>;
    /// The beginning of sequences up to one of their characters, and what may follow; slow where that is no sequence.
    struct Sequence
    {
        SortEntry m_nEntry = entry::special(kSlowKind);
        std::map<char32_t, Sequence> m_tNext;
    };
    using Sequences = std::map<char32_t, Sequence>;

    void makeCollators(const UCollator* collator);
    void rankPrimaries(const std::string& order);
    std::unordered_map<std::uint32_t, PrimaryRank> primaryRanks(const std::string& order) const;
    void markHot(std::unordered_map<std::uint32_t, PrimaryRank>& ranks, const std::u32string& characters) const;
    Elements elementsOf(char32_t c) const;
    void countLevels();
    SortEntry flagsOf(char32_t c) const;
    void addCharacters();
    bool areLettersPlain(char32_t first, char32_t last) const;
    void addHangul();
    void addAscii();
    SortEntry syllableEntry(char32_t number) const;
    SortEntry entryOf(Elements elements);
    bool fitsEntry(const std::vector<CodedElement>& elements) const;
    void addOpenings();
    Sequences readSequences();
    Prefixes readPrefixes();
    void addStart(char32_t c, const Sequence& sequence);
    static bool hasOnlyMarks(const Sequence& sequence);
    std::uint32_t addSequence(SortEntry alone, const Sequence& sequence);
    std::uint32_t addOpening(SortEntry alone, const Neighbours& others);

    std::unique_ptr<SortData> m_pData;
    SortStrings m_tStrings;
};

void TableBuilder::makeCollators(const UCollator* collator)
{
    if (m_tStrings.hasQuaternaries()) {
        m_pData->m_pUnshifted = cloneCollator(collator);
        UErrorCode status = U_ZERO_ERROR;
        ucol_setAttribute(m_pData->m_pUnshifted.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
        throwOnFailure(status);
        ucol_setStrength(m_pData->m_pUnshifted.get(), UCOL_QUATERNARY);
    }
}

// ------------------------------------------------------------------------------------------------------------- weights

TableBuilder::Elements TableBuilder::elementsOf(char32_t c) const
{
    const std::vector<char32_t>& characters = m_tStrings.characters();
    const auto found = std::lower_bound(characters.begin(), characters.end(), c);
    if (found == characters.end() || *found != c) {
        return {};
    }
    return m_tStrings.ofCharacter(static_cast<std::size_t>(found - characters.begin()));
}

PrimaryRank rankOf(char32_t c)
{
    if (c > 0xFFFF) {
        return kRare;
    }
    if (!isHan(c)) {
        return kCommon;
    }
    return c >= 0x4E00 && c <= 0x9FFF ? kHan : kRare;
}

void TableBuilder::markHot(std::unordered_map<std::uint32_t, PrimaryRank>& ranks,
                           const std::u32string& characters) const
{
    std::size_t count = 0;
    for (const char32_t c : characters) {
        for (const Element& element : elementsOf(c)) {
            const auto found = ranks.find(element.m_nPrimary);
            if (found != ranks.end() && found->second != kHot && count < kMostHot) {
                found->second = kHot;
                ++count;
            }
        }
    }
}

std::unordered_map<std::uint32_t, PrimaryRank> TableBuilder::primaryRanks(const std::string& order) const
{
    std::unordered_map<std::uint32_t, PrimaryRank> ranks;
    ranks.reserve(80'000);
    for (std::size_t i = 0; i < m_tStrings.characters().size(); ++i) {
        const PrimaryRank rank = rankOf(m_tStrings.characters()[i]);
        for (const Element& element : m_tStrings.ofCharacter(i)) {
            PrimaryRank& known = ranks.try_emplace(element.m_nPrimary, rank).first->second;
            known = std::min(known, rank);
        }
    }
    for (const Element& element : m_tStrings.all()) {
        ranks.try_emplace(element.m_nPrimary, kRare);
    }
    for (const char32_t c : exemplarCharacters(order)) {
        for (const Element& element : elementsOf(c)) {
            ranks[element.m_nPrimary] = kCommon;
        }
    }
    ranks.erase(0);
    markHot(ranks, hotCharacters(order));
    ranks[kMergeSeparator] = kRare;
    return ranks;
}

void TableBuilder::rankPrimaries(const std::string& order)
{
    std::vector<RankedPrimary> primaries;
    for (const auto& [weight, rank] : primaryRanks(order)) {
        primaries.push_back({weight, rank});
    }
    std::sort(primaries.begin(), primaries.end(),
              [](const RankedPrimary& left, const RankedPrimary& right) { return left.m_nWeight < right.m_nWeight; });
    m_pData->m_tPrimaries.emplace(std::move(primaries));
}

void TableBuilder::countLevels()
{
    std::map<std::uint16_t, std::size_t> secondaries;
    std::map<std::uint16_t, std::size_t> tertiaries;
    for (const Element& element : m_tStrings.all()) {
        ++secondaries[element.m_nSecondary];
        ++tertiaries[element.m_nTertiary];
    }
    m_pData->m_tSecondaries.emplace(kCommonWeight, kSecondaryTop, secondaries);
    m_pData->m_tTertiaries.emplace(m_pData->m_tRules.commonTertiary(), kTertiaryTop, tertiaries);
}

// ------------------------------------------------------------------------------------------------------------- entries

/// Whether one entry says all. SortEntry states what it has room for.
bool TableBuilder::fitsEntry(const std::vector<CodedElement>& elements) const
{
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const CodedElement& element = elements[i];
        const bool isLast = i + 1 == elements.size();
        bytes += element.m_tPrimary.m_nLength;
        if (element.m_bVariable || !element.m_bSecondary || !element.m_bTertiary ||
            element.m_tSecondary.m_nLength > (isLast ? 1 : 0) || element.m_tTertiary.m_nLength > (i == 0 ? 1 : 0) ||
            (i > 0 && element.m_nQuaternary != 0) || (element.m_bMerge && m_pData->m_tRules.isFrench())) {
            return false;
        }
        // What has no primary is ignored behind a shifted character, the rest is not.
        if (m_pData->m_tRules.isShifted() &&
            (element.m_tPrimary.m_nLength == 0 ? 0 : 1) > (elements[0].m_tPrimary.m_nLength == 0 ? 0 : 1)) {
            return false;
        }
    }
    return bytes <= 4 && elements.size() <= entry::kMostElements;
}

SortEntry TableBuilder::entryOf(Elements elements)
{
    std::vector<CodedElement> coded;
    coded.reserve(elements.size());
    for (const Element& element : elements) {
        coded.push_back(m_pData->encode(element));
    }
    if (!fitsEntry(coded)) {
        m_pData->m_tLists.push_back(
            {static_cast<std::uint32_t>(m_pData->m_tElements.size()), static_cast<std::uint32_t>(coded.size())});
        m_pData->m_tElements.insert(m_pData->m_tElements.end(), coded.begin(), coded.end());
        const bool isVariable = coded.size() == 1 && coded[0].m_bVariable;
        return entry::special(isVariable ? kVariableKind : kElementsKind,
                              static_cast<std::uint32_t>(m_pData->m_tLists.size() - 1));
    }
    SortEntry e = 0;
    unsigned length = 0;
    for (const CodedElement& element : coded) {
        for (unsigned k = 0; k < element.m_tPrimary.m_nLength; ++k) {
            e |= SortEntry{element.m_tPrimary.m_aBytes[k]} << (8 * length++);
        }
    }
    e |= (SortEntry{length} << 32) | (SortEntry{coded.size()} << 38);
    if (!coded.empty()) {
        e |= (SortEntry{coded[0].m_nQuaternary} << 42) | (SortEntry{coded.back().m_tSecondary.m_aBytes[0]} << 48) |
             (SortEntry{coded[0].m_tTertiary.m_aBytes[0]} << 56);
    }
    return e;
}

SortEntry TableBuilder::flagsOf(char32_t c) const
{
    SortEntry flags = isMark(c) ? entry::kMark : 0;
    if (m_pData->m_tRules.isNormalizing() && endsInMark(c)) {
        flags |= entry::kCare;
    }
    return flags;
}

void TableBuilder::addCharacters()
{
    const ElementRules& rules = m_pData->m_tRules;
    for (std::size_t i = 0; i < m_tStrings.characters().size(); ++i) {
        const char32_t c = m_tStrings.characters()[i];
        const bool isSlow = (rules.isNumeric() && digitValue(c) >= 0) || (rules.isNormalizing() && isSplitAlways(c));
        const SortEntry e = isSlow ? entry::special(kSlowKind) : entryOf(m_tStrings.ofCharacter(i));
        m_pData->m_tPages.set(c, e | flagsOf(c));
    }
    const Element merge{kMergeSeparator, kCommonWeight, rules.commonTertiary(), 0, false};
    m_pData->m_tPages.set(kMergeCharacter, entryOf(Elements(&merge, 1)));
}

constexpr char32_t kFirstSyllable = 0xAC00;
constexpr char32_t kSyllables = 11'172;

/// Letters that begin sequences would have to look at what follows the syllable.
bool TableBuilder::areLettersPlain(char32_t first, char32_t last) const
{
    for (char32_t c = first; c <= last; ++c) {
        const SortEntry e = m_pData->m_tPages.find(c);
        if ((e & (entry::kMark | entry::kCare)) != 0 ||
            ((e & entry::kSpecial) != 0 && !entry::isKind(e, kElementsKind))) {
            return false;
        }
    }
    return true;
}

/// After the openings, which may make letters special. Syllables whose bytes fit are one entry. ICU looks the letters
/// up when it meets the syllable: where what stands before may change a letter, what the syllable has by itself says
/// nothing.
void TableBuilder::addHangul()
{
    const bool arePlain =
        areLettersPlain(0x1100, 0x1112) && areLettersPlain(0x1161, 0x1175) && areLettersPlain(0x11A8, 0x11C2);
    for (char32_t k = 0; k < kSyllables; ++k) {
        // Else a syllable that the sort tailors.
        const bool isAbsent = m_pData->m_tPages.find(kFirstSyllable + k) == entry::special(kSlowKind);
        if (isAbsent == arePlain) {
            m_pData->m_tPages.set(kFirstSyllable + k, arePlain ? syllableEntry(k) : entry::special(kSlowKind));
        }
    }
}

void TableBuilder::addAscii()
{
    for (unsigned char c = 0; c < 0x80; ++c) {
        const SortEntry e = m_pData->m_tPages.find(c);
        constexpr SortEntry kUncommon = entry::kSpecial | entry::kMark | entry::kQuaternary | entry::kSecondary;
        if ((e & kUncommon) == 0 && entry::primaryLength(e) == 1 && entry::elements(e) == 1) {
            m_pData->m_tAscii.set(c, static_cast<unsigned char>(entry::primaryBytes(e)), entry::tertiary(e));
        }
    }
}

SortEntry TableBuilder::syllableEntry(char32_t number) const
{
    const SortPages& pages = m_pData->m_tPages;
    const SortEntry letters[] = {pages.find(0x1100 + number / 588), pages.find(0x1161 + number / 28 % 21),
                                 number % 28 == 0 ? 0 : pages.find(0x11A7 + number % 28)};
    constexpr SortEntry kUncommon = entry::kSpecial | entry::kQuaternary | entry::kSecondary | entry::kTertiary;
    std::uint64_t bytes = 0;
    unsigned length = 0;
    unsigned elements = 0;
    for (const SortEntry letter : letters) {
        if ((letter & kUncommon) != 0 || length + entry::primaryLength(letter) > 4) {
            return entry::special(kHangulKind, number);
        }
        bytes |= std::uint64_t{entry::primaryBytes(letter)} << (8 * length);
        length += entry::primaryLength(letter);
        elements += entry::elements(letter);
    }
    return (bytes & 0xFFFFFFFFU) | (SortEntry{length} << 32) | (SortEntry{elements} << 38);
}

// ----------------------------------------------------------------------------------------------------------- sequences

/// The sequences as a tree, by first character.
TableBuilder::Sequences TableBuilder::readSequences()
{
    Sequences sequences;
    const std::vector<std::u32string>& strings = m_tStrings.contexts().m_tContractions;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        Sequence* node = &sequences[strings[i][0]];
        for (std::size_t k = 1; k < strings[i].size(); ++k) {
            node = &node->m_tNext[strings[i][k]];
        }
        node->m_nEntry = entryOf(m_tStrings.ofContraction(i));
    }
    return sequences;
}

/// By last character, the entry that it has behind each other one: slow where more than that one decides.
TableBuilder::Prefixes TableBuilder::readPrefixes()
{
    Prefixes prefixes;
    const std::vector<std::u32string>& strings = m_tStrings.contexts().m_tPrefixed;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        const std::u32string& text = strings[i];
        const Elements whole = m_tStrings.ofPrefixed(i);
        const Elements before = elementsOf(text[0]);
        // Which of more than two characters are the prefix cannot be seen from here.
        const bool isSimple =
            text.size() == 2 && before.size() < whole.size() && std::equal(before.begin(), before.end(), whole.begin());
        for (std::size_t k = 1; k < text.size(); ++k) {
            const auto [slot, isNew] = prefixes[text[k]].try_emplace(text[k - 1], entry::special(kSlowKind));
            slot->second = isNew && isSimple ? entryOf(whole.subspan(before.size())) : entry::special(kSlowKind);
        }
    }
    return prefixes;
}

void TableBuilder::addOpenings()
{
    const Sequences sequences = readSequences();
    const Prefixes prefixes = readPrefixes();
    SortPages& pages = m_pData->m_tPages;
    for (const auto& [c, sequence] : sequences) {
        if (prefixes.contains(c)) {
            pages.set(c, entry::special(kSlowKind) | flagsOf(c));
        } else {
            addStart(c, sequence);
        }
    }
    for (const auto& [c, others] : prefixes) {
        const SortEntry alone = pages.find(c);
        const bool isSlow = (alone & entry::kCare) != 0 || entry::isKind(alone, kSlowKind);
        if (!sequences.contains(c)) {
            pages.set(c, (isSlow ? entry::special(kSlowKind) : entry::special(kPrefixKind, addOpening(alone, others))) |
                             flagsOf(c));
        }
    }
    std::sort(m_pData->m_tCare.begin(), m_pData->m_tCare.end());
}

std::uint32_t TableBuilder::addSequence(SortEntry alone, const Sequence& sequence)
{
    Neighbours others;
    for (const auto& [other, longer] : sequence.m_tNext) {
        others[other] =
            longer.m_tNext.empty() ? longer.m_nEntry : entry::special(kStartKind, addSequence(longer.m_nEntry, longer));
    }
    return addOpening(alone, others);
}

/// What belongs to a character or to the beginning of a sequence, and the entry of what nothing stands beside.
std::uint32_t TableBuilder::addOpening(SortEntry alone, const Neighbours& others)
{
    Opening opening;
    opening.m_nAlone = alone;
    opening.m_tSlots.resize(std::bit_ceil(2 * others.size()));
    const std::size_t mask = opening.m_tSlots.size() - 1;
    for (const auto& [other, e] : others) {
        opening.m_bMarks = opening.m_bMarks || isMark(other);
        std::size_t i = other & mask;
        while (opening.m_tSlots[i].m_cOther != Opening::kNone) {
            i = (i + 1) & mask;
        }
        opening.m_tSlots[i] = {other, e};
    }
    m_pData->m_tOpenings.push_back(std::move(opening));
    return static_cast<std::uint32_t>(m_pData->m_tOpenings.size() - 1);
}

/// Where only marks may follow, as behind most letters, the entry stays what it is; a mark then looks back.
void TableBuilder::addStart(char32_t c, const Sequence& sequence)
{
    const SortEntry alone = m_pData->m_tPages.find(c);
    if (entry::isKind(alone, kSlowKind)) {
        return;
    }
    const std::uint32_t index = addSequence(alone, sequence);
    if ((alone & (entry::kSpecial | entry::kMark)) == 0 && hasOnlyMarks(sequence)) {
        m_pData->m_tCare.emplace_back(c, index);
        m_pData->m_tPages.set(c, alone | entry::kCare);
    } else {
        m_pData->m_tPages.set(c, entry::special(kStartKind, index) | flagsOf(c));
    }
}

bool TableBuilder::hasOnlyMarks(const Sequence& sequence)
{
    return std::all_of(sequence.m_tNext.begin(), sequence.m_tNext.end(),
                       [](const auto& next) { return isMark(next.first) && hasOnlyMarks(next.second); });
}

}  // namespace

std::unique_ptr<const SortData> buildSortData(const UCollator* collator, const std::string& order)
{
    return TableBuilder(collator, order).take();
}

}  // namespace vel::nls
