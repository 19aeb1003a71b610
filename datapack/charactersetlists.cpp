#include "charactersetlists.h"

#include <unicode/ucnv.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>
#include <unicode/uset.h>

#include <algorithm>
#include <memory>

#include "charactersets.h"
#include "icutext.h"
#include "xmlwriter.h"

namespace datapack {

namespace {

using Names = std::vector<std::string_view>;

struct Custom
{
    std::string_view languages;  // "xx", "xx-Scrp" or "xx-Scrp-RR", separated by blanks, with one at each end
    Names sets;
};

// Of the language in this script in this region, of the language in this script, of the language: the first that is
// found counts. Sets that lack a letter of the language stand here where they were used all the same: Romanian wrote
// the cedilla for the comma below, Persian and Urdu the Arabic yeh, Vietnamese its tones as marks of their own.
const std::vector<Custom>& customs()
{
    static const std::vector<Custom> s_customs = {
        {" ja ", {"shift_jis", "euc-jp", "iso-2022-jp"}},
        {" ko ", {"euc-kr", "ks_c_5601-1987"}},
        {" zh-Hant-HK zh-Hant-MO yue-Hant ", {"big5-hkscs", "big5"}},
        {" zh-Hant ", {"big5", "big5-hkscs"}},
        {" zh yue ", {"gb18030", "gbk", "gb2312"}},
        {" th ", {"windows-874", "tis-620"}},
        {" vi ", {"windows-1258"}},
        {" ru ", {"windows-1251", "koi8-r", "iso-8859-5", "ibm866", "x-mac-cyrillic"}},
        {" uk ", {"windows-1251", "koi8-u", "iso-8859-5", "x-mac-cyrillic"}},
        {" be bg mk sr-Cyrl bs-Cyrl ", {"windows-1251", "iso-8859-5"}},
        {" el ", {"windows-1253", "iso-8859-7"}},
        {" he yi ", {"windows-1255", "iso-8859-8-i", "iso-8859-8"}},
        {" ar ", {"windows-1256", "iso-8859-6"}},
        {" fa ur ", {"windows-1256"}},
        {" tr az-Latn ", {"windows-1254", "iso-8859-9"}},
        {" pl cs sk hu sl hr bs-Latn sr-Latn ro hsb dsb ", {"windows-1250", "iso-8859-2"}},
        {" lt lv ", {"windows-1257", "iso-8859-13", "iso-8859-4"}},
        {" et ", {"windows-1257", "iso-8859-15", "iso-8859-13", "iso-8859-4"}},
        {" se smn ", {"iso-8859-10", "iso-8859-4"}},
        {" cy ", {"iso-8859-14"}},
        {" ga gd br gv kw ", {"windows-1252", "iso-8859-15", "iso-8859-14", "iso-8859-1"}},
        {" mt eo ", {"iso-8859-3"}},
    };
    return s_customs;
}

// What is customary for the other languages of a script, as far as the set has all their letters.
Names customOfScript(const std::string& script)
{
    if (script == "Latn") {
        return {"windows-1252", "iso-8859-15", "iso-8859-1"};
    }
    if (script == "Cyrl") {
        return {"windows-1251"};
    }
    return script == "Arab" ? Names{"windows-1256"} : Names{};
}

const Names* findCustom(const std::string& key)
{
    for (const Custom& each : customs()) {
        if (each.languages.find(" " + key + " ") != std::string_view::npos) {
            return &each.sets;
        }
    }
    return nullptr;
}

// The letters that the language is written with, small and capital.
icu::UnicodeSet lettersOf(const PackLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<ULocaleData, decltype(&ulocdata_close)> data(ulocdata_open(locale.icu.getName(), &status),
                                                                       &ulocdata_close);
    checkIcu(status, "locale data of " + locale.name);
    icu::UnicodeSet letters;
    ulocdata_getExemplarSet(data.get(), letters.toUSet(), USET_ADD_CASE_MAPPINGS, ULOCDATA_ES_STANDARD, &status);
    checkIcu(status, "letters of " + locale.name);
    // Title case adds sequences; what matters are the characters.
    letters.removeAllStrings();
    return letters;
}

icu::UnicodeSet charactersOf(std::string_view label)
{
    const auto set = std::find_if(characterSets().begin(), characterSets().end(),
                                  [&](const CharacterSetEntry& each) { return each.label == label; });
    const std::string name(set->implementations.front());
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name.c_str(), &status), &ucnv_close);
    checkIcu(status, "converter " + name);
    icu::UnicodeSet characters;
    ucnv_getUnicodeSet(converter.get(), characters.toUSet(), UCNV_ROUNDTRIP_SET, &status);
    checkIcu(status, "characters of " + name);
    return characters;
}

bool canWrite(std::string_view set, const icu::UnicodeSet& letters)
{
    return charactersOf(set).containsAll(letters);
}

}  // namespace

std::vector<std::string_view> customaryCharacterSets(const PackLocale& locale)
{
    const std::string languageScript = locale.language + "-" + locale.script;
    for (const std::string& key : {languageScript + "-" + locale.region, languageScript, locale.language}) {
        if (const Names* sets = findCustom(key)) {
            return *sets;
        }
    }
    Names sets = customOfScript(locale.script);
    const icu::UnicodeSet letters = sets.empty() ? icu::UnicodeSet() : lettersOf(locale);
    sets.erase(std::remove_if(sets.begin(), sets.end(),
                              [&](std::string_view set) { return letters.isEmpty() || !canWrite(set, letters); }),
               sets.end());
    return sets;
}

std::string characterSetLists(const std::vector<PackLocale>& locales)
{
    XmlWriter writer;
    writer.open("characterSetLists");
    writer.open("characterSetList", {{"name", "supported"}});
    for (const CharacterSetEntry& set : characterSets()) {
        if (set.isSupported) {
            writer.leaf("characterSet", {{"name", set.label}}, "");
        }
    }
    writer.close();
    for (const PackLocale& locale : locales) {
        const std::string name = "locale:" + locale.name;
        writer.open("characterSetList", {{"name", name}});
        writer.leaf("characterSet", {{"name", "utf-8"}}, "");
        for (const std::string_view set : customaryCharacterSets(locale)) {
            writer.leaf("characterSet", {{"name", set}}, "");
        }
        writer.close();
    }
    writer.close();
    return writer.text();
}

}  // namespace datapack
