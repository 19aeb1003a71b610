#pragma once

#include <string>
#include <vector>

#include "harness.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "webi18n/localetaglookup.h"

namespace bench {

/// The files that the rows read.
struct Data
{
    std::string m_sFolder;             ///< the pack
    std::string m_sDefinitions;        ///< the pack's localedefinitions.xml
    std::string m_sLists;              ///< its localelists.xml
    std::string m_sMapping;            ///< its localemapping.xml
    std::string m_sCurrencies;         ///< its currencies.xml
    std::string m_sCharacterSets;      ///< its charactersets.xml
    std::string m_sCharacterSetLists;  ///< its charactersetlists.xml
    std::string m_sMessages;           ///< its folder of messages, with one below it for each language
    std::string m_sHeaders;            ///< Accept-Language headers, one a line

    vel::String definitions() const;
    vel::String mapping() const;
    vel::String currencies() const;
    vel::FilePath messages() const;
};

/// A reader that allows every locale of the pack's lists file.
vel::Handle<const vel::ConfigReader> packConfiguration(const Data& data);
/// A catalogue with the pack's definitions.
vel::Handle<const vel::LocaleTagLookup> loadCatalogue(const Data& data, const vel::ConfigReader& config);

// One family of rows each, appended to `rows`.
void addCatalogueRows(std::vector<Situation>& rows, const Data& data);
void addMappingRows(std::vector<Situation>& rows, const Data& data);
void addLocaleRows(std::vector<Situation>& rows);
void addCurrencyRows(std::vector<Situation>& rows, const Data& data);
void addCharacterSetRows(std::vector<Situation>& rows, const Data& data);
void addDateRows(std::vector<Situation>& rows, const Data& data);
void addRenderRows(std::vector<Situation>& rows, const Data& data);
void addTranscodingRows(std::vector<Situation>& rows);
void addCollatorRows(std::vector<Situation>& rows);
void addSortKeyRows(std::vector<Situation>& rows);
void addSortRows(std::vector<Situation>& rows);
void addStartupRows(std::vector<Situation>& rows);
/// In builds with the server.
void addServerRows(std::vector<Situation>& rows, const Data& data);

}  // namespace bench
