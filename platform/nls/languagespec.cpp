#include "languagespec.h"

#include <unicode/uloc.h>

#include <algorithm>

namespace vel::nls {

namespace {

constexpr std::string_view kCharacterSet = "AL16UTF16";
constexpr LanguageCodes kDefault = {{'e', 'n'}, {'U', 'S'}};

bool isLetter(char byte) noexcept
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool isDigit(char byte) noexcept
{
    return byte >= '0' && byte <= '9';
}

char lower(char byte) noexcept
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

char upper(char byte) noexcept
{
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

bool equalsNoCase(std::string_view a, std::string_view b) noexcept
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

/// Stores a code of at most three letters or digits.
void store(std::string_view text, char (*spell)(char) noexcept, std::array<char, 4>& code) noexcept
{
    for (std::size_t i = 0; i + 1 < code.size() && i < text.size(); ++i) {
        code[i] = spell(text[i]);
    }
}

bool readLanguage(std::string_view text, LanguageCodes& codes)
{
    if ((text.size() != 2 && text.size() != 3) || !std::all_of(text.begin(), text.end(), isLetter)) {
        return false;
    }
    store(text, lower, codes.m_aLanguage);
    return *uloc_getISO3Language(codes.m_aLanguage.data()) != '\0';
}

bool readTerritory(std::string_view text, LanguageCodes& codes)
{
    const bool isAlpha = text.size() == 2 && std::all_of(text.begin(), text.end(), isLetter);
    const bool isNumber = text.size() == 3 && std::all_of(text.begin(), text.end(), isDigit);
    if (!isAlpha && !isNumber) {
        return false;
    }
    store(text, upper, codes.m_aTerritory);
    // ICU knows a country of two letters; areas of several countries have numbers, such as 419 for Latin America.
    return isNumber || *uloc_getISO3Country(codes.icuName().c_str()) != '\0';
}

}  // namespace

std::string LanguageCodes::tag() const
{
    const std::string territory = m_aTerritory.data();
    return m_aLanguage.data() + (territory.empty() ? "" : "-" + territory);
}

std::string LanguageCodes::icuName() const
{
    const std::string territory = m_aTerritory.data();
    return m_aLanguage.data() + (territory.empty() ? "" : "_" + territory);
}

std::optional<LanguageCodes> readLanguageSpecification(std::string_view specification)
{
    const std::size_t dot = specification.find('.');
    if (dot != std::string_view::npos && !equalsNoCase(specification.substr(dot + 1), kCharacterSet)) {
        return std::nullopt;
    }
    const std::string_view name = specification.substr(0, dot);
    if (name.empty()) {
        return kDefault;
    }
    LanguageCodes codes;
    const std::size_t underscore = name.find('_');
    if (!readLanguage(name.substr(0, underscore), codes) ||
        (underscore != std::string_view::npos && !readTerritory(name.substr(underscore + 1), codes))) {
        return std::nullopt;
    }
    return codes;
}

}  // namespace vel::nls
