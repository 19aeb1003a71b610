#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/captions.h"
#include "answers/datafiles.h"
#include "options.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/messages/messagetable.h"
#include "webi18n/charactersetresolver.h"
#include "webi18n/currencylookup.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"

namespace cli {

using answers::ksAllowedLanguages;
using answers::ksAllowedLocales;
using answers::ksAllowedLocalesFile;
using answers::LayeredConfigReader;

/// The data that a subcommand works on, loaded when it is first asked for, so that a subcommand reads only what it
/// needs. What cannot be read throws XmlException or DataError. A file that the data folder lacks is not loaded; what
/// follows from that is said once on standard error.
class Session
{
public:
    explicit Session(Options options);
    ~Session();

    const Options& options() const noexcept { return m_tOptions; }

    /// The data folder; nothing for "--data none".
    const std::optional<vel::FilePath>& dataFolder() { return m_tFiles.dataFolder(); }
    /// The file of that name in the data folder when it is there.
    std::optional<vel::FilePath> dataFile(const wchar_t* name) { return m_tFiles.dataFile(name); }
    /// The definitions files in the order of loading.
    std::vector<vel::FilePath> definitionFiles() { return m_tFiles.definitionFiles(); }
    std::optional<vel::FilePath> mappingFile() { return m_tFiles.mappingFile(); }
    /// The folders of messages in the order of loading, and the languages in them.
    std::vector<vel::FilePath> messageFolders() { return m_tFiles.messageFolders(); }
    std::vector<vel::String> messageLanguages() { return m_tFiles.messageLanguages(); }
    /// The currencies files in the order of loading.
    std::vector<vel::FilePath> currencyFiles() { return m_tFiles.currencyFiles(); }
    /// The files of character sets in the order of loading.
    std::vector<vel::FilePath> characterSetFiles() { return m_tFiles.characterSetFiles(); }
    /// The files of their lists in the order of loading.
    std::vector<vel::FilePath> characterSetListFiles() { return m_tFiles.characterSetListFiles(); }

    const LayeredConfigReader& config() { return m_tFiles.config(); }
    /// The definitions with the locales that the configuration allows.
    const vel::Handle<vel::LocaleTagLookup>& catalogue();
    const vel::LocaleMapping& mapping();
    const vel::CurrencyLookup& currencies();
    /// The definitions alone, until the lists are asked for.
    const vel::CharacterSetResolver& characterSets();
    /// The same with the lists.
    const vel::CharacterSetResolver& characterSetLists();
    /// The messages of a language; an empty table when the data folder has none for it.
    vel::Handle<const vel::MessageTable> messages(const vel::String& language) { return m_tFiles.messages(language); }
    /// The same with the English ones behind them.
    answers::Captions captions(const vel::String& language) { return {messages(language), messages(L"en")}; }
    /// Whether there is a definition of that name, allowed or not.
    bool isDefined(const vel::String& name);
    /// What to tell about a name that is not among the allowed locales.
    std::string absenceOf(const vel::String& name);

private:
    vel::Handle<vel::LocaleTagLookup> loadCatalogue(const vel::ConfigReader& config);

    Options m_tOptions;
    answers::DataFiles m_tFiles;
    vel::Handle<vel::LocaleTagLookup> m_hCatalogue;
    vel::Handle<vel::LocaleTagLookup> m_hEverything;
    std::unique_ptr<vel::LocaleMapping> m_pMapping;
    std::unique_ptr<vel::CurrencyLookup> m_pCurrencies;
    vel::Handle<vel::CharacterSetResolver> m_hCharacterSets;
    bool m_bHasCharacterSetLists = false;
};

}  // namespace cli
