#include "mapping.h"

#include <map>
#include <set>
#include <stdexcept>

#include "xmlwriter.h"

namespace datapack {
namespace {

// Orders patterns without their star so that a longer one stands before those it begins with, and like ones together:
// the end of a pattern counts as greater than every character.
struct LongerFirst
{
    bool operator()(const std::string& left, const std::string& right) const { return left + '\x7f' < right + '\x7f'; }
};

using Prefixes = std::map<std::string, std::string, LongerFirst>;

// Codes that browsers and older systems send for a language that ICU names otherwise.
constexpr std::pair<const char*, const char*> kaOtherCodes[] = {
    {"in", "id-id"}, {"iw", "he-il"}, {"ji", "yi-001"},     {"jw", "jv-id"},
    {"mo", "ro-md"}, {"no", "nb-no"}, {"sh", "sr-latn-rs"}, {"tl", "fil-ph"},
};

// Languages that browsers are made for but ICU has no locale of. Each gets the conventions of where it is spoken.
// Without a rule many would be caught by an unrelated language with a shorter code (sco by sc, cak by ca, trs by tr).
constexpr std::pair<const char*, const char*> kaNearest[] = {
    {"an", "es-es"},  {"ary", "ar-ma"}, {"arn", "es-cl"}, {"arz", "ar-eg"}, {"cak", "es-gt"}, {"cmn", "zh-cn"},
    {"frr", "de-de"}, {"gn", "es-py"},  {"lij", "it-it"}, {"nds", "de-de"}, {"oc", "fr-fr"},  {"sco", "en-gb"},
    {"skr", "ur-pk"}, {"son", "fr-ml"}, {"szl", "pl-pl"}, {"trs", "es-mx"},
};

// Languages written in several scripts are tagged with and without the script; a region's usual script goes unsaid.
void addTags(const PackLocale& locale, Prefixes& prefixes)
{
    const bool isScriptUnsaid = *locale.display.getScript() == '\0';
    if (isScriptUnsaid) {
        prefixes.emplace(locale.language + "-" + locale.region, locale.name);
    }
    if (locale.hasLanguageScripts) {
        prefixes.emplace(locale.language + "-" + locale.script + "-" + locale.region, locale.name);
    }
}

void addMains(const PackLocale& locale, Prefixes& prefixes)
{
    if (locale.hasLanguageScripts && locale.isScriptMain) {
        prefixes.emplace(locale.language + "-" + locale.script, locale.name);
    }
    if (locale.base.empty()) {
        prefixes.emplace(locale.language, locale.name);
    }
}

void requireTargets(const std::vector<PackLocale>& locales, const std::vector<MappingRule>& rules)
{
    std::set<std::string> names;
    for (const PackLocale& locale : locales) {
        names.insert(locale.name);
    }
    for (const auto& [pattern, target] : rules) {
        if (names.count(target) == 0) {
            std::string what = "a rule leads to a locale that the pack does not have: ";
            throw std::runtime_error(what.append(pattern).append(" -> ").append(target));
        }
    }
}

}  // namespace

std::vector<MappingRule> mappingRules(const std::vector<PackLocale>& locales)
{
    Prefixes prefixes;
    for (const PackLocale& locale : locales) {
        addTags(locale, prefixes);
        addMains(locale, prefixes);
    }
    prefixes.insert(std::begin(kaOtherCodes), std::end(kaOtherCodes));
    prefixes.insert(std::begin(kaNearest), std::end(kaNearest));
    std::vector<MappingRule> rules;
    for (const auto& [prefix, target] : prefixes) {
        rules.emplace_back(prefix + "*", target);
    }
    rules.emplace_back("*", "en-us");
    requireTargets(locales, rules);
    return rules;
}

std::string localeMapping(const std::vector<MappingRule>& rules)
{
    XmlWriter writer;
    writer.open("localeMappings");
    writer.open("localeMapping", {{"name", "httpAcceptLanguage"}});
    writer.open("choose");
    for (const auto& [pattern, target] : rules) {
        writer.open("when", {{"matches", pattern}});
        writer.leaf("localeDefinition", {{"name", target}}, "");
        writer.close();
    }
    writer.close();
    writer.close();
    writer.close();
    return writer.text();
}

}  // namespace datapack
