// The message files of the pack, and the configuration that offers their languages.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "packfiles.h"

namespace shipped {
namespace {

std::vector<std::string> languages()
{
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(packFile("messages"))) {
        result.push_back(entry.path().filename().string());
    }
    return result;
}

std::map<std::string, Element> messagesOf(const std::string& language)
{
    const Element root = readXml(packFile("messages/" + language + "/i18nmessages.xml"));
    EXPECT_EQ(root.name, "messages");
    EXPECT_EQ(root.attribute("language"), language);
    EXPECT_EQ(root.attribute("xmlns"), "com.quellin.messages/v1");
    EXPECT_EQ(root.attribute("xmlns:velm"), "com.quellin.messages/v1");
    std::map<std::string, Element> messages;
    for (const Element& message : root.children) {
        EXPECT_EQ(message.name, "message");
        EXPECT_TRUE(messages.emplace(message.attribute("key"), message).second) << message.attribute("key");
    }
    return messages;
}

std::set<std::string> insertsOf(const Element& message)
{
    std::set<std::string> inserts;
    for (const Element& child : message.children) {
        EXPECT_EQ(child.name, "velm:param");
        inserts.insert(child.attribute("insert"));
    }
    return inserts;
}

TEST(Messages, comeInAtLeastTwentyFiveLanguages)
{
    EXPECT_GE(languages().size(), 25u);
}

TEST(Messages, nameEveryLocaleInEveryLanguage)
{
    for (const std::string& language : languages()) {
        const std::map<std::string, Element> messages = messagesOf(language);
        for (const auto& [name, locale] : loadedLocales()) {
            const auto found = messages.find(locale.scalar("localeDisplayMessage"));
            ASSERT_NE(found, messages.end()) << language << " has no name of " << name;
            EXPECT_FALSE(found->second.text.empty()) << language << " " << name;
        }
    }
}

TEST(Messages, tellNamesApart)
{
    for (const std::string& language : languages()) {
        std::map<std::string, std::string> keys;
        for (const auto& [key, message] : messagesOf(language)) {
            if (key.rfind("kmsgLocaleName_", 0) == 0) {
                const auto [other, isNew] = keys.emplace(message.text, key);
                EXPECT_TRUE(isNew) << language << ": " << key << " and " << other->second << " are " << message.text;
            }
        }
    }
}

TEST(Messages, takeTheInsertsThatTheLibrarySets)
{
    for (const std::string& language : languages()) {
        const std::map<std::string, Element> messages = messagesOf(language);
        EXPECT_EQ(insertsOf(messages.at("kmsgInvalidLocaleTag")), (std::set<std::string>{"1"})) << language;
        EXPECT_EQ(insertsOf(messages.at("kmsgNotSupportedLocaleTag")), (std::set<std::string>{"1"})) << language;
        EXPECT_EQ(insertsOf(messages.at("kmsgCurrencyFormatLocaleCurrencyHeading")), (std::set<std::string>{"1", "2"}))
            << language;
    }
}

TEST(Messages, nameLocalesInTheLanguagesOwnWords)
{
    EXPECT_EQ(messagesOf("en").at("kmsgLocaleName_enUS").text, "English (United States)");
    EXPECT_EQ(messagesOf("en").at("kmsgLocaleName_srLatnRS").text, "Serbian (Latin, Serbia)");
    EXPECT_EQ(messagesOf("en").at("kmsgLocaleName_zhTW").text, "Chinese (Taiwan)");
    EXPECT_EQ(messagesOf("de").at("kmsgLocaleName_frCA").text, "Französisch (Kanada)");
    EXPECT_EQ(messagesOf("fr").at("kmsgLocaleName_frCA").text, "français (Canada)");
    EXPECT_EQ(messagesOf("es").at("kmsgLocaleName_enUS").text, "inglés (Estados Unidos)");
    EXPECT_EQ(messagesOf("ja").at("kmsgLocaleName_frFR").text, "フランス語 (フランス)");
}

TEST(Configuration, offersEveryLocaleAndLanguage)
{
    const Element root = readXml(packFile("config.xml"));
    ASSERT_EQ(root.children.size(), 1u);
    std::map<std::string, std::string> values;
    for (const Element& value : root.children[0].children) {
        values[root.children[0].name + "/" + value.name] = value.text;
    }
    EXPECT_EQ(values["Localization/AllowedLocalesFile"], "localelists.xml");
    std::istringstream list(values["Localization/AllowedLanguages"]);
    std::set<std::string> offered;
    std::string language;
    while (std::getline(list, language, ',')) {
        EXPECT_TRUE(offered.insert(language).second) << language;
    }
    const std::vector<std::string> present = languages();
    EXPECT_EQ(offered, std::set<std::string>(present.begin(), present.end()));
}

}  // namespace
}  // namespace shipped
