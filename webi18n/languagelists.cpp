#include "webi18n/languagelists.h"

#include "csv.h"
#include "vel/log/logger.h"

namespace vel {

namespace {

constexpr LogSource lsReadLanguageList(L"vel.i18n.languageLists.load");
// Reserved for records that name the file a list comes from.
[[maybe_unused]] constexpr const wchar_t* kPropertyListsFile = L"languageListsFile";

constexpr const wchar_t* ksAllowedLanguages = L"Localization/AllowedLanguages";
constexpr const wchar_t* ksSupported = L"supported";

}  // namespace

LanguageLists::LanguageLists() = default;
LanguageLists::~LanguageLists() = default;

bool LanguageLists::loadConfig(const ConfigReader& reader, EConfig /*eConfig*/)
{
    const ScopedLogSource source(lsReadLanguageList);
    const String value = reader.getString(ksAllowedLanguages, String());
    std::vector<String> languages;
    if (!value.isEmpty()) {
        i18n_details::forEachPiece(value.view(), [&](std::wstring_view piece) { languages.emplace_back(piece); });
    }
    m_LanguageLists[ksSupported].swap(languages);
    return true;
}

void LanguageLists::getLanguageList(std::vector<String>& out, const String& name) const
{
    if (const auto found = m_LanguageLists.find(name); found != m_LanguageLists.end()) {
        out = found->second;
    }
}

void LanguageLists::getSupportedLanguageList(std::vector<String>& out) const
{
    getLanguageList(out, ksSupported);
}

}  // namespace vel
