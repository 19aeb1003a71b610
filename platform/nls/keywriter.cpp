#include "keywriter.h"

#include <cstring>

#include "sorttext.h"

namespace vel::nls {

namespace {

/// Characters between two looks at the room that is left.
constexpr std::size_t kChunk = 256;
constexpr unsigned char kLevelEnd = 0x02;
constexpr unsigned char kReplacementBytes[] = {0xFF, 0xFD};

}  // namespace

KeyWriter::KeyWriter(const SortData& data, SortStrength strength, unsigned char* out, std::size_t capacity)
    : m_rData(data),
      m_eStrength(strength),
      m_pOut(out),
      m_nCapacity(capacity),
      m_tPrimary(out, capacity),
      m_tLevels(data, strength)
{}

std::size_t KeyWriter::write(const unsigned char* utf16be, std::size_t byteCount)
{
    addText(utf16be, byteCount / 2);
    if (byteCount % 2 != 0) {
        // Part of no sequence, so it may be read by itself.
        addText(kReplacementBytes, 1);
    }
    return finish(utf16be, byteCount);
}

// ----------------------------------------------------------------------------------------------------------- short way

char16_t KeyWriter::unit(std::size_t i) const noexcept
{
    std::uint16_t bytes = 0;
    std::memcpy(&bytes, m_pText + 2 * i, sizeof bytes);
    return __builtin_bswap16(bytes);
}

/// A lone surrogate is read as U+FFFD.
KeyWriter::Character KeyWriter::characterAt(std::size_t i) const noexcept
{
    char32_t c = unit(i);
    if (isSurrogate(c)) [[unlikely]] {
        if (isLeadSurrogate(c) && i + 1 < m_nUnits && isTrailSurrogate(unit(i + 1))) {
            c = joinSurrogates(c, unit(i + 1));
            return {c, 2, m_rData.m_tPages.find(c)};
        }
        c = kReplacement;
    }
    return {c, 1, m_rData.m_tPages.find(c)};
}

/// `i` not 0.
KeyWriter::Character KeyWriter::characterBefore(std::size_t i) const noexcept
{
    if (isTrailSurrogate(unit(i - 1)) && i >= 2 && isLeadSurrogate(unit(i - 2))) {
        return characterAt(i - 2);
    }
    // What stands before is read as its own: a lead surrogate here has no other half.
    const char32_t c = isSurrogate(unit(i - 1)) ? kReplacement : unit(i - 1);
    return {c, 1, m_rData.m_tPages.find(c)};
}

void KeyWriter::addText(const unsigned char* text, std::size_t units)
{
    m_pText = text;
    m_nUnits = units;
    m_nLastCut = 0;
    for (std::size_t i = 0; i < units;) {
        i = addChunk(i, chunkEnd(i));
    }
}

/// Not before a mark, so that a mark and what it belongs to are in one chunk, and not within a character.
std::size_t KeyWriter::chunkEnd(std::size_t begin) const noexcept
{
    if (m_nUnits - begin <= kChunk) {
        return m_nUnits;
    }
    std::size_t end = begin + kChunk;
    while (end < m_nUnits && (isTrailSurrogate(unit(end)) || (characterAt(end).m_nEntry & entry::kMark) != 0)) {
        ++end;
    }
    return end;
}

/// Few texts have a mark behind a character that may take it in: only where there is one is the chunk read again, with
/// a look ahead at each such character; but not what has gone the slow way.
std::size_t KeyWriter::addChunk(std::size_t begin, std::size_t end)
{
    retryFrom(begin);
    const std::size_t next = runChunk<false>(begin, end);
    if (next != kBail) {
        return next;
    }
    restore(m_tRetry);
    return runChunk<true>(m_bIgnoring ? skipIgnored(m_nRetry, true) : m_nRetry, end);
}

void KeyWriter::retryFrom(std::size_t i) noexcept
{
    m_nRetry = i;
    m_tRetry = save();
}

template <bool kCareful>
std::size_t KeyWriter::runChunk(std::size_t i, std::size_t end)
{
    switch (m_eStrength) {
    case SortStrength::kPrimary:
        return run<1, false, kCareful>(i, end);
    case SortStrength::kSecondary:
        return run<2, false, kCareful>(i, end);
    case SortStrength::kTertiary:
        return run<3, false, kCareful>(i, end);
    default:
        return m_tLevels.hasQuaternary() ? run<3, true, kCareful>(i, end) : run<3, false, kCareful>(i, end);
    }
}

KeyWriter::Checkpoint KeyWriter::save() const noexcept
{
    return {m_tPrimary.size(), m_tLevels.save(), m_nElements, m_bIgnoring, m_nLastCut, m_nSlowUnits};
}

void KeyWriter::restore(const Checkpoint& checkpoint) noexcept
{
    m_tPrimary.shrink(checkpoint.m_nPrimary);
    m_tLevels.restore(checkpoint.m_tLevels);
    m_nElements = checkpoint.m_nElements;
    m_bIgnoring = checkpoint.m_bIgnoring;
    m_nLastCut = checkpoint.m_nLastCut;
    m_nSlowUnits = checkpoint.m_nSlowUnits;
}

/// For as many plain characters: each stores four bytes, of which up to four stay.
void KeyWriter::makeRoom(std::size_t characters)
{
    m_tPrimary.reserve(4 * characters);
    m_tLevels.reserve(characters);
}

/// Reads the text from `i` to `end`, or beyond where a sequence ends there; returns where it goes on.
template <unsigned kLevels, bool kQuaternary, bool kCareful>
std::size_t KeyWriter::run(std::size_t i, std::size_t end)
{
    constexpr SortEntry kLeave = entry::kSpecial | (kCareful ? entry::kCare : 0);
    constexpr SortEntry kUncommon = kLeave | entry::kMark | (kLevels >= 2 ? entry::kSecondary : 0) |
                                    (kLevels >= 3 ? entry::kTertiary : 0) | (kQuaternary ? entry::kQuaternary : 0);
    makeRoom(end - i);
    const SortPages& pages = m_rData.m_tPages;
    unsigned char* p = m_tPrimary.end();
    std::size_t number = m_nElements;
    while (i < end) {
        const SortEntry e = pages.findUnit(unit(i));
        const std::uint32_t bytes = entry::primaryBytes(e);
        std::memcpy(p, &bytes, sizeof bytes);
        if ((e & kUncommon) != 0) {
            if ((e & entry::kMark) != 0 && !kCareful && followsCare(i)) {
                return kBail;
            }
            if ((e & kLeave) != 0) {
                m_tPrimary.setEnd(p);
                m_nElements = number;
                i = special(i, kCareful);
                if (i == kBail) {
                    return kBail;
                }
                if (m_bIgnoring) {
                    i = skipIgnored(i, kCareful);
                }
                makeRoom(i < end ? end - i : 0);
                p = m_tPrimary.end();
                number = m_nElements;
                continue;
            }
            if (kLevels >= 2 && entry::secondary(e) != 0) {
                m_tLevels.secondary(number + entry::elements(e) - 1, entry::secondary(e));
            }
            if (kLevels >= 3 && entry::tertiary(e) != 0) {
                m_tLevels.tertiary(number, entry::tertiary(e));
            }
            if (kQuaternary && entry::quaternary(e) != 0) {
                m_tLevels.quaternary(number, entry::quaternary(e));
            }
        }
        p += entry::primaryLength(e);
        number += entry::elements(e);
        ++i;
    }
    m_tPrimary.setEnd(p);
    m_nElements = number;
    return i;
}

// ------------------------------------------------------------------------------------------------------------- the end

std::size_t KeyWriter::finish(const unsigned char* utf16be, std::size_t byteCount)
{
    m_tLevels.finish(m_nElements);
    KeyBytes identical(nullptr, 0);
    if (m_eStrength == SortStrength::kIdentical) {
        m_rData.m_pDecompositions->append(utf16be, byteCount, identical);
    }
    return put(identical);
}

namespace {

unsigned char* putLevel(unsigned char* out, const KeyBytes& level) noexcept
{
    if (level.size() != 0) {
        std::memcpy(out, level.data(), level.size());
    }
    return out + level.size();
}

}  // namespace

/// Puts the levels together. The levels that may hold weights below the common one end with a byte, the others with the
/// next level or the key.
std::size_t KeyWriter::put(const KeyBytes& identical)
{
    const KeyBytes& secondary = m_tLevels.secondaryBytes();
    const KeyBytes& tertiary = m_tLevels.tertiaryBytes();
    const KeyBytes& quaternary = m_tLevels.quaternaryBytes();
    const std::size_t bytes =
        m_tPrimary.size() + secondary.size() + tertiary.size() + quaternary.size() + identical.size();
    if (bytes == 0) {
        return 0;
    }
    constexpr std::size_t kEnds[] = {0, 2, 3, 3, 4};
    const std::size_t total = bytes + kEnds[static_cast<std::size_t>(m_eStrength)];
    if (total > m_nCapacity) {
        return total;
    }
    if (m_tPrimary.data() != m_pOut) {
        putLevel(m_pOut, m_tPrimary);
    }
    unsigned char* out = m_pOut + m_tPrimary.size();
    if (m_tLevels.hasSecondary()) {
        *out++ = kLevelEnd;
        out = putLevel(out, secondary);
        *out++ = kLevelEnd;
    }
    if (m_tLevels.hasTertiary()) {
        out = putLevel(out, tertiary);
        *out++ = kLevelEnd;
    }
    out = putLevel(out, quaternary);
    if (m_eStrength == SortStrength::kIdentical) {
        *out++ = kLevelEnd;
        putLevel(out, identical);
    }
    return total;
}

}  // namespace vel::nls
