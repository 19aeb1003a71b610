#include "languageinfo.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <algorithm>
#include <memory>
#include <new>

namespace vel::nls {

namespace {

struct CloseFormat
{
    void operator()(UDateFormat* format) const noexcept { udat_close(format); }
};
struct CloseCalendar
{
    void operator()(UCalendar* calendar) const noexcept { ucal_close(calendar); }
};

/// A run of items, and where ICU has their names.
struct NameRun
{
    unsigned m_nFirst;
    unsigned m_nCount;
    UDateFormatSymbolType m_eSymbols;
    unsigned m_nIcuFirst;  ///< ICU's index of the first; an index past ICU's last one is Sunday's
};

// ICU counts days from Sunday, which is 1.
constexpr NameRun kNameRuns[] = {{kLanguageItemFullDay, 7, UDAT_STANDALONE_WEEKDAYS, 2},
                                 {kLanguageItemAbbreviatedDay, 7, UDAT_STANDALONE_SHORT_WEEKDAYS, 2},
                                 {kLanguageItemFullMonth, 12, UDAT_STANDALONE_MONTHS, 0},
                                 {kLanguageItemAbbreviatedMonth, 12, UDAT_STANDALONE_SHORT_MONTHS, 0}};
constexpr unsigned kIcuSaturday = 7;
constexpr int kLongestName = 256;

std::u16string widened(const std::string& ascii)
{
    return std::u16string(ascii.begin(), ascii.end());
}

void throwIfOutOfMemory(UErrorCode status)
{
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
}

std::u16string nameOf(const LanguageCodes& language, UDateFormatSymbolType symbols, unsigned index)
{
    // The months are those of the calendar that the whole system counts in.
    const std::string name = language.icuName() + "@calendar=gregorian";
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UDateFormat, CloseFormat> format(
        udat_open(UDAT_NONE, UDAT_FULL, name.c_str(), u"GMT", -1, nullptr, 0, &status));
    char16_t text[kLongestName];
    const std::int32_t length =
        udat_getSymbols(format.get(), symbols, static_cast<std::int32_t>(index), text, kLongestName, &status);
    throwIfOutOfMemory(status);
    return U_FAILURE(status) || length < 0 ? std::u16string() : std::u16string(text, static_cast<std::size_t>(length));
}

std::u16string calendarOf(const LanguageCodes& language)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCalendar, CloseCalendar> calendar(
        ucal_open(u"GMT", -1, language.icuName().c_str(), UCAL_DEFAULT, &status));
    const char* type = U_FAILURE(status) ? nullptr : ucal_getType(calendar.get(), &status);
    throwIfOutOfMemory(status);
    return U_FAILURE(status) ? std::u16string() : widened(type);
}

bool isHighSurrogate(char16_t unit) noexcept
{
    return unit >= 0xD800 && unit < 0xDC00;
}

}  // namespace

std::optional<std::u16string> languageText(const LanguageCodes& language, unsigned item)
{
    for (const NameRun& run : kNameRuns) {
        if (item - run.m_nFirst < run.m_nCount) {
            const unsigned index = run.m_nIcuFirst + item - run.m_nFirst;
            const bool isPastSaturday = run.m_nCount == 7 && index > kIcuSaturday;
            return nameOf(language, run.m_eSymbols, isPastSaturday ? index - kIcuSaturday : index);
        }
    }
    switch (item) {
    case kLanguageItemLanguage:
        return widened(language.tag());
    case kLanguageItemCharacterSet:
        return u"AL16UTF16";
    case kLanguageItemCalendar:
        return calendarOf(language);
    default:
        return std::nullopt;
    }
}

bool writeTerminated(const std::u16string& text, unsigned char* buffer, std::size_t size) noexcept
{
    if (buffer == nullptr || size < 2) {
        return false;
    }
    std::size_t count = std::min(text.size(), size / 2 - 1);
    if (count < text.size() && count > 0 && isHighSurrogate(text[count - 1])) {
        --count;
    }
    for (std::size_t i = 0; i < count; ++i) {
        buffer[2 * i] = static_cast<unsigned char>(text[i] >> 8);
        buffer[2 * i + 1] = static_cast<unsigned char>(text[i] & 0xFF);
    }
    buffer[2 * count] = buffer[2 * count + 1] = 0;
    return true;
}

}  // namespace vel::nls
