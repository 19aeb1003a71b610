#include "answers/localename.h"

#include <algorithm>
#include <string_view>

#include "answers/text.h"

namespace answers {

namespace {

using vel::Locale;
using vel::String;

constexpr std::size_t kSubtagLength = 8;

bool isAsciiLetter(wchar_t character) noexcept
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

bool isSubtag(std::wstring_view text) noexcept
{
    return !text.empty() && text.size() <= kSubtagLength && std::all_of(text.begin(), text.end(), [](wchar_t each) {
        return isAsciiLetter(each) || (each >= L'0' && each <= L'9');
    });
}

/// Languages are spelled small, scripts (four letters) with a capital, countries (two letters) in capitals.
std::string spelled(std::wstring_view subtag, bool isFirst)
{
    const bool isScript = !isFirst && subtag.size() == 4 && isAsciiLetter(subtag.front());
    const bool isCountry = !isFirst && subtag.size() == 2;
    std::string text;
    for (const wchar_t each : subtag) {
        const bool isCapital = isCountry || (isScript && text.empty());
        const char letter = static_cast<char>(each);
        text += !isAsciiLetter(each) ? letter : static_cast<char>(isCapital ? letter & ~0x20 : letter | 0x20);
    }
    return text;
}

/// Empty for a name that is no language tag.
std::string tagIn(std::wstring_view name)
{
    std::string tag;
    bool isFirst = true;
    for (std::size_t begin = 0; begin <= name.size(); isFirst = false) {
        const std::wstring_view subtag = name.substr(begin, name.find(L'-', begin) - begin);
        if (!isSubtag(subtag) || (isFirst && !isAsciiLetter(subtag.front()))) {
            return {};
        }
        tag += (isFirst ? "" : "-") + spelled(subtag, isFirst);
        begin += subtag.size() + 1;
    }
    return tag;
}

/// The blocks of the scripts that are written from right to left, with their presentation forms.
bool isRightToLeft(wchar_t character) noexcept
{
    return (character >= 0x590 && character < 0x900) || (character >= 0xFB1D && character < 0xFE00) ||
           (character >= 0xFE70 && character < 0xFEFF) || (character >= 0x10800 && character < 0x11000) ||
           (character >= 0x1E800 && character < 0x1F000);
}

bool hasRightToLeftNames(const Locale& locale, Locale::NameType type)
{
    const auto names = locale.storedNames(type);
    return std::any_of(names.begin(), names.end(),
                       [](const String& name) { return std::any_of(name.begin(), name.end(), &isRightToLeft); });
}

}  // namespace

String nameOf(const Locale& locale, const Captions& captions)
{
    const Captions::Table& table = captions.tableFor(locale.getInfoAsString(Locale::kLocaleMessageName));
    return Captions::format(locale.getLocaleMessage(table), table);
}

Json describeName(const Locale& locale, const Captions& captions)
{
    Json json;
    json["locale"] = utf8Text(locale.definitionName());
    json["name"] = utf8Text(nameOf(locale, captions));
    json["defaultLanguage"] = utf8Text(locale.getInfoView(Locale::kDefaultLanguage));
    return json;
}

std::string languageTag(const Locale& locale)
{
    std::string tag = tagIn(locale.definitionName());
    return tag.empty() ? tagIn(locale.getInfoView(Locale::kDefaultLanguage)) : tag;
}

const char* directionOf(const Locale& locale)
{
    return hasRightToLeftNames(locale, Locale::kNominitiveMonth) || hasRightToLeftNames(locale, Locale::kDay) ? "rtl"
                                                                                                              : "ltr";
}

}  // namespace answers
