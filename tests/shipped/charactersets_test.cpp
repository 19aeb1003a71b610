// charactersets.xml and charactersetlists.xml: what is defined, supported and preferred.

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/uenum.h>

#include <algorithm>
#include <memory>
#include <set>

#include "packfiles.h"
#include "printers.h"
#include "webencodings.h"
#include "webi18n/charactersetresolver.h"
#include "webi18n/locale.h"

namespace shipped {
namespace {

using Names = std::vector<std::string>;

const std::vector<Element>& childrenOf(const std::string& file)
{
    static std::map<std::string, Element> s_roots;
    return s_roots.try_emplace(file, readXml(packFile(file))).first->second.children;
}

Names namesOf(const std::vector<Element>& elements)
{
    Names names;
    for (const Element& each : elements) {
        names.push_back(each.attribute("name"));
    }
    return names;
}

Names namesOfList(const std::string& list)
{
    for (const Element& each : childrenOf("charactersetlists.xml")) {
        if (each.attribute("name") == list) {
            return namesOf(each.children);
        }
    }
    ADD_FAILURE() << "no list " << list;
    return {};
}

bool contains(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char each) { return std::tolower(each); });
    return text;
}

void addIanaNames(const char* converter, std::set<std::string>& names)
{
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* list = ucnv_openStandardNames(converter, "IANA", &status);
    while (const char* name = uenum_next(list, nullptr, &status)) {
        names.insert(lowerCase(name));
    }
    uenum_close(list);
    ASSERT_TRUE(U_SUCCESS(status)) << converter;
}

/// IANA's names as ICU has them.
std::set<std::string> ianaNames()
{
    std::set<std::string> names;
    for (int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        addIanaNames(ucnv_getAvailableName(i), names);
    }
    EXPECT_LT(300U, names.size());
    return names;
}

TEST(CharacterSetsFile, EveryDefinitionHasALabelOfItsOwnAndImplementationsThatExist)
{
    std::set<std::string> labels;
    for (const Element& definition : childrenOf("charactersets.xml")) {
        const std::string label = definition.attribute("name");
        EXPECT_EQ("characterSet", definition.name);
        EXPECT_TRUE(labels.insert(lowerCase(label)).second) << label;
        EXPECT_FALSE(definition.children.empty()) << label;
        for (const Element& implementation : definition.children) {
            const vel::String name = vel::stringFromUtf8(implementation.text).value();
            EXPECT_EQ("impl", implementation.name);
            EXPECT_TRUE(vel::UniversalTranscoding::isTranscodingAvailable(name)) << label << ' ' << implementation.text;
        }
    }
    EXPECT_LT(80U, labels.size());
}

TEST(CharacterSetsFile, EveryLabelIsARegisteredOne)
{
    const std::set<std::string> iana = ianaNames();
    for (const std::string& label : namesOf(childrenOf("charactersets.xml"))) {
        EXPECT_TRUE(reference::webLabels().count(label) == 1 || iana.count(label) == 1) << label;
    }
}

TEST(CharacterSetsFile, EveryEncodingThatBrowsersWriteIsDefinedUnderItsName)
{
    const Names labels = namesOf(childrenOf("charactersets.xml"));
    std::set<std::string> missing;
    for (const auto& [label, encoding] : reference::webLabels()) {
        if (!contains(labels, encoding)) {
            missing.insert(encoding);
        }
    }
    // ICU has no table of Latin-10; the other two are no sets that a text can be written in.
    EXPECT_EQ((std::set<std::string>{"iso-8859-16", "replacement", "x-user-defined"}), missing);
}

TEST(CharacterSetListsFile, TheSupportedListHasWhatBrowsersReadUtf8First)
{
    const Names supported = namesOfList("supported");
    ASSERT_FALSE(supported.empty());
    EXPECT_EQ("utf-8", supported.front());
    for (const std::string& each : supported) {
        EXPECT_EQ(1U, reference::webLabels().count(each)) << each;
    }
    EXPECT_LT(40U, supported.size());
}

TEST(CharacterSetListsFile, EveryEntryHasADefinitionAndStandsOnceInItsList)
{
    const Names labels = namesOf(childrenOf("charactersets.xml"));
    std::set<std::string> lists;
    for (const Element& list : childrenOf("charactersetlists.xml")) {
        EXPECT_TRUE(lists.insert(lowerCase(list.attribute("name"))).second) << list.attribute("name");
        std::set<std::string> entries;
        for (const std::string& each : namesOf(list.children)) {
            EXPECT_TRUE(contains(labels, each)) << each;
            EXPECT_TRUE(entries.insert(each).second) << list.attribute("name") << ' ' << each;
        }
    }
}

TEST(CharacterSetListsFile, EveryLocaleNamesItsListWhichBeginsWithUtf8)
{
    const Names supported = namesOfList("supported");
    for (const auto& [name, locale] : loadedLocales()) {
        EXPECT_EQ("locale:" + name, locale.scalar("characterSetList"));
        const Names preferred = namesOfList("locale:" + name);
        ASSERT_FALSE(preferred.empty()) << name;
        EXPECT_EQ("utf-8", preferred.front()) << name;
        for (const std::string& each : preferred) {
            EXPECT_TRUE(contains(supported, each)) << name << ' ' << each;
        }
    }
    EXPECT_EQ(loadedLocales().size() + 1, childrenOf("charactersetlists.xml").size());
}

TEST(CharacterSetListsFile, CustomarySetsOfLanguages)
{
    EXPECT_EQ((Names{"utf-8", "windows-1252", "iso-8859-15", "iso-8859-1"}), namesOfList("locale:de-de"));
    EXPECT_EQ((Names{"utf-8", "shift_jis", "euc-jp", "iso-2022-jp"}), namesOfList("locale:ja-jp"));
    EXPECT_EQ((Names{"utf-8", "euc-kr", "ks_c_5601-1987"}), namesOfList("locale:ko-kr"));
    EXPECT_EQ((Names{"utf-8", "gb18030", "gbk", "gb2312"}), namesOfList("locale:zh-cn"));
    EXPECT_EQ((Names{"utf-8", "big5", "big5-hkscs"}), namesOfList("locale:zh-tw"));
    EXPECT_EQ((Names{"utf-8", "big5-hkscs", "big5"}), namesOfList("locale:zh-hk"));
    EXPECT_EQ((Names{"utf-8", "windows-1251", "koi8-u", "iso-8859-5", "x-mac-cyrillic"}), namesOfList("locale:uk-ua"));
    EXPECT_EQ((Names{"utf-8", "windows-1251", "iso-8859-5"}), namesOfList("locale:sr-rs"));
    EXPECT_EQ((Names{"utf-8", "windows-1250", "iso-8859-2"}), namesOfList("locale:sr-latn-rs"));
    EXPECT_EQ((Names{"utf-8", "windows-1255", "iso-8859-8-i", "iso-8859-8"}), namesOfList("locale:he-il"));
    EXPECT_EQ((Names{"utf-8"}), namesOfList("locale:hi-in"));
    EXPECT_EQ((Names{"utf-8"}), namesOfList("locale:ka-ge"));
    // Letters with hooks and dots below are in no set that browsers read.
    EXPECT_EQ((Names{"utf-8"}), namesOfList("locale:ha-ng"));
    EXPECT_EQ((Names{"utf-8"}), namesOfList("locale:yo-ng"));
}

class PackResolver : public testing::Test
{
protected:
    void SetUp() override
    {
        m_hResolver->loadCharacterSetDefinitions(vel::stringFromUtf8(packFile("charactersets.xml")).value());
        m_hResolver->loadCharacterSetLists(vel::stringFromUtf8(packFile("charactersetlists.xml")).value());
    }

    vel::Handle<vel::CharacterSetResolver> m_hResolver = vel::makeHandle<vel::CharacterSetResolver>();
};

TEST_F(PackResolver, LoadsEverythingThatTheFilesHave)
{
    EXPECT_EQ(childrenOf("charactersets.xml").size(), m_hResolver->getCharacterSetDefinitions().size());
    ASSERT_EQ(childrenOf("charactersetlists.xml").size(), m_hResolver->getCharacterSetLists().size());
    for (const Element& list : childrenOf("charactersetlists.xml")) {
        const vel::String name = vel::stringFromUtf8(list.attribute("name")).value();
        EXPECT_EQ(list.children.size(), m_hResolver->getCharacterSetList(name)->numDefinitions());
    }
}

TEST_F(PackResolver, EveryLocaleGetsUtf8AndTheBuiltInOneToo)
{
    const auto supported = m_hResolver->getCharacterSetList(L"supported");
    for (const auto& [name, list] : m_hResolver->getCharacterSetLists()) {
        const auto chosen = m_hResolver->getPreferredCharacterSet(*supported, *list);
        EXPECT_EQ(vel::String(L"utf-8"), chosen->getLabel());
        EXPECT_EQ(vel::String(L"UTF-8"), chosen->getTranscoding().getName());
    }
    const vel::String builtIn = vel::Locale::kUSA.getInfoAsString(vel::Locale::kCharactersetList);
    EXPECT_EQ(1U, m_hResolver->getCharacterSetLists().count(builtIn));
}

}  // namespace
}  // namespace shipped
