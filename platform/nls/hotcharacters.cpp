#include "hotcharacters.h"

#include <unicode/ulocdata.h>

#include "icuhandles.h"

namespace vel::nls {

namespace {

struct CloseLocaleData
{
    void operator()(ULocaleData* data) const noexcept { ulocdata_close(data); }
};

void appendRange(std::u32string& characters, char32_t first, char32_t last)
{
    for (char32_t c = first; c <= last; ++c) {
        characters += c;
    }
}

/// The letters that syllables are read as.
void appendHangulLetters(std::u32string& characters)
{
    appendRange(characters, 0x1100, 0x1112);
    appendRange(characters, 0x1161, 0x1175);
    appendRange(characters, 0x11A8, 0x11C2);
}

void appendItems(std::u32string& characters, const USet* set)
{
    const int32_t count = uset_getItemCount(set);
    for (int32_t i = 0; i < count; ++i) {
        UChar32 first = 0;
        UChar32 last = -1;
        UErrorCode status = U_ZERO_ERROR;
        if (uset_getItem(set, i, &first, &last, nullptr, 0, &status) == 0) {
            appendRange(characters, static_cast<char32_t>(first), static_cast<char32_t>(last));
        }
    }
}

bool isLanguage(const std::string& locale, const char* language)
{
    return locale.compare(0, 2, language) == 0 && (locale.size() == 2 || locale[2] == '_' || locale[2] == '@');
}

}  // namespace

std::u32string exemplarCharacters(const std::string& locale)
{
    std::u32string characters;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<ULocaleData, CloseLocaleData> data(ulocdata_open(locale.c_str(), &status));
    throwOnFailure(status);
    for (const ULocaleDataExemplarSetType type : {ULOCDATA_ES_STANDARD, ULOCDATA_ES_AUXILIARY}) {
        const SetPtr set(ulocdata_getExemplarSet(data.get(), nullptr, 0, type, &status));
        throwOnFailure(status);
        appendItems(characters, set.get());
    }
    return characters;
}

std::u32string hotCharacters(const std::string& locale)
{
    std::u32string characters;
    appendRange(characters, 0x20, 0x7E);
    if (isLanguage(locale, "zh")) {
        return characters;
    }
    if (isLanguage(locale, "ja")) {
        appendRange(characters, 0x3041, 0x3096);
        characters += U"\u30FC\u309D";
        return characters;
    }
    if (!isLanguage(locale, "ko")) {
        characters += exemplarCharacters(locale);
    }
    appendHangulLetters(characters);
    return characters;
}

}  // namespace vel::nls
