#include "messages.h"

#include <unicode/locdspnm.h>

#include <memory>

#include "icutext.h"
#include "messagetexts.h"
#include "xmlwriter.h"

namespace datapack {
namespace {

// "%1" in a text stands for the place of insert 1.
std::string withInserts(const std::string& text)
{
    std::string markup;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && index + 1 < text.size()) {
            markup.append("<velm:param insert=\"").append(1, text[++index]).append("\"/>");
        } else {
            markup += escapeXml(text.substr(index, 1));
        }
    }
    return markup;
}

std::string displayName(const icu::LocaleDisplayNames& names, const PackLocale& locale)
{
    icu::UnicodeString name;
    return toUtf8(names.localeDisplayName(locale.display, name));
}

}  // namespace

const std::vector<std::string>& messageLanguages()
{
    static const std::vector<std::string> languages = {
        "ar", "bg", "bn", "ca", "cs", "da",      "de", "el", "en", "es", "et", "fa", "fi", "fil", "fr", "gu", "he",
        "hi", "hr", "hu", "id", "it", "ja",      "kn", "ko", "lt", "lv", "ml", "mr", "ms", "nb",  "nl", "pl", "pt",
        "ro", "ru", "sk", "sl", "sr", "sr-Latn", "sv", "sw", "ta", "te", "th", "tr", "uk", "ur",  "vi", "zh", "zh-Hant",
    };
    return languages;
}

MessageFile messageFile(const std::string& language, const std::vector<PackLocale>& locales,
                        const std::vector<InternationalCurrency>& currencies)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale display = icu::Locale::forLanguageTag(language, status);
    checkIcu(status, "language " + language);
    const std::unique_ptr<icu::LocaleDisplayNames> names(icu::LocaleDisplayNames::createInstance(display));
    XmlWriter writer;
    writer.open(
        "messages",
        {{"xmlns", "com.quellin.messages/v1"}, {"xmlns:velm", "com.quellin.messages/v1"}, {"language", language}});
    size_t count = 0;
    for (const auto& [key, text] : messageTexts(language)) {
        writer.leafWithMarkup("message", {{"key", key}}, withInserts(text));
        ++count;
    }
    for (const PackLocale& locale : locales) {
        writer.leaf("message", {{"key", locale.messageKey}}, displayName(*names, locale));
        ++count;
    }
    for (const auto& [key, text] : currencyTexts(language, currencies)) {
        writer.leaf("message", {{"key", key}}, text);
        ++count;
    }
    writer.close();
    return {writer.text(), count};
}

std::string packConfiguration()
{
    std::string languages;
    for (const std::string& language : messageLanguages()) {
        languages += (languages.empty() ? "" : ",") + language;
    }
    XmlWriter writer;
    writer.open("configuration");
    writer.open("Localization");
    writer.leaf("AllowedLocalesFile", {}, "localelists.xml");
    writer.leaf("AllowedLanguages", {}, languages);
    writer.close();
    writer.close();
    return writer.text();
}

}  // namespace datapack
