#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vel::nls {

/// A language and perhaps a territory, as codes in their usual letter case. Plain bytes: it lies in a caller's record.
struct LanguageCodes
{
    std::array<char, 4> m_aLanguage{};   ///< two or three lower-case letters, zero-terminated
    std::array<char, 4> m_aTerritory{};  ///< two capitals or three digits, zero-terminated; empty: none

    /// "de-CH"
    std::string tag() const;
    /// "de_CH"
    std::string icuName() const;
};

/// Reads `[language[_territory]][.charset]`; nothing for anything else and for codes that ICU does not know. Without a
/// language: en, US. nlsservice.h has the rows.
std::optional<LanguageCodes> readLanguageSpecification(std::string_view specification);

}  // namespace vel::nls
