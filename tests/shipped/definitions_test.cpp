// What holds for every definition of the pack, whatever ICU says.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "packfiles.h"
#include "tokens.h"

namespace shipped {
namespace {

constexpr const char* kaSeparators[] = {"thousandsSeparator", "monetaryThousandsSeparator",
                                        "decimalSeparator",   "monetaryDecimalSeparator",
                                        "listSeparator",      "dateSeparator",
                                        "timeSeparator"};

// Characters that look like ones on the keyboard, or like nothing: typographic apostrophes, no-break, figure, thin and
// zero-width blanks, direction marks.
constexpr const char* kaLookAlikes[] = {"\u2018", "\u2019", "\u02BC", "\u00A0", "\u202F", "\u2007", "\u2009",
                                        "\u200B", "\u2060", "\u200E", "\u200F", "\u061C", "\u2212"};

bool hasLookAlike(const std::string& text)
{
    return std::any_of(std::begin(kaLookAlikes), std::end(kaLookAlikes),
                       [&text](const char* each) { return text.find(each) != std::string::npos; });
}

std::vector<std::string> allFormats(const Loaded& locale)
{
    std::vector<std::string> formats = {locale.scalar("dateShortFormat"), locale.scalar("dateLongFormat"),
                                        locale.scalar("timeFormat")};
    for (const char* list : {"dateFormats", "timeFormats"}) {
        const std::vector<std::string> entries = locale.list(list);
        formats.insert(formats.end(), entries.begin(), entries.end());
    }
    return formats;
}

// The order in which day, month and year stand in a format of numbers.
std::string orderOf(const std::string& format)
{
    std::string order;
    for (const FormatPiece& piece : formatPieces(format)) {
        if (piece.isToken) {
            order += piece.text[0] == 'M' ? 'm' : piece.text[0];
        }
    }
    return order;
}

TEST(Definitions, nameEveryLocaleOnce)
{
    std::set<std::string> names;
    for (const Element& definition : definitions().children) {
        const std::string name = definition.attribute("name");
        EXPECT_EQ(definition.name, "localeDefinition");
        EXPECT_FALSE(name.empty());
        EXPECT_TRUE(names.insert(name).second) << name << " stands twice";
    }
    EXPECT_GE(names.size(), 500u);
    for (const char* name : {"en-us", "fr-ca", "zh-tw", "zh-hk", "zh-hans-hk", "sr-rs", "sr-latn-rs", "sr-me",
                             "sr-cyrl-me", "es-419", "en-001", "uz-af", "pa-pk", "nb-no", "pt-pt"}) {
        EXPECT_EQ(names.count(name), 1u) << name;
    }
}

TEST(Definitions, rootDeclaresTheNamespaces)
{
    EXPECT_EQ(definitions().name, "localeDefinitions");
    EXPECT_EQ(definitions().attribute("xmlns"), "com.quellin.locale/v1");
    EXPECT_EQ(definitions().attribute("xmlns:vell"), "com.quellin.locale/v1");
    EXPECT_EQ(definitions().attribute("xmlns:xsi"), "http://www.w3.org/2001/XMLSchema-instance");
    EXPECT_EQ(definitions().attribute("xmlns:xsd"), "http://www.w3.org/2001/XMLSchema");
}

TEST(Definitions, areBasedOnEarlierOnesOfTheirLanguage)
{
    std::set<std::string> seen;
    for (const Element& definition : definitions().children) {
        const std::string name = definition.attribute("name");
        const std::string base = definition.attribute("basedOn");
        const std::string language = name.substr(0, name.find('-'));
        if (!base.empty()) {
            EXPECT_EQ(seen.count(base), 1u) << name << " is based on " << base << ", which does not stand before it";
            EXPECT_EQ(base.substr(0, base.find('-')), language) << name;
        }
        seen.insert(name);
    }
}

TEST(Definitions, haveOneMainLocalePerLanguage)
{
    std::map<std::string, std::string> mains;
    for (const Element& definition : definitions().children) {
        const std::string name = definition.attribute("name");
        if (definition.attributes.count("basedOn") == 0) {
            EXPECT_TRUE(mains.emplace(name.substr(0, name.find('-')), name).second) << name;
        }
    }
    EXPECT_EQ(mains["en"], "en-us");
    EXPECT_EQ(mains["pt"], "pt-br");
    EXPECT_EQ(mains["zh"], "zh-cn");
    EXPECT_EQ(mains["sr"], "sr-rs");
    EXPECT_EQ(mains["ar"], "ar-eg");
    EXPECT_EQ(mains["nb"], "nb-no");
}

TEST(Definitions, ofOtherScriptsAreBasedOnTheLanguagesMainLocale)
{
    std::map<std::string, std::string> bases;
    for (const Element& definition : definitions().children) {
        bases[definition.attribute("name")] = definition.attribute("basedOn");
    }
    EXPECT_EQ(bases["sr-latn-rs"], "sr-rs");
    EXPECT_EQ(bases["sr-me"], "sr-latn-rs");
    EXPECT_EQ(bases["sr-cyrl-me"], "sr-rs");
    EXPECT_EQ(bases["zh-tw"], "zh-cn");
    EXPECT_EQ(bases["zh-hk"], "zh-tw");
    EXPECT_EQ(bases["zh-hans-hk"], "zh-cn");
}

TEST(Definitions, writeOnlyWhatDiffersFromTheBase)
{
    for (const Element& definition : definitions().children) {
        if (definition.attribute("basedOn").empty()) {
            continue;
        }
        const Loaded& base = loadedLocales().at(definition.attribute("basedOn"));
        for (const Element& property : definition.children) {
            const std::string name = property.attribute("name");
            const bool isScalar = property.children.empty() && base.lists.count(name) == 0 && name != "scaleFactors";
            // A monetary separator may repeat the base's value where the plain one it followed has changed.
            if (isScalar && name.rfind("monetary", 0) != 0) {
                EXPECT_NE(base.scalar(name), property.text) << definition.attribute("name") << " repeats " << name;
            }
        }
    }
}

TEST(Definitions, haveNoLookAlikesWhereTextIsTyped)
{
    for (const auto& [name, locale] : loadedLocales()) {
        for (const char* separator : kaSeparators) {
            EXPECT_FALSE(hasLookAlike(locale.scalar(separator))) << name << " " << separator;
        }
        for (const char* property : {"negativeNumberTemplate", "percentFormat"}) {
            EXPECT_FALSE(hasLookAlike(locale.scalar(property))) << name << " " << property;
        }
    }
}

TEST(Definitions, haveSeparatorsThatCanBeToldApart)
{
    for (const auto& [name, locale] : loadedLocales()) {
        for (const char* separator : kaSeparators) {
            EXPECT_FALSE(locale.scalar(separator).empty()) << name << " " << separator;
        }
        const std::string decimal = locale.scalar("decimalSeparator");
        const std::string monetary = locale.scalar("monetaryDecimalSeparator");
        EXPECT_NE(decimal, locale.scalar("thousandsSeparator")) << name;
        EXPECT_NE(monetary, locale.scalar("monetaryThousandsSeparator")) << name;
        EXPECT_NE(decimal, locale.scalar("listSeparator")) << name;
        EXPECT_NE(monetary, locale.scalar("listSeparator")) << name;
        EXPECT_NE(locale.scalar("dateSeparator").rfind(locale.scalar("timeSeparator"), 0), 0u)
            << name << ": a typed date would read as a time";
    }
}

TEST(Definitions, useOnlyTokensOfTheirLanguage)
{
    for (const auto& [name, locale] : loadedLocales()) {
        for (const std::string& format : allFormats(locale)) {
            EXPECT_FALSE(format.empty()) << name;
            for (const FormatPiece& piece : formatPieces(format)) {
                EXPECT_TRUE(!piece.isToken || isLegalToken(piece.text)) << name << ": " << format;
            }
            for (const char* mark : {"\u200E", "\u200F", "\u061C", "\u00A0", "\u202F"}) {
                EXPECT_EQ(format.find(mark), std::string::npos) << name << ": " << format;
            }
        }
    }
}

TEST(Definitions, stateTheOrderAndClockOfTheirFormats)
{
    for (const auto& [name, locale] : loadedLocales()) {
        EXPECT_EQ(orderOf(locale.scalar("dateShortFormat")), locale.scalar("dateOrder")) << name;
        const bool is24 = locale.scalar("timeFormat").find('H') != std::string::npos;
        EXPECT_EQ(locale.scalar("24hours"), is24 ? "true" : "false") << name;
        EXPECT_NE(locale.scalar("dateShortFormat").find("yyyy"), std::string::npos) << name;
        EXPECT_NE(locale.scalar("dateShortFormat").find(locale.scalar("dateSeparator")), std::string::npos) << name;
        const int firstDay = std::stoi(locale.scalar("firstDayOfWeek"));
        EXPECT_TRUE(firstDay >= 0 && firstDay <= 6) << name;
    }
}

TEST(Definitions, haveFullLists)
{
    for (const auto& [name, locale] : loadedLocales()) {
        for (const auto& [list, entries] : locale.lists) {
            EXPECT_EQ(std::count(entries.begin(), entries.end(), ""), 0) << name << " " << list;
        }
        EXPECT_EQ(locale.list("monthNames").size(), 12u) << name;
        EXPECT_EQ(locale.list("abbrevMonthNames").size(), 12u) << name;
        EXPECT_EQ(locale.list("dayNames").size(), 7u) << name;
        EXPECT_EQ(locale.list("abbrevDayNames").size(), 7u) << name;
        const size_t genitives = locale.list("genetiveMonthNames").size();
        EXPECT_TRUE(genitives == 0 || genitives == 12) << name;
        for (const auto& [list, least] : {std::pair("dateFormats", 8u), std::pair("timeFormats", 4u)}) {
            const std::vector<std::string> entries = locale.list(list);
            EXPECT_GE(entries.size(), least) << name << " " << list;
            EXPECT_EQ(std::set<std::string>(entries.begin(), entries.end()).size(), entries.size()) << name;
        }
        const std::vector<std::string> dates = locale.list("dateFormats");
        EXPECT_EQ(std::count(dates.begin(), dates.end(), locale.scalar("dateShortFormat")), 1) << name;
        EXPECT_EQ(dates.front(), locale.scalar("dateLongFormat")) << name;
        for (const std::string& format : locale.list("timeFormats")) {
            const bool is12Hours = format.find('h') != std::string::npos && format.find('H') == std::string::npos;
            EXPECT_TRUE(!is12Hours || format.find('t') != std::string::npos) << name << ": " << format;
        }
        EXPECT_EQ(locale.list("timeFormats").front(), locale.scalar("timeFormat")) << name;
    }
}

// An apostrophe may be a letter of a marker's word; blanks and direction marks never are.
TEST(Definitions, haveMarkersThatCanBeToldApart)
{
    for (const auto& [name, locale] : loadedLocales()) {
        const std::string am = locale.scalar("am");
        const std::string pm = locale.scalar("pm");
        for (const char* mark : {"\u00A0", "\u202F", "\u2009", "\u200E", "\u200F", "\u061C"}) {
            EXPECT_EQ((am + pm).find(mark), std::string::npos) << name;
        }
        EXPECT_FALSE(am.empty() || pm.empty()) << name;
        EXPECT_TRUE(am.rfind(pm, 0) != 0 && pm.rfind(am, 0) != 0) << name << ": " << am << ", " << pm;
    }
}

TEST(Definitions, haveScaleFactorsThatReadOneWay)
{
    for (const auto& [name, locale] : loadedLocales()) {
        std::set<std::string> names;
        std::set<std::string> values;
        for (const auto& [factor, value] : locale.scaleFactors) {
            EXPECT_TRUE(names.insert(factor).second) << name << " " << factor;
            EXPECT_TRUE(values.insert(value).second) << name << " " << value;
            EXPECT_FALSE(factor.empty()) << name;
            EXPECT_EQ(value.find_first_not_of('0', 1), std::string::npos) << name << " " << value;
            EXPECT_EQ(value[0], '1') << name << " " << value;
        }
    }
}

TEST(Definitions, nameTheirMessageAndCharacterSetList)
{
    for (const auto& [name, locale] : loadedLocales()) {
        EXPECT_EQ(locale.scalar("characterSetList"), "locale:" + name);
    }
    EXPECT_EQ(loadedLocales().at("en-us").scalar("localeDisplayMessage"), "kmsgLocaleName_enUS");
    EXPECT_EQ(loadedLocales().at("sr-latn-rs").scalar("localeDisplayMessage"), "kmsgLocaleName_srLatnRS");
    EXPECT_EQ(loadedLocales().at("es-419").scalar("localeDisplayMessage"), "kmsgLocaleName_es419");
}

TEST(Definitions, haveADefaultLanguage)
{
    EXPECT_EQ(loadedLocales().at("fr-ca").scalar("defaultLanguage"), "fr");
    EXPECT_EQ(loadedLocales().at("zh-tw").scalar("defaultLanguage"), "zh-Hant");
    EXPECT_EQ(loadedLocales().at("zh-sg").scalar("defaultLanguage"), "zh");
    EXPECT_EQ(loadedLocales().at("sr-me").scalar("defaultLanguage"), "sr-Latn");
    EXPECT_EQ(loadedLocales().at("nb-no").scalar("defaultLanguage"), "nb");
}

TEST(Lists, allowEveryLocaleOnce)
{
    const Element root = readXml(packFile("localelists.xml"));
    ASSERT_EQ(root.children.size(), 1u);
    EXPECT_EQ(root.children[0].name, "localeList");
    EXPECT_EQ(root.children[0].attribute("name"), "supported");
    std::set<std::string> names;
    for (const Element& entry : root.children[0].children) {
        EXPECT_EQ(loadedLocales().count(entry.attribute("name")), 1u) << entry.attribute("name");
        EXPECT_TRUE(names.insert(entry.attribute("name")).second) << entry.attribute("name");
    }
    EXPECT_EQ(names.size(), loadedLocales().size());
}

}  // namespace
}  // namespace shipped
