// webi18n-datapack OUTPUT_DIR: writes the data pack, all that the library and its command know about locales.
//
// The idea: ICU knows every locale, but in its own shapes. This program asks it once, at build time, and writes the
// answers as the XML files that administrators read and override. One definition per locale with a region; a
// definition is based on its language's main locale and holds only what differs from it. The stages, one file each:
//
//     locales          which locales, their names, what is based on what
//     icuproperties    one locale's properties (dateproperties, numberproperties; patterns: ICU pattern -> tokens)
//     properties       what has to be written so that loading gives those properties
//     definitions      localedefinitions.xml and localelists.xml
//     mapping          localemapping.xml: from a browser's tag to a definition
//     currencies       currencies.xml: the local ones (currencypictures) and ISO's (internationalcurrencies)
//     charactersets    charactersets.xml: what the web's labels mean, by ICU's converters
//     charactersetlists charactersetlists.xml: what is supported, and what each locale prefers
//     messages         messages/<language>/i18nmessages.xml and config.xml
//
// An example: ICU has fr_CA. It is named fr-ca and based on fr-fr, the main locale of French. Its short pattern
// y-MM-dd gives
//
//     <localeDefinition name="fr-ca" basedOn="fr-fr">
//       <property name="localeDisplayMessage">kmsgLocaleName_frCA</property>
//       <property name="dateSeparator">-</property>
//       <property name="dateShortFormat">yyyy-MM-dd</property>
//       <property name="dateOrder">ymd</property>
//       ...
//
// while decimalSeparator, monthNames and all else that it shares with fr-fr stay unwritten. The rule
// <when matches="fr-CA*"> leads to it and stands before fr*; the key kmsgLocaleName_frCA has a text in every message
// file: "French (Canada)", "Französisch (Kanada)".
//
// The same ICU gives the same bytes: nothing depends on time, environment or hash order.
//
// Exit code 0: the pack is written, its numbers are on standard output. 1: it could not be written, the reason is on
// standard error. 2: wrong usage.

#include <chrono>
#include <exception>
#include <iomanip>
#include <iostream>

#include "charactersetlists.h"
#include "charactersets.h"
#include "currencies.h"
#include "definitions.h"
#include "locales.h"
#include "mapping.h"
#include "messages.h"
#include "outputfolder.h"

namespace {

size_t writeMessages(const datapack::OutputFolder& folder, const std::vector<datapack::PackLocale>& locales,
                     const std::vector<datapack::InternationalCurrency>& currencies)
{
    size_t count = 0;
    for (const std::string& language : datapack::messageLanguages()) {
        const datapack::MessageFile file = datapack::messageFile(language, locales, currencies);
        folder.write("messages/" + language + "/i18nmessages.xml", file.text);
        count += file.count;
    }
    return count;
}

void writePack(const char* outputFolder)
{
    const auto start = std::chrono::steady_clock::now();
    const datapack::OutputFolder folder(outputFolder);
    const std::vector<datapack::PackLocale> locales = datapack::packLocales();
    const std::vector<datapack::MappingRule> rules = datapack::mappingRules(locales);
    const std::vector<datapack::InternationalCurrency> currencies = datapack::internationalCurrencies();
    folder.write("localedefinitions.xml", datapack::localeDefinitions(locales));
    folder.write("localelists.xml", datapack::localeLists(locales));
    folder.write("localemapping.xml", datapack::localeMapping(rules));
    folder.write("currencies.xml", datapack::currencyFile(locales, currencies));
    folder.write("charactersets.xml", datapack::characterSetsFile());
    folder.write("charactersetlists.xml", datapack::characterSetLists(locales));
    const size_t messages = writeMessages(folder, locales, currencies);
    folder.write("config.xml", datapack::packConfiguration());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::cout << "locales " << locales.size() << "\nrules " << rules.size() << "\ncurrencies "
              << locales.size() + currencies.size() << "\ncharactersets " << datapack::characterSets().size()
              << "\nmessages " << messages << "\nlanguages " << datapack::messageLanguages().size() << "\nseconds "
              << std::fixed << std::setprecision(2) << seconds.count() << "\n";
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::cerr << "usage: webi18n-datapack OUTPUT_DIR\n";
        return 2;
    }
    try {
        writePack(arguments[1]);
    } catch (const std::exception& error) {
        std::cerr << "webi18n-datapack: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
