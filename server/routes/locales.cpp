#include "answers/javaanswer.h"
#include "answers/localeanswer.h"
#include "answers/localename.h"
#include "answers/text.h"
#include "routes/routes.h"
#include "serverlimits.h"

namespace server {

using answers::Json;
using vel::Locale;
using vel::String;

namespace {

Json describeChoice(const Locale& locale, const answers::Captions& captions, const Catalogues& catalogues)
{
    const String language = locale.getInfoAsString(Locale::kDefaultLanguage);
    Json json = answers::describeName(locale, captions);
    json["ownName"] = answers::utf8Text(answers::nameOf(locale, catalogues.captions(language)));
    json["tag"] = answers::languageTag(locale);
    json["direction"] = answers::directionOf(locale);
    return json;
}

}  // namespace

HttpAnswer answerLocale(const Call& call)
{
    const Locale locale = call.locale();
    call.count(kStageLocale);
    return call.answer(answers::describeLocale(locale), locale);
}

HttpAnswer answerLocales(const Call& call)
{
    const Locale locale = call.locale();
    const String asked = call.target().text("uiLanguage", kLanguageLength);
    const String reader = asked.isEmpty() ? call.language(locale) : asked;
    call.count(kStageLocale);
    std::vector<Locale> locales;
    call.catalogues().locales().getSupportedLocales(locales);
    const answers::Captions captions = call.catalogues().captions(reader);
    Json json;
    json["language"] = answers::utf8Text(reader);
    json["current"] = answers::utf8Text(locale.definitionName());
    json["locales"] = Json::array();
    for (const Locale& each : locales) {
        json["locales"].push_back(describeChoice(each, captions, call.catalogues()));
    }
    return call.answer(json, locale);
}

HttpAnswer answerJava(const Call& call)
{
    const Locale locale = call.locale();
    const bool hasLanguage = call.target().find("uiLanguage").has_value();
    const vel::KWWUILanguage language(call.target().text("uiLanguage", kLanguageLength));
    return call.answer(answers::describeJava(hasLanguage ? vel::NLSUtils::languageLocaleToJavaLocale(language, locale)
                                                         : vel::NLSUtils::localeToJavaLocale(locale)),
                       locale);
}

HttpAnswer answerLanguages(const Call& call)
{
    std::vector<String> languages;
    call.catalogues().languages().getSupportedLanguageList(languages);
    Json json;
    json["languages"] = Json::array();
    for (const String& language : languages) {
        json["languages"].push_back(answers::utf8Text(language));
    }
    return call.answer(json, call.locale());
}

}  // namespace server
