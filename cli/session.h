#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "layeredconfig.h"
#include "options.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/messages/messagetable.h"
#include "webi18n/currencylookup.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"

namespace cli {

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
    const std::optional<vel::FilePath>& dataFolder();
    /// The file of that name in the data folder when it is there.
    std::optional<vel::FilePath> dataFile(const wchar_t* name);
    /// The definitions files in the order of loading.
    std::vector<vel::FilePath> definitionFiles();
    std::optional<vel::FilePath> mappingFile();
    /// The currencies files in the order of loading.
    std::vector<vel::FilePath> currencyFiles();

    const LayeredConfigReader& config();
    /// The definitions with the locales that the configuration allows.
    const vel::Handle<vel::LocaleTagLookup>& catalogue();
    const vel::LocaleMapping& mapping();
    const vel::CurrencyLookup& currencies();
    /// The messages of a language; an empty table when the data folder has none for it.
    vel::Handle<const vel::MessageTable> messages(const vel::String& language);
    /// Whether there is a definition of that name, allowed or not.
    bool isDefined(const vel::String& name);
    /// What to tell about a name that is not among the allowed locales.
    std::string absenceOf(const vel::String& name);

private:
    std::vector<vel::FilePath> filesBehindOwn(const wchar_t* name, const std::vector<vel::String>& given);
    vel::Handle<vel::LocaleTagLookup> loadCatalogue(const vel::ConfigReader& config);

    Options m_tOptions;
    std::optional<std::optional<vel::FilePath>> m_tDataFolder;
    vel::Handle<LayeredConfigReader> m_hConfig;
    vel::Handle<vel::LocaleTagLookup> m_hCatalogue;
    vel::Handle<vel::LocaleTagLookup> m_hEverything;
    std::unique_ptr<vel::LocaleMapping> m_pMapping;
    std::unique_ptr<vel::CurrencyLookup> m_pCurrencies;
};

}  // namespace cli
