#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "answers/layeredconfig.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/messages/messagetable.h"

namespace answers {

/// The options that say which data is loaded.
struct DataOptions
{
    std::optional<vel::String> m_sData;  ///< a folder, or "none"
    vel::String m_sConfig;
    std::vector<std::pair<vel::String, vel::String>> m_tSettings;
    std::vector<vel::String> m_tDefinitions;
    std::vector<vel::String> m_tCurrencies;
    std::vector<vel::String> m_tCharacterSets;
    std::vector<vel::String> m_tCharacterSetLists;
    std::vector<vel::String> m_tMessages;  ///< folders with a folder for each language
    vel::String m_sMapping;
};

/// Where the data is that the options ask for: the data folder's files and behind them those of the options, each kind
/// in the order of loading. A file that the data folder lacks is left out. Throws DataError for a folder, and
/// XmlException for a configuration, that cannot be read. For one thread.
class DataFiles
{
public:
    explicit DataFiles(DataOptions options);

    /// The data folder; nothing for "none".
    const std::optional<vel::FilePath>& dataFolder();
    /// The file of that name in the data folder when it is there.
    std::optional<vel::FilePath> dataFile(const wchar_t* name);
    std::vector<vel::FilePath> definitionFiles();
    std::vector<vel::FilePath> currencyFiles();
    std::vector<vel::FilePath> characterSetFiles();
    std::vector<vel::FilePath> characterSetListFiles();
    /// That of the options instead of the data folder's.
    std::optional<vel::FilePath> mappingFile();
    const LayeredConfigReader& config();
    /// The data folder's folder of messages when it is there, and those of the options; DataError for one of these that
    /// is no folder.
    std::vector<vel::FilePath> messageFolders();
    /// The languages that have a folder there, each once, in the order of their codes.
    std::vector<vel::String> messageLanguages();
    /// The messages of a language; an empty table when no folder has any for it.
    vel::Handle<const vel::MessageTable> messages(const vel::String& language);

private:
    std::vector<vel::FilePath> filesBehindOwn(const wchar_t* name, const std::vector<vel::String>& given);

    DataOptions m_tOptions;
    std::optional<std::optional<vel::FilePath>> m_tDataFolder;
    vel::Handle<LayeredConfigReader> m_hConfig;
};

}  // namespace answers
