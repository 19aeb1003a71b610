#include "session.h"

#include <utility>

#include "failures.h"

namespace cli {

Session::Session(Options options) : m_tOptions(std::move(options)), m_tFiles(m_tOptions)
{}

Session::~Session() = default;

vel::Handle<vel::LocaleTagLookup> Session::loadCatalogue(const vel::ConfigReader& config)
{
    auto catalogue = vel::makeHandle<vel::LocaleTagLookup>();
    const std::vector<vel::FilePath> files = definitionFiles();
    for (const vel::FilePath& file : files) {
        catalogue->loadLocaleDefinitions(config, file.toString());
    }
    if (files.empty()) {
        complain("note",
                 "there are no locale definitions: the data folder has no localedefinitions.xml and no "
                 "--definitions FILE is given");
    }
    return catalogue;
}

const vel::Handle<vel::LocaleTagLookup>& Session::catalogue()
{
    if (m_hCatalogue.isNull()) {
        m_hCatalogue = loadCatalogue(config());
    }
    return m_hCatalogue;
}

const vel::LocaleMapping& Session::mapping()
{
    if (m_pMapping == nullptr) {
        auto mapping = std::make_unique<vel::LocaleMapping>(catalogue());
        if (const auto file = mappingFile()) {
            mapping->loadMappings(file->toString());
        } else {
            complain("note",
                     "there are no mapping rules: the data folder has no localemapping.xml and no --mapping "
                     "FILE is given");
        }
        m_pMapping = std::move(mapping);
    }
    return *m_pMapping;
}

const vel::CurrencyLookup& Session::currencies()
{
    if (m_pCurrencies == nullptr) {
        auto currencies = std::make_unique<vel::CurrencyLookup>();
        const std::vector<vel::FilePath> files = currencyFiles();
        for (const vel::FilePath& file : files) {
            currencies->loadCurrencies(file.toString());
        }
        if (files.empty()) {
            complain("note",
                     "there are no currencies: the data folder has no currencies.xml and no --currencies FILE is "
                     "given");
        }
        m_pCurrencies = std::move(currencies);
    }
    return *m_pCurrencies;
}

const vel::CharacterSetResolver& Session::characterSets()
{
    if (m_hCharacterSets.isNull()) {
        const auto resolver = vel::makeHandle<vel::CharacterSetResolver>();
        const std::vector<vel::FilePath> files = characterSetFiles();
        for (const vel::FilePath& file : files) {
            resolver->loadCharacterSetDefinitions(file);
        }
        if (files.empty()) {
            complain("note",
                     "there are no character sets: the data folder has no charactersets.xml and no --charsets FILE is "
                     "given");
        }
        m_hCharacterSets = resolver;
    }
    return *m_hCharacterSets;
}

const vel::CharacterSetResolver& Session::characterSetLists()
{
    characterSets();
    if (!m_bHasCharacterSetLists) {
        m_bHasCharacterSetLists = true;
        const std::vector<vel::FilePath> files = characterSetListFiles();
        for (const vel::FilePath& file : files) {
            m_hCharacterSets->loadCharacterSetLists(file);
        }
        if (files.empty()) {
            complain("note",
                     "there are no lists of character sets: the data folder has no charactersetlists.xml and no "
                     "--charset-lists FILE is given");
        }
    }
    return *m_hCharacterSets;
}

bool Session::isDefined(const vel::String& name)
{
    // The catalogue finds allowed locales only: a second one allows just this name.
    vel::MemoryConfigReader only;
    only.set(ksAllowedLocales, name);
    if (m_hEverything.isNull()) {
        m_hEverything = loadCatalogue(only);
    }
    m_hEverything->loadConfig(only, vel::kConfigInitialize);
    vel::Locale ignored;
    return m_hEverything->findLocaleByDefinitionName(name, ignored);
}

std::string Session::absenceOf(const vel::String& name)
{
    return isDefined(name) ? "the locale is defined but not allowed by the configuration"
                           : "there is no locale of that name";
}

}  // namespace cli
