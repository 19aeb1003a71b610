#include "identicallevel.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstring>

#include "icuhandles.h"
#include "sharedplaces.h"
#include "sortcontexts.h"
#include "sorttext.h"

namespace vel::nls {

namespace {

/// As ICU's decompositions of one character: none is longer.
constexpr std::size_t kLongest = 32;

/// The canonical decomposition; empty for a character that has none. Throws std::bad_alloc.
std::u32string decompositionOf(char32_t c)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&status);
    std::array<char16_t, kLongest> text{};
    const int32_t length = unorm2_getDecomposition(nfd, static_cast<UChar32>(c), text.data(), kLongest, &status);
    throwOnFailure(status);
    std::u32string result;
    for (int32_t i = 0; i < length;) {
        UChar32 next = 0;
        U16_NEXT(text.data(), i, length, next);
        result += static_cast<char32_t>(next);
    }
    return result;
}

}  // namespace

std::shared_ptr<const Decompositions> Decompositions::shared()
{
    static constinit SharedPlaces<Decompositions> places;
    return places.findOrAdd("nfd")->get(
        [](std::shared_ptr<void> place) { return std::make_shared<const Decompositions>(std::move(place)); });
}

Decompositions::Decompositions(std::shared_ptr<void> place) : m_pPlace(std::move(place))
{
    static constexpr Page kEmpty{};
    m_aPages.fill(&kEmpty);
    for (char32_t c = 0; c < 0x10000; ++c) {
        if (!isSyllable(c) && !isSurrogate(c) && u_isdefined(static_cast<UChar32>(c)) != 0) {
            add(c);
        }
    }
}

void Decompositions::add(char32_t c)
{
    Place place = (isMark(c) ? kMark : 0) | (endsInMark(c) ? kEndsInMark : 0);
    const std::u32string decomposition = decompositionOf(c);
    if (decomposition.empty()) {
        place |= static_cast<Place>(lastClass(c));
    } else {
        place |= kDecomposes | static_cast<Place>((m_sCharacters.size() << kLengthBits) | decomposition.size());
        m_sCharacters += decomposition;
    }
    if (place != 0) {
        if (m_tOwn.empty() || m_aPages[c >> 8] != m_tOwn.back().get()) {
            m_tOwn.push_back(std::make_unique<Page>());
            m_aPages[c >> 8] = m_tOwn.back().get();
        }
        (*m_tOwn.back())[c & 0xFF] = place;
    }
}

std::u32string_view Decompositions::charactersOf(Place place) const noexcept
{
    return std::u32string_view(m_sCharacters).substr((place & (kDecomposes - 1)) >> kLengthBits, place & kLength);
}

/// False where marks may have to change places, or a character is beyond the basic plane.
bool Decompositions::appendInOrder(const unsigned char* utf16be, std::size_t units, KeyBytes& out) const
{
    constexpr std::size_t kMostBytes = 4 * IdenticalCodes::kMostBytes;  // no character becomes more than four
    IdenticalCodes codes;
    Place before = 0;
    for (std::size_t i = 0; i < units;) {
        const std::size_t end = std::min(units, i + 64);
        out.reserve((end - i) * kMostBytes);
        unsigned char* p = out.end();
        for (; i < end; ++i) {
            const char32_t c = bigEndianUnit(utf16be + 2 * i);
            const Place place = placeOf(c);
            if (place == 0) {
                if (isSurrogate(c)) {
                    return false;
                }
                p = isSyllable(c) ? codes.putSyllable(c, p) : codes.put(c, p);
            } else {
                if ((place & kMark) != 0 && (before & kEndsInMark) != 0) {
                    return false;
                }
                p = (place & kDecomposes) == 0 ? codes.put(c, p) : put(charactersOf(place), codes, p);
            }
            before = place;
        }
        out.setEnd(p);
    }
    return true;
}

unsigned char* Decompositions::put(std::u32string_view characters, IdenticalCodes& codes, unsigned char* out) noexcept
{
    for (const char32_t c : characters) {
        out = codes.put(c, out);
    }
    return out;
}

namespace {

/// Writes the code points of a text that is taken apart, marks in canonical order.
class OrderedLevel
{
public:
    explicit OrderedLevel(KeyBytes& out) noexcept : m_rOut(out) {}

    void add(char32_t c, unsigned combiningClass)
    {
        if (combiningClass != 0) {
            m_tMarks.add(c, combiningClass);
            return;
        }
        putMarks();
        put(c);
    }
    void putMarks()
    {
        m_tMarks.order();
        for (const MarkOrder::Mark& mark : m_tMarks) {
            put(mark.m_cCode);
        }
        m_tMarks.clear();
    }

private:
    void put(char32_t c)
    {
        m_rOut.reserve(IdenticalCodes::kMostBytes);
        m_rOut.setEnd(m_tCodes.put(c, m_rOut.end()));
    }

    KeyBytes& m_rOut;
    MarkOrder m_tMarks;
    IdenticalCodes m_tCodes;
};

}  // namespace

void Decompositions::appendReordered(const char16_t* text, std::size_t length, KeyBytes& out) const
{
    OrderedLevel level(out);
    for (std::size_t i = 0; i < length;) {
        char32_t c = 0;
        U16_NEXT(text, i, length, c);
        forEachCharacter(c, [&](char32_t each, unsigned combiningClass) { level.add(each, combiningClass); });
    }
    level.putMarks();
}

void Decompositions::append(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out) const
{
    const std::size_t size = out.size();
    if (byteCount % 2 == 0 && appendInOrder(utf16be, byteCount / 2, out)) {
        return;
    }
    out.shrink(size);
    const ThreadScratch text(byteCount + 2);
    appendReordered(text.as<char16_t>(), decodeBigEndian(utf16be, byteCount, text.as<char16_t>()), out);
}

std::u32string Decompositions::charactersBeyond(char32_t c)
{
    if (!isSyllable(c)) {
        return decompositionOf(c);
    }
    const char32_t number = c - 0xAC00;
    std::u32string letters{0x1100 + number / 588, 0x1161 + number / 28 % 21};
    if (number % 28 != 0) {
        letters.push_back(0x11A7 + number % 28);
    }
    return letters;
}

int Decompositions::classOf(char32_t c) const noexcept
{
    return c > 0xFFFF ? u_getCombiningClass(static_cast<UChar32>(c)) : classOfWhole(c);
}

bool Decompositions::isInOrder(char32_t before, char32_t mark) const noexcept
{
    if ((before | mark) <= 0xFFFF) {
        const Place first = placeOf(before);
        const Place second = placeOf(mark);
        if (((first | second) & kDecomposes) == 0) {
            return (first & kClass) <= (second & kClass);
        }
    }
    return lastClass(before) <= firstClass(mark);
}

int Decompositions::classOfWhole(char32_t mark) const noexcept
{
    const Place place = mark > 0xFFFF ? kDecomposes : placeOf(mark);
    return (place & kDecomposes) == 0 ? static_cast<int>(place & kClass) : 0;
}

}  // namespace vel::nls
