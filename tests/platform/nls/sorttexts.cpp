#include "sorttexts.h"

#include <unicode/ucol.h>
#include <unicode/ulocdata.h>
#include <unicode/unorm2.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <stdexcept>

namespace sortpairs {

namespace {

using Pieces = std::vector<std::u16string>;

void require(UErrorCode status)
{
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
}

std::u16string characterOf(UChar32 c)
{
    std::u16string text;
    if (c > 0xFFFF) {
        text += static_cast<char16_t>(U16_LEAD(c));
        text += static_cast<char16_t>(U16_TRAIL(c));
    } else {
        text += static_cast<char16_t>(c);
    }
    return text;
}

void addRange(Pieces& pieces, UChar32 first, UChar32 last)
{
    for (UChar32 c = first; c <= last; ++c) {
        pieces.push_back(characterOf(c));
    }
}

Pieces range(UChar32 first, UChar32 last)
{
    Pieces pieces;
    addRange(pieces, first, last);
    return pieces;
}

/// Closes the set.
void addItems(Pieces& pieces, USet* set)
{
    const int32_t count = uset_getItemCount(set);
    for (int32_t i = 0; i < count; ++i) {
        UChar32 first = 0;
        UChar32 last = -1;
        char16_t text[64];
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = uset_getItem(set, i, &first, &last, text, 64, &status);
        require(status);
        if (length >= 2) {
            pieces.emplace_back(text, static_cast<std::size_t>(length));
        } else {
            addRange(pieces, first, std::min(last, first + 400));
        }
    }
    uset_close(set);
}

Pieces letters(const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    ULocaleData* data = ulocdata_open(locale, &status);
    require(status);
    Pieces pieces;
    for (const ULocaleDataExemplarSetType type : {ULOCDATA_ES_STANDARD, ULOCDATA_ES_AUXILIARY}) {
        USet* set = ulocdata_getExemplarSet(data, nullptr, USET_ADD_CASE_MAPPINGS, type, &status);
        require(status);
        addItems(pieces, set);
    }
    ulocdata_close(data);
    UCollator* collator = ucol_open(locale, &status);
    require(status);
    addItems(pieces, ucol_getTailoredSet(collator, &status));
    ucol_close(collator);
    pieces.emplace_back(u"x");
    return pieces;
}

Pieces sequences(const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    UCollator* collator = ucol_open(locale, &status);
    USet* set = uset_openEmpty();
    ucol_getContractionsAndExpansions(collator, set, nullptr, true, &status);
    require(status);
    ucol_close(collator);
    Pieces pieces;
    addItems(pieces, set);
    return pieces;
}

Pieces marks()
{
    Pieces pieces = range(0x300, 0x345);
    for (const UChar32 c :
         {0x301, 0x307, 0x308, 0x30A,  0x323,  0x327,  0x328,   0x31B,   0x302,   0x338, 0x5B0, 0x5BC,
          0x64B, 0x653, 0x654, 0x655,  0x93C,  0x94D,  0xE38,   0xE48,   0xEB8,   0xF71, 0xF72, 0xF73,
          0xF74, 0xF80, 0xF81, 0x3099, 0x309A, 0x20D0, 0x1D165, 0x1D16D, 0x1E8D0, 0x9BE, 0x9D7, 0x1035}) {
        pieces.push_back(characterOf(c));
    }
    return pieces;
}

std::vector<Pieces> otherPieces()
{
    std::vector<Pieces> others{range(u'a', u'z'),     range(u'A', u'Z'),     range(0x20, 0x40),
                               range(0xA0, 0x24F),    range(0x370, 0x52F),   range(0x5D0, 0x6FF),
                               range(0x900, 0xDFF),   range(0xE01, 0xEDF),   range(0xF40, 0xFB9),
                               range(0x1100, 0x1112), range(0x1161, 0x1175), range(0x11A8, 0x11C2),
                               range(0x1E00, 0x1FFF), range(0x2000, 0x22FF), range(0x3041, 0x30FF),
                               range(0x3131, 0x318E), range(0x4E00, 0x4F00), range(0x3400, 0x3420),
                               range(0xAC00, 0xAD00), range(0xFF00, 0xFFEF), range(0xF900, 0xFA20)};
    // Vowels that are written before their consonant, and the consonants.
    Pieces vowels = range(0xE40, 0xE44);
    addRange(vowels, 0xE01, 0xE2E);
    addRange(vowels, 0xEC0, 0xEC4);
    addRange(vowels, 0xE81, 0xE8A);
    addRange(vowels, 0xAAB5, 0xAABC);
    addRange(vowels, 0x19B0, 0x19BB);
    others.push_back(vowels);
    others.push_back({std::u16string(1, u'\0'), u"\u0001", u"\u007F", u"\u00AD", u"\u200D", u"\u2060", u"\uFE0F",
                      u"\U000E0100", u"\uFEFF", u"\u034F"});
    others.push_back({u"\uFFFE", u"\uFFFF", u"\uFFFD", u"\uFDFA", u"\uFDD0", u"\uFDD1", u"\u3300", u"\u33FF", u"\u2026",
                      u"\u2474", u"\u2260", u"=", u"\u00B7", u"l", u"L", u"\u0140"});
    others.push_back({u"\U0001F600", u"\U00012000", u"\U0001D400", u"\U0001D7CE", u"\U00020000", u"\U0002A700",
                      u"\U00010400", u"\U00010FFF", u"\U00017000", u"\U000F0000", u"\U0010FFFF", u"\U0010FFFE",
                      u"\U0003FFFD", u"\u0378", u"\u05FF", u"\uE000", u"\uF8FF", u"\U0001B170"});
    others.push_back({u"\xD800", u"\xDBFF", u"\xDC00", u"\xDFFF", u"\xD83D"});
    return others;
}

std::u16string normalized(const std::u16string& text, bool composes)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* form = composes ? unorm2_getNFCInstance(&status) : unorm2_getNFDInstance(&status);
    std::u16string result(4 * text.size() + 32, u'\0');
    const int32_t length = unorm2_normalize(form, text.data(), static_cast<int32_t>(text.size()), result.data(),
                                            static_cast<int32_t>(result.size()), &status);
    if (U_FAILURE(status)) {
        return text;
    }
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::u16string joined(const Pieces& pieces)
{
    std::u16string text;
    for (const std::u16string& piece : pieces) {
        text += piece;
    }
    return text;
}

}  // namespace

TextMaker::TextMaker(const std::string& icuLocale, std::uint64_t seed)
    : m_tRandom(seed),
      m_tLetters(letters(icuLocale.c_str())),
      m_tSequences(sequences(icuLocale.c_str())),
      m_tMarks(marks()),
      m_tOthers(otherPieces())
{}

std::size_t TextMaker::below(std::size_t limit)
{
    return static_cast<std::size_t>(m_tRandom() % limit);
}

const std::u16string& TextMaker::oneOf(const std::vector<std::u16string>& pieces)
{
    return pieces[below(pieces.size())];
}

std::u16string TextMaker::piece()
{
    const std::size_t kind = below(16);
    if (kind < 5) {
        return oneOf(m_tLetters);
    }
    if (kind < 8) {
        return oneOf(m_tMarks);
    }
    if (kind < 11) {
        const std::u16string& whole = oneOf(m_tSequences);
        // Whole, its beginning, its end, or with a mark in between.
        const std::size_t cut = below(whole.size() + 1);
        switch (below(4)) {
        case 0:
            return whole.substr(0, cut);
        case 1:
            return whole.substr(cut);
        case 2:
            return whole.substr(0, cut) + oneOf(m_tMarks) + whole.substr(cut);
        default:
            return whole;
        }
    }
    return oneOf(m_tOthers[below(m_tOthers.size())]);
}

/// Mostly names, some sentences, few long texts.
std::size_t TextMaker::length()
{
    const std::size_t kind = below(1000);
    if (kind == 0) {
        return below(10'000);
    }
    return below(kind < 20 ? 400 : kind < 200 ? 40 : 9);
}

std::vector<std::u16string> TextMaker::pieces()
{
    Pieces result(length());
    for (std::u16string& text : result) {
        text = piece();
    }
    return result;
}

void TextMaker::change(std::vector<std::u16string>& pieces)
{
    const std::size_t at = below(pieces.size() + 1);
    const auto place = pieces.begin() + static_cast<std::ptrdiff_t>(at);
    if (at == pieces.size() || below(4) == 0) {
        pieces.insert(place, piece());
        return;
    }
    switch (below(6)) {
    case 0:
        pieces.erase(place);
        break;
    case 1:
        std::swap(*place, pieces[below(pieces.size())]);
        break;
    case 2:
        *place += oneOf(m_tMarks);
        break;
    case 3:
        *place = normalized(*place, false);
        break;
    case 4:
        *place = normalized(*place, true);
        break;
    default:
        *place = piece();
    }
}

std::vector<std::u16string> TextMaker::family(std::size_t count)
{
    std::vector<std::u16string> texts;
    const Pieces first = pieces();
    Pieces next = first;
    while (texts.size() < count) {
        texts.push_back(joined(next));
        if (below(3) == 0) {
            next = first;
        }
        change(next);
    }
    texts.back() = normalized(texts.front(), below(2) == 0);
    return texts;
}

}  // namespace sortpairs
