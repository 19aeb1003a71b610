#include "identicallevel.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <cstring>

#include "icuhandles.h"
#include "sharedplaces.h"
#include "sortcontexts.h"
#include "sorttext.h"
#include "utf8bytes.h"

namespace vel::nls {

namespace {

unsigned char* putIdentical(char32_t c, unsigned char* out) noexcept
{
    if (c < 2 || c == 0xFFFE) {
        *out++ = 1;
        c = c == 0xFFFE ? 1 : c + 2;
    }
    return putUtf8(c, out);
}

void appendUnits(const char16_t* text, std::size_t length, KeyBytes& out)
{
    out.reserve(3 * length);
    unsigned char* end = out.end();
    for (std::size_t i = 0; i < length; ++i) {
        char32_t c = text[i];
        if (isLeadSurrogate(c)) {
            c = joinSurrogates(c, text[++i]);
        }
        end = putIdentical(c, end);
    }
    out.setEnd(end);
}

/// By ICU: for texts whose marks are not in order, and characters beyond the basic plane.
void appendNormalized(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out)
{
    const ThreadScratch text(byteCount + 2);
    const std::size_t length = decodeBigEndian(utf16be, byteCount, text.as<char16_t>());
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&status);
    ThreadScratch decomposed(8 * length + 8);
    const auto decompose = [&] {
        status = U_ZERO_ERROR;
        return static_cast<std::size_t>(unorm2_normalize(nfd, text.as<char16_t>(), static_cast<int32_t>(length),
                                                         decomposed.as<char16_t>(),
                                                         static_cast<int32_t>(decomposed.size() / 2), &status));
    };
    std::size_t size = decompose();
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        ThreadScratch larger(2 * size + 2);
        decomposed.swap(larger);
        size = decompose();
    }
    throwOnFailure(status);
    appendUnits(decomposed.as<char16_t>(), size, out);
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
        if (c == 0xAC00) {
            c = 0xD7A4;
        }
        if (!isSurrogate(c) && (c < 2 || c == 0xFFFE || u_isdefined(static_cast<UChar32>(c)) != 0)) {
            add(c);
        }
    }
}

void Decompositions::add(char32_t c)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&status);
    std::array<char16_t, 32> text{};
    const int32_t length = unorm2_getDecomposition(nfd, static_cast<UChar32>(c), text.data(), 32, &status);
    throwOnFailure(status);
    Place place = (isMark(c) ? kMark : 0) | (endsInMark(c) ? kEndsInMark : 0);
    if (length > 0 || c < 2 || c == 0xFFFE) {
        KeyBytes bytes(nullptr, 0);
        text[0] = length > 0 ? text[0] : static_cast<char16_t>(c);
        appendUnits(text.data(), length > 0 ? static_cast<std::size_t>(length) : 1, bytes);
        place |= kBytes | static_cast<Place>((m_sBytes.size() << 5) | bytes.size());
        m_sBytes.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    } else {
        place |= static_cast<Place>(lastClass(c));
    }
    if (place != 0) {
        if (m_tOwn.empty() || m_aPages[c >> 8] != m_tOwn.back().get()) {
            m_tOwn.push_back(std::make_unique<Page>());
            m_aPages[c >> 8] = m_tOwn.back().get();
        }
        (*m_tOwn.back())[c & 0xFF] = place;
    }
}

namespace {

/// The letters of a syllable, each of three bytes.
unsigned char* putSyllable(char32_t c, unsigned char* out) noexcept
{
    const char32_t number = c - 0xAC00;
    out = putUtf8(0x1100 + number / 588, out);
    out = putUtf8(0x1161 + number / 28 % 21, out);
    return number % 28 == 0 ? out : putUtf8(0x11A7 + number % 28, out);
}

}  // namespace

unsigned char* Decompositions::putPlace(Place place, char32_t c, unsigned char* out) const noexcept
{
    if ((place & kBytes) == 0) {
        return putUtf8(c, out);
    }
    const std::size_t length = place & 31U;
    std::memcpy(out, m_sBytes.data() + ((place & (kBytes - 1)) >> 5), length);
    return out + length;
}

/// False where marks may have to change places, or a character is beyond the basic plane.
bool Decompositions::appendInOrder(const unsigned char* utf16be, std::size_t units, KeyBytes& out) const
{
    constexpr std::size_t kMostBytes = 12;  // of one character, decomposed
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
                p = c - 0xAC00 < 11'172 ? putSyllable(c, p) : putUtf8(c, p);
            } else {
                if ((place & kMark) != 0 && (before & kEndsInMark) != 0) {
                    return false;
                }
                p = putPlace(place, c, p);
            }
            before = place;
        }
        out.setEnd(p);
    }
    return true;
}

void Decompositions::append(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out) const
{
    const std::size_t size = out.size();
    if (byteCount % 2 != 0 || !appendInOrder(utf16be, byteCount / 2, out)) {
        out.shrink(size);
        appendNormalized(utf16be, byteCount, out);
    }
}

bool Decompositions::isInOrder(char32_t before, char32_t mark) const noexcept
{
    if ((before | mark) <= 0xFFFF) {
        const Place first = placeOf(before);
        const Place second = placeOf(mark);
        if (((first | second) & kBytes) == 0) {
            return (first & kClass) <= (second & kClass);
        }
    }
    return lastClass(before) <= firstClass(mark);
}

int Decompositions::classOfWhole(char32_t mark) const noexcept
{
    const Place place = mark > 0xFFFF ? kBytes : placeOf(mark);
    return (place & kBytes) == 0 ? static_cast<int>(place & kClass) : 0;
}

}  // namespace vel::nls
