#include "session.h"

#include <filesystem>
#include <utility>

#include "datafolder.h"
#include "failures.h"
#include "vel/messages/messagefilesregistry.h"

namespace cli {

namespace {

bool isThere(const vel::FilePath& file)
{
    std::error_code fault;
    // What cannot be looked at is taken to be there: loading it says why.
    return std::filesystem::exists(file.toNative(), fault) || fault;
}

vel::Handle<const vel::ConfigReader> readConfig(const vel::FilePath& file)
{
    return vel::makeHandle<vel::XmlConfigReader>(file);
}

}  // namespace

Session::Session(Options options) : m_tOptions(std::move(options))
{}

Session::~Session() = default;

const std::optional<vel::FilePath>& Session::dataFolder()
{
    if (!m_tDataFolder) {
        m_tDataFolder = findDataFolder(m_tOptions.m_sData);
    }
    return *m_tDataFolder;
}

std::optional<vel::FilePath> Session::dataFile(const wchar_t* name)
{
    if (!dataFolder()) {
        return std::nullopt;
    }
    vel::FilePath file = dataFolder()->join(vel::FilePath(name));
    return isThere(file) ? std::optional(std::move(file)) : std::nullopt;
}

/// The data folder's file of that name when it is there, and then those of an option.
std::vector<vel::FilePath> Session::filesBehindOwn(const wchar_t* name, const std::vector<vel::String>& given)
{
    std::vector<vel::FilePath> files;
    if (const auto own = dataFile(name)) {
        files.push_back(*own);
    }
    files.insert(files.end(), given.begin(), given.end());
    return files;
}

std::vector<vel::FilePath> Session::definitionFiles()
{
    return filesBehindOwn(L"localedefinitions.xml", m_tOptions.m_tDefinitions);
}

std::vector<vel::FilePath> Session::currencyFiles()
{
    return filesBehindOwn(L"currencies.xml", m_tOptions.m_tCurrencies);
}

std::optional<vel::FilePath> Session::mappingFile()
{
    return m_tOptions.m_sMapping.isEmpty() ? dataFile(L"localemapping.xml") : vel::FilePath(m_tOptions.m_sMapping);
}

const LayeredConfigReader& Session::config()
{
    if (!m_hConfig.isNull()) {
        return *m_hConfig;
    }
    const auto layers = vel::makeHandle<LayeredConfigReader>();
    if (const auto own = dataFile(L"config.xml")) {
        layers->add(readConfig(*own));
    }
    if (!m_tOptions.m_sConfig.isEmpty()) {
        layers->add(readConfig(m_tOptions.m_sConfig));
    }
    const auto settings = vel::makeHandle<vel::MemoryConfigReader>();
    for (const auto& [key, value] : m_tOptions.m_tSettings) {
        settings->set(key, value);
    }
    layers->add(settings);
    m_hConfig = layers;
    return *m_hConfig;
}

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

vel::Handle<const vel::MessageTable> Session::messages(const vel::String& language)
{
    if (!dataFolder()) {
        return vel::makeHandle<vel::MessageTable>(language);
    }
    const vel::FilePath folder = dataFolder()->join(vel::FilePath(L"messages"));
    return vel::MessageFilesRegistry::getInstance().loadTable(folder, language);
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
