#include "catalogues.h"

#include <iterator>
#include <utility>

namespace server {

namespace {

/// No rule but one for everything begins like this: the last character that there is stands in no language tag.
constexpr const wchar_t* ksNobodysTag = L"\U0010FFFF";

/// Orders that no locale has for its own, and names of languages that have the root's.
constexpr const wchar_t* ksVariants[] = {L"binary",
                                         L"und",
                                         L"und-u-co-emoji",
                                         L"und-u-co-eor",
                                         L"de",
                                         L"de-u-co-phonebk",
                                         L"en",
                                         L"en-u-ka-shifted",
                                         L"en-u-kn",
                                         L"es-u-co-trad",
                                         L"fr",
                                         L"fr-CA",
                                         L"it",
                                         L"nl",
                                         L"pt",
                                         L"da-u-kf-upper",
                                         L"ja-u-co-unihan",
                                         L"ko-u-co-unihan",
                                         L"si-u-co-dict",
                                         L"sv-u-co-trad",
                                         L"zh-u-co-pinyin",
                                         L"zh-u-co-stroke",
                                         L"zh-u-co-zhuyin"};

/// The catalogue of the process with the definitions of all files.
const vel::Handle<const vel::LocaleTagLookup>& loadLocales(answers::DataFiles& files)
{
    const auto& catalogue = vel::LocaleTagLookup::getInstanceHandle();
    for (const vel::FilePath& file : files.definitionFiles()) {
        vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(files.config(), file.toString());
    }
    return catalogue;
}

}  // namespace

Catalogues::Catalogues(answers::DataOptions options) : m_tFiles(std::move(options)), m_tMapping(loadLocales(m_tFiles))
{
    if (const auto file = m_tFiles.mappingFile()) {
        m_tMapping.loadMappings(file->toString());
    }
    m_tLanguages.loadConfig(m_tFiles.config(), vel::kConfigInitialize);
    for (const vel::FilePath& file : m_tFiles.currencyFiles()) {
        vel::CurrencyLookup::getInstance().loadCurrencies(file.toString());
    }
    m_hCharacterSets = vel::makeHandle<vel::CharacterSetResolver>();
    for (const vel::FilePath& file : m_tFiles.characterSetFiles()) {
        m_hCharacterSets->loadCharacterSetDefinitions(file);
    }
    for (const vel::FilePath& file : m_tFiles.characterSetListFiles()) {
        m_hCharacterSets->loadCharacterSetLists(file);
    }
    m_hSorts = vel::i18n::NLSEnvironment::getEnvironmentGuard();
    loadMessages();
    loadSorts();
    if (const auto why = m_tMapping.explainLocale(ksNobodysTag, L""); why.m_tRule) {
        m_tLastRule = why.m_tRule->m_nIndex;
    }
}

void Catalogues::loadMessages()
{
    m_hNoMessages = vel::makeHandle<vel::MessageTable>(vel::String());
    for (const vel::String& language : m_tFiles.messageLanguages()) {
        m_tMessages.emplace(language, m_tFiles.messages(language));
    }
}

/// A table of order stays in memory once it is made, so that clients choose among those that are named here.
void Catalogues::loadSorts()
{
    m_tSorts.insert(std::begin(ksVariants), std::end(ksVariants));
    std::vector<vel::Locale> all;
    locales().getSupportedLocales(all);
    for (const vel::Locale& each : all) {
        m_tSorts.insert(each.getInfoAsString(vel::Locale::kCollationNLS_SORT));
    }
    m_tSorts.erase(vel::String());
}

vel::Handle<const vel::CharacterSetList> Catalogues::characterSetList(const vel::String& name) const
{
    const auto& lists = m_hCharacterSets->getCharacterSetLists();
    const auto found = lists.find(name);
    return found == lists.end() ? vel::Handle<const vel::CharacterSetList>() : found->second;
}

answers::Captions Catalogues::captions(const vel::String& language) const
{
    const auto tableOf = [this](const vel::String& name) {
        const auto found = m_tMessages.find(name);
        return found == m_tMessages.end() ? m_hNoMessages : found->second;
    };
    return {tableOf(language), tableOf(L"en")};
}

}  // namespace server
