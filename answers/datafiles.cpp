#include "answers/datafiles.h"

#include <filesystem>
#include <set>
#include <utility>

#include "answers/dataerror.h"
#include "answers/datafolder.h"
#include "answers/text.h"
#include "vel/messages/messagefilesregistry.h"

namespace answers {

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

DataFiles::DataFiles(DataOptions options) : m_tOptions(std::move(options))
{}

const std::optional<vel::FilePath>& DataFiles::dataFolder()
{
    if (!m_tDataFolder) {
        m_tDataFolder = findDataFolder(m_tOptions.m_sData);
    }
    return *m_tDataFolder;
}

std::optional<vel::FilePath> DataFiles::dataFile(const wchar_t* name)
{
    if (!dataFolder()) {
        return std::nullopt;
    }
    vel::FilePath file = dataFolder()->join(vel::FilePath(name));
    return isThere(file) ? std::optional(std::move(file)) : std::nullopt;
}

/// The data folder's file of that name when it is there, and then those of an option.
std::vector<vel::FilePath> DataFiles::filesBehindOwn(const wchar_t* name, const std::vector<vel::String>& given)
{
    std::vector<vel::FilePath> files;
    if (const auto own = dataFile(name)) {
        files.push_back(*own);
    }
    files.insert(files.end(), given.begin(), given.end());
    return files;
}

std::vector<vel::FilePath> DataFiles::definitionFiles()
{
    return filesBehindOwn(L"localedefinitions.xml", m_tOptions.m_tDefinitions);
}

std::vector<vel::FilePath> DataFiles::currencyFiles()
{
    return filesBehindOwn(L"currencies.xml", m_tOptions.m_tCurrencies);
}

std::vector<vel::FilePath> DataFiles::characterSetFiles()
{
    return filesBehindOwn(L"charactersets.xml", m_tOptions.m_tCharacterSets);
}

std::vector<vel::FilePath> DataFiles::characterSetListFiles()
{
    return filesBehindOwn(L"charactersetlists.xml", m_tOptions.m_tCharacterSetLists);
}

std::optional<vel::FilePath> DataFiles::mappingFile()
{
    return m_tOptions.m_sMapping.isEmpty() ? dataFile(L"localemapping.xml") : vel::FilePath(m_tOptions.m_sMapping);
}

const LayeredConfigReader& DataFiles::config()
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

std::vector<vel::FilePath> DataFiles::messageFolders()
{
    for (const vel::String& each : m_tOptions.m_tMessages) {
        std::error_code fault;
        if (!std::filesystem::is_directory(vel::FilePath(each).toNative(), fault)) {
            throw DataError(utf8Text(each) + ": the messages folder is no folder that can be read");
        }
    }
    return filesBehindOwn(L"messages", m_tOptions.m_tMessages);
}

std::vector<vel::String> DataFiles::messageLanguages()
{
    std::set<vel::String> languages;
    for (const vel::FilePath& folder : messageFolders()) {
        std::error_code fault;
        for (std::filesystem::directory_iterator each(folder.toNative(), fault), end; !fault && each != end;
             each.increment(fault)) {
            std::error_code unknown;
            const auto name = vel::stringFromUtf8(each->path().filename().string());
            if (name && each->is_directory(unknown)) {
                languages.insert(*name);
            }
        }
    }
    return {languages.begin(), languages.end()};
}

vel::Handle<const vel::MessageTable> DataFiles::messages(const vel::String& language)
{
    return vel::MessageFilesRegistry::getInstance().loadTable(messageFolders(), language);
}

}  // namespace answers
